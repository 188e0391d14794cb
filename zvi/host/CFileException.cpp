#include "zvi/host/CFileException.h"

char const *CFileException::what() const noexcept {
    switch (m_cause) {
    case kNone:
        return "no file error";
    case kFileNotFound:
        return "file not found";
    case kBadPath:
        return "bad path";
    case kTooManyOpen:
        return "too many open files";
    case kAccessDenied:
        return "access denied";
    case kInvalidFile:
        return "file not open";
    case kSharing:
        return "file in use";
    case kDiskFull:
        return "disk full";
    case kGeneric:
        break;
    }
    return "file error";
}
