#pragma once

#include <array>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>
#include <vector>

namespace zvi::app {

/// What units are made of. Heat, force and electricity are products of these; turns and counts are not told from 1.
enum class Base { kLength, kMass, kTime, kTemperature, kAmount, kCurrent, kAngle, kData, kCount };

/// The power of each base.
struct Dimension {
    std::array<std::int8_t, static_cast<std::size_t>(Base::kCount)> powers{};

    bool operator==(Dimension const &) const = default;
};

/// "mass/(length*time^2)"; "a number" where every power is 0.
std::string DimensionText(Dimension const &dimension);

/// A unit in m, kg, sec, K, mol, A, rad and MB. Its factor is numerator / denominator, each exact where the unit is
/// defined so, so that factors between units lose nothing before the last division.
struct UnitDefinition {
    std::string_view name;
    Dimension dimension;
    double numerator = 1.0;
    double denominator = 1.0;
};

/// The unit of this name, case counting; null when there is none.
UnitDefinition const *FindUnit(std::string_view name);

/// The names of all units.
std::vector<std::string> UnitNames();

} // namespace zvi::app
