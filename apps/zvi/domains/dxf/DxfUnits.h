#pragma once

#include <optional>
#include <string>

namespace zvi::app {

/// Name of a value of the header variable $INSUNITS: "none", "inch", ..., "unknown" for values that mean nothing.
std::string DxfUnitName(int value);

/// The value that has this name; nothing for "unknown", "absent" and other words.
std::optional<int> DxfUnitValue(std::string const &name);

} // namespace zvi::app
