#include "zvi/host/StreamOpeningDetail.h"

#include <cerrno>

namespace zvi::host {

CFileException::Cause CauseOf(int error) {
    switch (error) {
    case 0:
        return CFileException::kNone;
    case ENOENT:
        return CFileException::kFileNotFound;
    case ENOTDIR:
    case EINVAL:
    case ENAMETOOLONG:
    case ELOOP:
        return CFileException::kBadPath;
    case EMFILE:
    case ENFILE:
        return CFileException::kTooManyOpen;
    case EACCES:
    case EPERM:
    case EROFS:
    case EISDIR:
        return CFileException::kAccessDenied;
    case EBADF:
        return CFileException::kInvalidFile;
    case ETXTBSY:
    case EBUSY:
        return CFileException::kSharing;
    case ENOSPC:
    case EFBIG:
        return CFileException::kDiskFull;
    default:
        return CFileException::kGeneric;
    }
}

} // namespace zvi::host
