#pragma once

#include <string>
#include <vector>

namespace zvi::app {

/// What `zvi contacts` is asked for.
struct ContactsOptions {
    std::vector<std::string> files; ///< "-" is standard input; at least one
    double tolerance = 0.0;
    std::string objFile; ///< empty: none
    bool json = false;
    bool progress = true;
    std::string help; ///< not empty: help was asked for, and this is it
};

/// Reads the arguments of `zvi contacts`. Throws UsageError.
ContactsOptions ParseContactsOptions(std::vector<std::string> const &arguments);

} // namespace zvi::app
