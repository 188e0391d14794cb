#include "zvi/host/CommandLine.h"
#include "zvi/host/Paths.h"
#include "zvi/host/posix/EnvironmentCopy.h"

#include <sys/stat.h>
#include <unistd.h>

#include <algorithm>
#include <string_view>

namespace zvi::host {

namespace {

namespace fs = std::filesystem;

bool IsProgram(fs::path const &path) {
    struct stat known {};
    return ::stat(path.c_str(), &known) == 0 && S_ISREG(known.st_mode) && ::access(path.c_str(), X_OK) == 0;
}

/// The program of a bare name along the path of the environment; empty when there is none.
fs::path AlongPath(std::string const &name) {
    std::string const path = EnvironmentVariable("PATH");
    std::string_view rest = path;
    while (!rest.empty()) {
        std::size_t const end = std::min(rest.find(':'), rest.size());
        fs::path candidate = fs::path(rest.substr(0, end)) / name;
        if (end > 0 && IsProgram(candidate))
            return candidate;
        rest.remove_prefix(std::min(end + 1, rest.size()));
    }
    return {};
}

} // namespace

std::wstring FindProgram(std::wstring const &name) {
    fs::path const native = NativePath(name);
    bool const isBare = native.native().find('/') == std::string::npos;
    fs::path const found = isBare ? AlongPath(native.native()) : IsProgram(native) ? native : fs::path();
    return found.empty() ? std::wstring() : LibraryPath(found);
}

} // namespace zvi::host
