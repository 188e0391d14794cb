#include "zvi/host/ReplaceContent.h"

#include "zvi/host/Paths.h"

#include <fcntl.h>
#include <sys/file.h>
#include <sys/stat.h>
#include <unistd.h>

#include <atomic>
#include <cerrno>
#include <filesystem>
#include <initializer_list>
#include <string>

namespace zvi::host {

namespace {

namespace fs = std::filesystem;

constexpr mode_t kNewFile = 0666; // less what the process masks
constexpr mode_t kPermissions = 07777;

/// End of the name of a file that is going to be renamed over its target.
constexpr char kBesideSuffix[] = ".zvi-part";

std::error_code Failure(int number) {
    return {number, std::generic_category()};
}

bool IsOneOf(std::error_code const &failure, std::initializer_list<std::errc> failures) {
    for (std::errc const one : failures)
        if (failure == one)
            return true;
    return false;
}

/// An open file, which is closed at the end of its life; -1 when it could not be opened.
class OpenFile {
public:
    OpenFile() = default;
    OpenFile(std::string const &path, int flags, mode_t mode = 0)
        : m_number(::open(path.c_str(), flags | O_CLOEXEC, mode)) {}
    ~OpenFile() {
        if (m_number >= 0)
            ::close(m_number);
    }
    OpenFile(OpenFile &&other) noexcept : m_number(other.m_number) { other.m_number = -1; }
    OpenFile &operator=(OpenFile &&other) noexcept {
        std::swap(m_number, other.m_number);
        return *this;
    }

    explicit operator bool() const { return m_number >= 0; }
    int Number() const { return m_number; }

    /// Whether the path still leads to this file.
    bool IsAt(std::string const &path) const {
        struct stat own {};
        struct stat there {};
        return ::fstat(m_number, &own) == 0 && ::lstat(path.c_str(), &there) == 0 && S_ISREG(there.st_mode) &&
               own.st_dev == there.st_dev && own.st_ino == there.st_ino;
    }

    /// Whether this process, and no other, holds the file, and the path is still its own.
    bool Holds(std::string const &path) const { return ::flock(m_number, LOCK_EX | LOCK_NB) == 0 && IsAt(path); }

    std::error_code Write(std::string_view content) const {
        while (!content.empty()) {
            ssize_t const written = ::write(m_number, content.data(), content.size());
            if (written < 0 && errno != EINTR)
                return Failure(errno);
            if (written > 0)
                content.remove_prefix(static_cast<std::size_t>(written));
        }
        return {};
    }

