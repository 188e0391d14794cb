#pragma once

#include <numbers>

namespace zvi::lib::base {

/// The double nearest to pi; 4 atan(1) gives the same one.
inline constexpr double kPi = std::numbers::pi;
/// A full turn in radians.
inline constexpr double kTwoPi = 2.0 * kPi;

inline constexpr double kRadiansPerDegree = kPi / 180.0;
inline constexpr double kDegreesPerRadian = 180.0 / kPi;

} // namespace zvi::lib::base
