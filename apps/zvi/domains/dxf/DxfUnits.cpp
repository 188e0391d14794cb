#include "apps/zvi/domains/dxf/DxfUnits.h"

#include <algorithm>
#include <array>

namespace zvi::app {

namespace {

/// Names of the values 0, 1, 2, ...
constexpr std::array<char const *, 25> kUnitNames = {
    "none",   "inch", "foot", "mile", "mm", "cm", "m",  "km", "microinch", "mil",     "yard",    "angstrom", "nm",
    "micron", "dm",   "dam",  "hm",   "Gm", "au", "ly", "pc", "US foot",   "US inch", "US yard", "US mile"};

} // namespace

std::string DxfUnitName(int value) {
    bool const known = value >= 0 && value < static_cast<int>(kUnitNames.size());
    return known ? kUnitNames[static_cast<std::size_t>(value)] : "unknown";
}

std::optional<int> DxfUnitValue(std::string const &name) {
    auto const found = std::find(kUnitNames.begin(), kUnitNames.end(), name);
    if (found == kUnitNames.end())
        return std::nullopt;
    return static_cast<int>(found - kUnitNames.begin());
}

} // namespace zvi::app
