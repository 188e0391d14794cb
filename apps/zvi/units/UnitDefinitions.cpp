// The units that labels are made of. Debian's libraries of units do not come for both hosts.

#include "apps/zvi/units/UnitDefinitions.h"

#include "apps/zvi/common/Joined.h"

#include <algorithm>
#include <cstdlib>
#include <iterator>
#include <numbers>

namespace zvi::app {

namespace {

//                                    m  kg  sec K mol A rad MB
constexpr Dimension kNumber = {{0, 0, 0, 0, 0, 0, 0, 0}};
constexpr Dimension kLength = {{1, 0, 0, 0, 0, 0, 0, 0}};
constexpr Dimension kVolume = {{3, 0, 0, 0, 0, 0, 0, 0}};
constexpr Dimension kMass = {{0, 1, 0, 0, 0, 0, 0, 0}};
constexpr Dimension kTime = {{0, 0, 1, 0, 0, 0, 0, 0}};
constexpr Dimension kFrequency = {{0, 0, -1, 0, 0, 0, 0, 0}};
constexpr Dimension kAcceleration = {{1, 0, -2, 0, 0, 0, 0, 0}};
constexpr Dimension kForce = {{1, 1, -2, 0, 0, 0, 0, 0}};
constexpr Dimension kPressure = {{-1, 1, -2, 0, 0, 0, 0, 0}};
constexpr Dimension kUnitWeight = {{-2, 1, -2, 0, 0, 0, 0, 0}};
constexpr Dimension kEnergy = {{2, 1, -2, 0, 0, 0, 0, 0}};
constexpr Dimension kPower = {{2, 1, -3, 0, 0, 0, 0, 0}};
constexpr Dimension kTemperature = {{0, 0, 0, 1, 0, 0, 0, 0}};
constexpr Dimension kAmount = {{0, 0, 0, 0, 1, 0, 0, 0}};
constexpr Dimension kCurrent = {{0, 0, 0, 0, 0, 1, 0, 0}};
constexpr Dimension kVoltage = {{2, 1, -3, 0, 0, -1, 0, 0}};
constexpr Dimension kResistance = {{2, 1, -3, 0, 0, -2, 0, 0}};
constexpr Dimension kAngle = {{0, 0, 0, 0, 0, 0, 1, 0}};
constexpr Dimension kAngularVelocity = {{0, 0, -1, 0, 0, 0, 1, 0}};
constexpr Dimension kData = {{0, 0, 0, 0, 0, 0, 0, 1}};

/// The pound force, 0.45359237 kg in standard gravity of 9.80665 m/sec^2, in units of 1e-13 N.
constexpr double kPoundForce = 44482216152605.0;

constexpr UnitDefinition kUnits[] = {
    {"mm", kLength, 1, 1000},
    {"cm", kLength, 1, 100},
    {"m", kLength},
    {"km", kLength, 1000},
    {"\u00B5m", kLength, 1, 1e6},
    {"in", kLength, 254, 10000},
    {"ft", kLength, 3048, 10000},
    {"yd", kLength, 9144, 10000},
    {"mile", kLength, 1609344, 1000},
    {"L", kVolume, 1, 1000},

    {"kg", kMass},
    {"g", kMass, 1, 1000},
    {"t", kMass, 1000},
    {"ton", kMass, 1000},
    {"lbm", kMass, 45359237, 1e8},
    {"lb", kMass, 45359237, 1e8},
    {"kip", kMass, 45359237, 1e5}, // a mass; the force is kips
    {"slug", kMass, kPoundForce, 3048e9},

    {"sec", kTime},
    {"ms", kTime, 1, 1000},
    {"min", kTime, 60},
    {"hr", kTime, 3600},
    {"day", kTime, 86400},
    {"Hz", kFrequency},
    {"kHz", kFrequency, 1000},
    {"cps", kFrequency},
    {"Gal", kAcceleration, 1, 100},

    {"N", kForce},
    {"kN", kForce, 1000},
    {"MN", kForce, 1e6},
    {"kgf", kForce, 980665, 1e5},
    {"tonf", kForce, 980665, 100},
    {"tf", kForce, 980665, 100},
    {"lbf", kForce, kPoundForce, 1e13},
    {"kips", kForce, kPoundForce, 1e10},

    {"Pa", kPressure},
    {"hPa", kPressure, 100},
    {"kPa", kPressure, 1000},
    {"MPa", kPressure, 1e6},
    {"GPa", kPressure, 1e9},
    {"bar", kPressure, 1e5},
    {"mbar", kPressure, 100},
    {"atm", kPressure, 101325},
    {"psi", kPressure, kPoundForce, 64516e5},
    {"ksi", kPressure, kPoundForce, 64516e2},
    {"psf", kPressure, kPoundForce, 929030400000},
    {"ksf", kPressure, kPoundForce, 929030400},
    {"pcf", kUnitWeight, kPoundForce, 283168465920},

    {"J", kEnergy},
    {"kJ", kEnergy, 1000},
    {"MJ", kEnergy, 1e6},
    {"kWh", kEnergy, 3600000},
    {"cal", kEnergy, 41868, 10000}, // the international table calorie, and Btu
    {"kcal", kEnergy, 41868, 10},
    {"Btu", kEnergy, 105505585262, 1e8},
    {"W", kPower},
    {"kW", kPower, 1000},
    {"MW", kPower, 1e6},
    {"hp", kPower, 745.69987158227022}, // 550 lbf*ft/sec

    {"\u00B0C", kTemperature},
    {"K", kTemperature},
    {"\u00B0F", kTemperature, 5, 9},

    {"mol", kAmount},
    {"A", kCurrent},
    {"V", kVoltage},
    {"ohm", kResistance},
    {"MB", kData},
    {"rad", kAngle},
    {"deg", kAngle, std::numbers::pi, 180},
    {"rev", kAngle, 2 * std::numbers::pi},
    {"rpm", kAngularVelocity, std::numbers::pi, 30},
    {"cycle", kNumber},
    {"Num.", kNumber},
    {"None", kNumber},
};

constexpr char const *kBaseNames[] = {"length",           "mass",    "time",  "temperature",
                                      "amount of matter", "current", "angle", "data"};
static_assert(std::size(kBaseNames) == static_cast<std::size_t>(Base::kCount));

/// The bases whose power has this sign, joined by "*".
std::string Bases(Dimension const &dimension, int sign) {
    std::string text;
    for (std::size_t i = 0; i < std::size(kBaseNames); ++i) {
        int const power = dimension.powers[i] * sign;
        if (power <= 0)
            continue;
        text += text.empty() ? "" : "*";
        text += kBaseNames[i];
        if (power > 1)
            text += Joined("^", std::to_string(power));
    }
    return text;
}

} // namespace

std::string DimensionText(Dimension const &dimension) {
    std::string const over = Bases(dimension, 1);
    std::string const under = Bases(dimension, -1);
    if (under.empty())
        return over.empty() ? "a number" : over;
    bool const isOne = under.find('*') == std::string::npos;
    return Joined(over.empty() ? "1" : over, isOne ? "/" : "/(", under, isOne ? "" : ")");
}

UnitDefinition const *FindUnit(std::string_view name) {
    auto const found = std::find_if(std::begin(kUnits), std::end(kUnits),
                                    [name](UnitDefinition const &unit) { return unit.name == name; });
    return found == std::end(kUnits) ? nullptr : &*found;
}

std::vector<std::string> UnitNames() {
    std::vector<std::string> names;
    names.reserve(std::size(kUnits));
    for (UnitDefinition const &unit : kUnits)
        names.emplace_back(unit.name);
    return names;
}

} // namespace zvi::app
