#include "zvi/host/StreamOpeningDetail.h"

#include "zvi/host/CFile.h"
#include "zvi/host/Paths.h"
#include "zvi/host/windows/WindowsHeader.h"

#include <fcntl.h>
#include <io.h>

#include <algorithm>
#include <cassert>
#include <cerrno>
#include <cstdint>

namespace zvi::host {

namespace {

DWORD Access(unsigned int flags) {
    if (flags & CFile::kReadWrite)
        return GENERIC_READ | GENERIC_WRITE;
    return flags & CFile::kWrite ? GENERIC_WRITE : GENERIC_READ;
}

DWORD Disposition(unsigned int flags) {
    if (!(flags & CFile::kCreate))
        return OPEN_EXISTING;
    return flags & CFile::kNoTruncate ? OPEN_ALWAYS : CREATE_ALWAYS;
}

char const *StreamMode(unsigned int flags) {
    return flags & CFile::kReadWrite ? "r+b" : flags & CFile::kWrite ? "wb" : "rb";
}

CFileException::Cause CauseOfSystem(DWORD error) {
    switch (error) {
    case ERROR_FILE_NOT_FOUND:
        return CFileException::kFileNotFound;
    case ERROR_PATH_NOT_FOUND:
    case ERROR_INVALID_NAME:
    case ERROR_BAD_PATHNAME:
    case ERROR_INVALID_DRIVE:
    case ERROR_FILENAME_EXCED_RANGE:
        return CFileException::kBadPath;
    case ERROR_TOO_MANY_OPEN_FILES:
        return CFileException::kTooManyOpen;
    case ERROR_ACCESS_DENIED:
    case ERROR_WRITE_PROTECT:
        return CFileException::kAccessDenied;
    case ERROR_SHARING_VIOLATION:
    case ERROR_LOCK_VIOLATION:
        return CFileException::kSharing;
    case ERROR_DISK_FULL:
    case ERROR_HANDLE_DISK_FULL:
        return CFileException::kDiskFull;
    default:
        return CFileException::kGeneric;
    }
}

HANDLE OpenHandle(std::filesystem::path const &native, unsigned int flags) {
    if (native.empty()) {
        ::SetLastError(ERROR_BAD_PATHNAME);
        return INVALID_HANDLE_VALUE;
    }
    DWORD const sharing = flags & CFile::kExclusive ? FILE_SHARE_READ : FILE_SHARE_READ | FILE_SHARE_WRITE;
    return ::CreateFileW(native.c_str(), Access(flags), sharing, nullptr, Disposition(flags), FILE_ATTRIBUTE_NORMAL,
                         nullptr);
}

/// A stream that owns the handle; null, with the handle closed, when there cannot be one.
std::FILE *StreamOf(HANDLE handle, unsigned int flags) {
    int const descriptor = ::_open_osfhandle(reinterpret_cast<std::intptr_t>(handle), _O_BINARY | _O_NOINHERIT);
    if (descriptor < 0) {
        ::CloseHandle(handle);
        return nullptr;
    }
    std::FILE *const stream = ::_fdopen(descriptor, StreamMode(flags));
    if (!stream)
        ::_close(descriptor);
    return stream;
}

} // namespace

std::FILE *OpenByFlags(std::wstring_view path, unsigned int flags, CFileException &failure) {
    HANDLE const handle = OpenHandle(NativePath(path), flags);
    if (handle == INVALID_HANDLE_VALUE) {
        DWORD const error = ::GetLastError();
        failure = CFileException(CauseOfSystem(error), static_cast<int>(error));
        return nullptr;
    }
    std::FILE *const stream = StreamOf(handle, flags);
    if (!stream) {
        failure = CFileException(CFileException::kTooManyOpen, errno);
        return nullptr;
    }
    return stream;
}

void UseBinaryMode(std::FILE *stream) {
    assert(stream);
    static_cast<void>(std::fflush(stream));
    static_cast<void>(::_setmode(::_fileno(stream), _O_BINARY));
}

int WriteThrough(std::FILE *stream, std::string_view bytes) {
    assert(stream);
    constexpr std::size_t kBytesAtOnce = std::size_t{1} << 30;
    while (!bytes.empty()) {
        auto const count = static_cast<unsigned int>(std::min(bytes.size(), kBytesAtOnce));
        int const written = ::_write(::_fileno(stream), bytes.data(), count);
        if (written < 0)
            return errno;
        bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

} // namespace zvi::host
