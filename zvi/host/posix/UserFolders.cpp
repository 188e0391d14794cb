#include "zvi/host/posix/UserFolders.h"

#include <pwd.h>
#include <unistd.h>

#include <cstdlib>
#include <vector>

namespace zvi::host {

namespace {

/// Bytes for the entry of the user in the system's table; longer ones are taken as absent.
constexpr std::size_t kUserEntry = std::size_t{1} << 16;

/// The variable's value, if it is an absolute path as the convention asks; else empty.
std::filesystem::path AbsoluteFrom(char const *variable) {
    char const *const value = std::getenv(variable);
    std::filesystem::path path = value ? value : "";
    return path.is_absolute() ? path : std::filesystem::path();
}

} // namespace

std::filesystem::path HomeFolder() {
    if (std::filesystem::path home = AbsoluteFrom("HOME"); !home.empty())
        return home;
    std::vector<char> room(kUserEntry);
    passwd entry{};
    passwd *found = nullptr;
    if (::getpwuid_r(::getuid(), &entry, room.data(), room.size(), &found) != 0 || !found || !found->pw_dir)
        return {};
    return found->pw_dir;
}

std::filesystem::path ConfigurationFolder() {
    if (std::filesystem::path folder = AbsoluteFrom("XDG_CONFIG_HOME"); !folder.empty())
        return folder;
    std::filesystem::path const home = HomeFolder();
    return home.empty() ? home : home / ".config";
}

} // namespace zvi::host
