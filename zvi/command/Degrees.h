#pragma once

namespace zvi::lib {

/// Degrees to radians in the command language: a single-precision value held as a double, since results of existing
/// input files depend on these digits.
inline constexpr double DEG_TO_RAD = 0.01745329238474369;
/// Radians to degrees, as lossy.
inline constexpr double RAD_TO_DEG = 57.295780181884766;

} // namespace zvi::lib
