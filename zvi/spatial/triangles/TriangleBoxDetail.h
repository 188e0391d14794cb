#pragma once

#include "zvi/Export.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>

namespace zvi::lib::spatial {

/// Three coordinates in single precision.
using FloatPoint = std::array<float, 3>;

/// Whether no axis separates a triangle from a cube of half edge `half` around the origin: the separating axis test of
/// T. Akenine-Moeller, "Fast 3D Triangle-Box Overlap Testing", Journal of Graphics Tools 6 (2001), in `float` as it
/// stands there, but the three axes of the cube come first.
ZVI_API bool IsNotSeparated(std::array<FloatPoint, 3> const &corners, float half);

/// Whether the first corner lies so well within the cube, and the others so near, that no test could separate them
/// whatever is rounded: the test of the plane then has terms of one sign alone, and those of the nine products of edges
/// miss their limit by more than 1e-4 of it, where rounding makes out less than 2e-5.
inline bool TouchesSurely(std::array<FloatPoint, 3> const &v, float half) {
    constexpr float kWithin = 1.0f - 1e-4f;
    constexpr float kNear = 16.0f;
    /// Half edges between which nothing overflows or loses its digits.
    constexpr float kLeastHalf = 1e-8f;
    constexpr float kMostHalf = 1e8f;
    float first = 0.0f;
    float others = 0.0f;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        first = std::max(first, std::abs(v[0][axis]));
        others = std::max({others, std::abs(v[1][axis]), std::abs(v[2][axis])});
    }
    return first <= half * kWithin && others <= half * kNear && half > kLeastHalf && half < kMostHalf;
}

/// The same answer, at once where it is certain.
inline bool TouchesCube(std::array<FloatPoint, 3> const &corners, float half) {
    return TouchesSurely(corners, half) || IsNotSeparated(corners, half);
}

} // namespace zvi::lib::spatial
