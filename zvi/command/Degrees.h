#pragma once

namespace zvi::lib {

/// Degrees to radians and back in the command language. Both are single-precision values held as doubles: results of
/// existing input files depend on these digits.
inline constexpr double DEG_TO_RAD = 0.01745329238474369;
inline constexpr double RAD_TO_DEG = 57.295780181884766;

} // namespace zvi::lib
