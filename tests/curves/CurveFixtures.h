#pragma once

#include "zvi/curves/T_LINE_G.h"

#include <gtest/gtest.h>

#include <cmath>
#include <numbers>

namespace zvi::lib::test {

using Vec3 = MVector<double, 3>;
using Points = MArray<Vec3>;

inline constexpr double kPi = std::numbers::pi;
/// A chord below it makes a line of an arc.
inline constexpr double kTol = 1e-4;

inline double Distance(Vec3 const &a, Vec3 const &b) {
    Vec3 const d = b - a;
    return std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]);
}

inline void ExpectNear(Vec3 const &actual, Vec3 const &expected, double tol = 1e-9) {
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(actual[i], expected[i], tol) << "coordinate " << i;
}

/// The point of the circle in a direction in degrees, exactly on the axes where the direction is.
inline Vec3 OnCircle(Vec3 const &center, double radius, double degrees, double z) {
    auto const clean = [](double v) { return std::fabs(v) < 1e-15 ? 0.0 : v; };
    double const angle = degrees * kPi / 180;
    return {center[0] + radius * clean(std::cos(angle)), center[1] + radius * clean(std::sin(angle)), z};
}

inline T_LINE_G Line(Vec3 const &a, Vec3 const &b) {
    return T_LINE_G().Set(a, b);
}

inline T_LINE_G Circle(Vec3 const &center, double radius) {
    return T_LINE_G().Set(center, radius, {0, 0, 1});
}

/// An arc seen in plan from direction `from` to `to` (degrees), counter-clockwise, or clockwise for a negative `side`,
/// that rises from `z1` to `z2`.
inline T_LINE_G Helix(Vec3 const &center, double radius, double from, double to, double side, double z1, double z2) {
    return T_LINE_G().Set(OnCircle(center, radius, from, z1), OnCircle(center, radius, to, z2), 1, center, {0, 0, side},
                          1, 1e-9);
}

/// The same at the height of its centre.
inline T_LINE_G Arc(Vec3 const &center, double radius, double from, double to, double side = 1) {
    return Helix(center, radius, from, to, side, center[2], center[2]);
}

} // namespace zvi::lib::test
