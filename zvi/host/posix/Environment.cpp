#include "zvi/host/Environment.h"

#include "zvi/host/CodePage.h"
#include "zvi/host/Paths.h"
#include "zvi/host/posix/EnvironmentCopy.h"

#include <cstdlib>
#include <mutex>

extern "C" char **environ;

namespace zvi::host {

namespace {

/// Never destroyed, since workers start children until the process ends.
std::mutex &Guard() {
    static std::mutex *const guard = new std::mutex;
    return *guard;
}

} // namespace

bool SetEnvironmentPath(std::wstring const &name, std::wstring const &value) {
    std::string const nativeName = BytesOfWide(name);
    std::string const nativeValue = NativePath(value).native();
    std::lock_guard const lock(Guard());
    return ::setenv(nativeName.c_str(), nativeValue.c_str(), 1) == 0;
}

std::vector<std::string> EnvironmentCopy() {
    std::lock_guard const lock(Guard());
    std::vector<std::string> copy;
    for (char **variable = environ; variable && *variable; ++variable)
        copy.emplace_back(*variable);
    return copy;
}

std::string EnvironmentVariable(char const *name) {
    std::lock_guard const lock(Guard());
    char const *const value = std::getenv(name);
    return value ? value : "";
}

} // namespace zvi::host
