#include "zvi/host/Files.h"

#include "zvi/host/NamePatternDetail.h"
#include "zvi/host/Paths.h"

#include <fcntl.h>
#include <ftw.h>
#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <filesystem>

namespace zvi::host {

namespace {

namespace fs = std::filesystem;

constexpr mode_t kAnybodyWrites = S_IWUSR | S_IWGRP | S_IWOTH;

std::uint8_t AttributesOf(fs::path const &native, struct stat const &known) {
    bool const isWritable =
        (known.st_mode & kAnybodyWrites) != 0 && ::faccessat(AT_FDCWD, native.c_str(), W_OK, AT_EACCESS) == 0;
    std::string const name = native.filename().native();
    bool const isHidden = name.size() > 1 && name[0] == '.' && name != "..";
    return static_cast<std::uint8_t>((isWritable ? 0 : CFileStatus::readOnly) | (isHidden ? CFileStatus::hidden : 0) |
                                     (S_ISDIR(known.st_mode) ? CFileStatus::directory : 0));
}

int RemoveEntry(char const *path, struct stat const *, int, FTW *) {
    std::remove(path);
    return 0; // and on with the next one
}

} // namespace

bool GetFileStatus(std::wstring_view path, CFileStatus &status) {
    fs::path const native = NativePath(path);
    struct stat known {};
    if (::stat(native.c_str(), &known) != 0)
        return false;
    std::error_code failure;
    fs::path const whole = fs::absolute(native, failure);
    status = {.m_ctime = known.st_ctime,
              .m_mtime = known.st_mtime,
              .m_atime = known.st_atime,
              .m_size = S_ISDIR(known.st_mode) ? 0 : static_cast<std::uint64_t>(known.st_size),
              .m_attribute = AttributesOf(native, known),
              .m_szFullName = LibraryPath(failure ? native : whole)};
    return true;
}

bool Exists(std::wstring_view path) {
    struct stat known {};
    return ::stat(NativePath(path).c_str(), &known) == 0;
}

bool IsSameFile(std::wstring_view left, std::wstring_view right) {
    struct stat a {};
    struct stat b {};
    return ::stat(NativePath(left).c_str(), &a) == 0 && ::stat(NativePath(right).c_str(), &b) == 0 &&
           a.st_dev == b.st_dev && a.st_ino == b.st_ino;
}

std::vector<FoundFile> FindFiles(std::wstring_view pattern) {
    std::size_t const parted = pattern.find_last_of(L"\\/");
    std::size_t const start = parted == pattern.npos ? 0 : parted + 1;
    fs::path const folder = NativePath(start == 0 ? std::wstring_view(L".") : pattern.substr(0, start));
    std::vector<FoundFile> found;
    std::error_code failure;
    for (fs::directory_iterator at(folder, failure), end; !failure && at != end; at.increment(failure)) {
        fs::path const &native = at->path();
        std::wstring name = LibraryPath(fs::path("/") / native.filename()).substr(1);
        struct stat known {};
        // A link that leads nowhere is an entry all the same.
        bool const isThere = ::stat(native.c_str(), &known) == 0 || ::lstat(native.c_str(), &known) == 0;
        if (isThere && FitsPattern(name, pattern.substr(start)))
            found.push_back({std::move(name), AttributesOf(native, known)});
    }
    std::sort(found.begin(), found.end(), [](FoundFile const &a, FoundFile const &b) { return a.name < b.name; });
    return found;
}

bool MakeFolder(std::wstring_view path) {
    return ::mkdir(NativePath(path).c_str(), 0777) == 0;
}

bool RemoveFile(std::wstring_view path) {
    return ::unlink(NativePath(path).c_str()) == 0;
}

bool RemoveFolder(std::wstring_view path) {
    return ::rmdir(NativePath(path).c_str()) == 0;
}

bool RemoveTree(std::wstring_view path) {
    constexpr int kOpenFolders = 16;
    std::string name = NativePath(path).native();
    // With a slash behind it a link would be followed.
    while (name.ends_with('/'))
        name.pop_back();
    struct stat known {};
    return ::nftw(name.c_str(), RemoveEntry, kOpenFolders, FTW_DEPTH | FTW_PHYS) == 0 &&
           ::lstat(name.c_str(), &known) != 0;
}

bool RenameFile(std::wstring_view from, std::wstring_view to) {
    fs::path const source = NativePath(from);
    fs::path const target = NativePath(to);
    struct stat known {};
    struct stat there {};
    if (::lstat(source.c_str(), &known) != 0)
        return false;
    bool const isTaken = ::lstat(target.c_str(), &there) == 0;
    bool const isSame = isTaken && known.st_dev == there.st_dev && known.st_ino == there.st_ino;
    return (!isTaken || isSame) && ::rename(source.c_str(), target.c_str()) == 0;
}

bool MakeShortcut(std::wstring_view path, Shortcut const &shortcut) {
    fs::path const link = NativePath(path);
    fs::path const target = NativePath(shortcut.target);
    std::error_code failure;
    if (fs::is_symlink(fs::symlink_status(link, failure)))
        ::unlink(link.c_str());
    return !target.empty() && ::symlink(target.c_str(), link.c_str()) == 0;
}

std::FILE *OpenStream(std::wstring_view path, char const *mode) {
    return std::fopen(NativePath(path).c_str(), (std::string(mode) + 'e').c_str());
}

std::string_view LineEnd() noexcept {
    return "\n";
}

} // namespace zvi::host