    /// Some file systems have nothing to bring to a disk, and say so.
    std::error_code BringToDisk() const {
        bool const isDone = ::fsync(m_number) == 0 || errno == EINVAL || errno == ENOTSUP;
        return isDone ? std::error_code() : Failure(errno);
    }

private:
    int m_number = -1;
};

/// Where a chain of links ends, whether or not there is a file.
std::error_code FollowLinks(fs::path &path) {
    constexpr int kMostLinks = 40;
    for (int i = 0; i < kMostLinks; ++i) {
        std::error_code failure;
        fs::path const target = fs::read_symlink(path, failure);
        if (failure)
            return {}; // no link
        path = path.parent_path() / target;
    }
    return Failure(ELOOP);
}

/// Who holds a file beside the target, by a lock, may rename and remove it. What nobody holds was left by a process
/// that has ended.
void RemoveLeftOver(std::string const &beside) {
    OpenFile const left(beside, O_RDWR | O_NOFOLLOW | O_NONBLOCK);
    if (left && left.Holds(beside))
        ::unlink(beside.c_str());
}

/// Makes a file beside the target that is this process's own, and says which. All writers share one name, so that no
/// more than one file is ever left over; a name of its own is taken while another one writes.
std::error_code OpenBeside(std::string const &target, std::string &beside, OpenFile &file) {
    constexpr int kMostNames = 100;
    static std::atomic<unsigned int> count = 0;
    beside = target + kBesideSuffix;
    RemoveLeftOver(beside);
    for (int i = 0; i < kMostNames; ++i) {
        file = OpenFile(beside, O_WRONLY | O_CREAT | O_EXCL | O_NOFOLLOW, kNewFile);
        if (!file && errno != EEXIST)
            return Failure(errno);
        // Nobody else makes a name of this process's own.
        if (file && (i != 0 || file.Holds(beside)))
            return {};
        // There are file systems without locks.
        if (file && file.IsAt(beside))
            ::unlink(beside.c_str());
        beside = target + '.' + std::to_string(::getpid()) + '.' + std::to_string(count++) + kBesideSuffix;
    }
    return Failure(EEXIST);
}

/// Gives a new file what the old one has. Without the owner's right to the file the permissions are kept all the same.
std::error_code KeepPermissions(OpenFile const &file, struct stat const &old) {
    if (::fchown(file.Number(), old.st_uid, old.st_gid) != 0)
        static_cast<void>(::fchown(file.Number(), static_cast<uid_t>(-1), old.st_gid) == 0);
    return ::fchmod(file.Number(), old.st_mode & kPermissions) == 0 ? std::error_code() : Failure(errno);
}

/// `old` is null for a new file.
std::error_code WriteBeside(std::string const &target, std::string_view content, struct stat const *old,
                            bool &isRefused) {
    std::string beside;
    OpenFile file;
    std::error_code failure = OpenBeside(target, beside, file);
    isRefused = IsOneOf(failure, {std::errc::permission_denied, std::errc::operation_not_permitted,
                                  std::errc::filename_too_long, std::errc::read_only_file_system});
    if (failure)
        return failure;
    if (old)
        failure = KeepPermissions(file, *old);
    if (!failure)
        failure = file.Write(content);
    if (!failure)
        failure = file.BringToDisk();
    if (!failure && ::rename(beside.c_str(), target.c_str()) != 0) {
        failure = Failure(errno);
        isRefused = IsOneOf(failure, {std::errc::permission_denied, std::errc::operation_not_permitted,
                                      std::errc::device_or_resource_busy, std::errc::cross_device_link});
    }
    if (failure)
        ::unlink(beside.c_str());
    return failure;
}

/// The room is had before anything is changed.
std::error_code WriteInPlace(std::string const &target, std::string_view content, struct stat const &old) {
    OpenFile const file(target, O_WRONLY);
    if (!file)
        return Failure(errno);
    auto const size = static_cast<off_t>(content.size());
    if (size > old.st_size) {
        int const failure = ::posix_fallocate(file.Number(), 0, size);
        if (failure != 0) {
            static_cast<void>(::ftruncate(file.Number(), old.st_size) == 0);
            return Failure(failure);
        }
    }
    std::error_code failure = file.Write(content);
    if (!failure && ::ftruncate(file.Number(), size) != 0)
        failure = Failure(errno);
    return failure ? failure : file.BringToDisk();
}

std::error_code WriteDevice(std::string const &target, std::string_view content) {
    OpenFile const file(target, O_WRONLY | O_NOCTTY);
    return file ? file.Write(content) : Failure(errno);
}

} // namespace

std::error_code ReplaceContent(std::wstring_view path, std::string_view content) {
    fs::path native = NativePath(path);
    if (native.empty())
        return Failure(ENOENT);
    std::error_code failure = FollowLinks(native);
    if (failure)
        return failure;
    std::string const &target = native.native();
    bool isRefused = false;
    struct stat old {};
    if (::stat(target.c_str(), &old) != 0)
        return errno == ENOENT ? WriteBeside(target, content, nullptr, isRefused) : Failure(errno);
    if (S_ISDIR(old.st_mode))
        return Failure(EISDIR);
    if (!S_ISREG(old.st_mode))
        return WriteDevice(target, content);
    if (::faccessat(AT_FDCWD, target.c_str(), W_OK, AT_EACCESS) != 0)
        return Failure(errno);
    failure = WriteBeside(target, content, &old, isRefused);
    return failure && isRefused ? WriteInPlace(target, content, old) : failure;
}

} // namespace zvi::host
