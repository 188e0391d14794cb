#include "zvi/host/CommandLine.h"
#include "zvi/host/Paths.h"
#include "zvi/host/windows/WindowsHeader.h"

namespace zvi::host {

namespace {

/// A file along the host's path whose name may lack that ending; empty when there is none.
std::wstring AlongPath(std::wstring const &name, wchar_t const *ending) {
    std::wstring found(MAX_PATH, L'\0');
    DWORD length = ::SearchPathW(nullptr, name.c_str(), ending, MAX_PATH, found.data(), nullptr);
    if (length > found.size()) {
        found.resize(length);
        length = ::SearchPathW(nullptr, name.c_str(), ending, length, found.data(), nullptr);
    }
    found.resize(length);
    return found;
}

} // namespace

std::wstring FindProgram(std::wstring const &name) {
    std::wstring const native = NativePath(name).native();
    for (wchar_t const *const ending : {L".exe", L".com", L".bat", L".cmd"}) {
        std::wstring const found = native.empty() ? native : AlongPath(native, ending);
        if (!found.empty())
            return LibraryPath(found);
    }
    return {};
}

} // namespace zvi::host
