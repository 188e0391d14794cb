#pragma once

#include <string>

namespace zvi::app {

/// The texts one after another.
template <typename... Parts>
std::string Joined(Parts const &...parts) {
    std::string text;
    ((text += parts), ...);
    return text;
}

} // namespace zvi::app
