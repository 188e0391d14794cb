#include "zvi/host/Paths.h"

#include <system_error>

namespace zvi::host {

std::wstring CurrentFolder() {
    std::error_code failure;
    std::filesystem::path const folder = std::filesystem::current_path(failure);
    return failure ? std::wstring() : LibraryPath(folder);
}

bool SetCurrentFolder(std::wstring_view path) {
    std::error_code failure;
    std::filesystem::current_path(NativePath(path), failure);
    return !failure;
}

} // namespace zvi::host
