#pragma once

#include "zvi/Export.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace zvi::lib::spatial {

/// Three coordinates in single precision.
using FloatPoint = std::array<float, 3>;

/// A cube around the origin.
struct Cube {
    float half;   ///< of its edge
    float within; ///< farthest that a place may be along the axes to lie in the cube so well that no rounding counts
    float near;   ///< farthest that the corners of a triangle may be for that

    explicit Cube(float halfEdge)
        : half(halfEdge), within(IsMeasurable(halfEdge) ? halfEdge * (1.0f - kLeft) : -1.0f), near(halfEdge * kNear) {}

private:
    /// Of corners that are up to so many half edges away rounding makes out less than 2e-5 of the cube, where this part
    /// of it is left.
    static constexpr float kNear = 16.0f, kLeft = 1e-4f;
    /// Half edges between which nothing overflows or loses its digits.
    static constexpr float kLeast = 1e-8f, kGreatest = 1e8f;

    static bool IsMeasurable(float half) { return half > kLeast && half < kGreatest; }
};

/// Whether no axis separates a triangle from the cube: the separating axis test of T. Akenine-Moeller, "Fast 3D
/// Triangle-Box Overlap Testing", Journal of Graphics Tools 6 (2001), in `float` as it stands there, but the three axes
/// of the cube come first and the nine products of edges last.
ZVI_API bool IsNotSeparated(std::array<FloatPoint, 3> const &corners, Cube const &cube);

/// The same of a triangle whose second or third corner lies within the cube so well that only the plane may separate
/// them, by its rounding.
ZVI_API bool PlaneMeetsCube(std::array<FloatPoint, 3> const &corners, Cube const &cube);

/// The largest of the coordinates, without their signs.
inline float FarthestAlong(FloatPoint const &p) {
    return std::max(std::max(std::abs(p[0]), std::abs(p[1])), std::abs(p[2]));
}

/// The answer of `IsNotSeparated`, without its tests where a corner tells it. With the first corner within, that of the
/// plane has terms of one sign alone.
inline bool TouchesCube(std::array<FloatPoint, 3> const &corners, Cube const &cube) {
    float const first = FarthestAlong(corners[0]);
    float const second = FarthestAlong(corners[1]);
    float const third = FarthestAlong(corners[2]);
    if (std::min(std::min(first, second), third) > cube.within || std::max(std::max(first, second), third) > cube.near)
        return IsNotSeparated(corners, cube);
    return first <= cube.within || PlaneMeetsCube(corners, cube);
}

} // namespace zvi::lib::spatial
