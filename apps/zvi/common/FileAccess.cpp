#include "apps/zvi/common/FileAccess.h"

namespace zvi::app {

std::filesystem::path PathOf(std::string const &name) {
    return std::filesystem::path(std::u8string(name.begin(), name.end()));
}

std::string NameOf(std::filesystem::path const &path) {
    std::u8string const name = path.u8string();
    return {name.begin(), name.end()};
}

} // namespace zvi::app
