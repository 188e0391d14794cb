#include "zvi/host/StreamOpeningDetail.h"

#include "zvi/host/CFile.h"
#include "zvi/host/Paths.h"

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

#include <cassert>
#include <cerrno>

namespace zvi::host {

namespace {

/// What the user's mask takes permissions from.
constexpr mode_t kNewFilePermissions = 0666;

int SystemFlags(unsigned int flags) {
    bool const writes = flags & CFile::kWrite;
    int system = O_CLOEXEC | (flags & CFile::kReadWrite ? O_RDWR : writes ? O_WRONLY : O_RDONLY);
    if (flags & CFile::kCreate)
        system |= flags & CFile::kNoTruncate ? O_CREAT : O_CREAT | O_TRUNC;
    return system;
}

char const *StreamMode(unsigned int flags) {
    return flags & CFile::kReadWrite ? "r+" : flags & CFile::kWrite ? "w" : "r";
}

/// 0, or why the descriptor cannot be one of a file.
int FolderError(int descriptor) {
    struct stat status = {};
    if (::fstat(descriptor, &status) != 0)
        return errno;
    return S_ISDIR(status.st_mode) ? EISDIR : 0;
}

} // namespace

std::FILE *OpenByFlags(std::wstring_view path, unsigned int flags, CFileException &failure) {
    std::filesystem::path const native = NativePath(path);
    int const descriptor = native.empty() ? -1 : ::open(native.c_str(), SystemFlags(flags), kNewFilePermissions);
    int error = descriptor >= 0 ? FolderError(descriptor) : native.empty() ? EINVAL : errno;
    if (error == 0) {
        std::FILE *const stream = ::fdopen(descriptor, StreamMode(flags));
        if (stream)
            return stream;
        error = errno;
    }
    if (descriptor >= 0)
        ::close(descriptor);
    failure = CFileException(CauseOf(error), error);
    return nullptr;
}

/// Streams carry bytes here.
void UseBinaryMode(std::FILE *) {}

int WriteThrough(std::FILE *stream, std::string_view bytes) {
    assert(stream);
    while (!bytes.empty()) {
        ssize_t const written = ::write(::fileno(stream), bytes.data(), bytes.size());
        if (written < 0 && errno != EINTR)
            return errno;
        if (written > 0)
            bytes.remove_prefix(static_cast<std::size_t>(written));
    }
    return 0;
}

} // namespace zvi::host
