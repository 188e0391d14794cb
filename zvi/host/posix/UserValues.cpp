#include "zvi/host/UserValuesDetail.h"

#include "zvi/host/posix/UserFolders.h"

namespace zvi::host {

std::string OwnUserValue(std::string_view name) {
    std::filesystem::path const folder = ConfigurationFolder();
    return folder.empty() ? std::string() : FolderValue(folder / "ZORVI" / "TEST", name);
}

bool SetOwnUserValue(std::string_view name, std::string_view value) {
    std::filesystem::path const folder = ConfigurationFolder();
    return !folder.empty() && SetFolderValue(folder / "ZORVI" / "TEST", name, value);
}

} // namespace zvi::host
