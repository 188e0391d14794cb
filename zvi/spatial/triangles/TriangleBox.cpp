#include "zvi/spatial/triangles/TriangleBoxDetail.h"

#include <algorithm>
#include <cmath>

namespace zvi::lib::spatial {

namespace {

using Corners = std::array<FloatPoint, 3>;

FloatPoint Minus(FloatPoint const &p, FloatPoint const &q) {
    return {p[0] - q[0], p[1] - q[1], p[2] - q[2]};
}

/// Whether an axis of the cube separates them.
bool IsBeside(Corners const &v, float half) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        float const low = std::min(std::min(v[0][axis], v[1][axis]), v[2][axis]);
        float const high = std::max(std::max(v[0][axis], v[1][axis]), v[2][axis]);
        if (low > half || high < -half)
            return true;
    }
    return false;
}

FloatPoint CrossProduct(FloatPoint const &p, FloatPoint const &q) {
    return {p[1] * q[2] - p[2] * q[1], p[2] * q[0] - p[0] * q[2], p[0] * q[1] - p[1] * q[0]};
}

/// Whether the plane through `point` meets the cube.
bool MeetsCube(FloatPoint const &normal, FloatPoint const &point, float half) {
    FloatPoint low{};
    FloatPoint high{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        float const toward = normal[axis] > 0.0f ? half : -half;
        low[axis] = -toward - point[axis];
        high[axis] = toward - point[axis];
    }
    auto const along = [&normal](FloatPoint const &p) {
        return normal[0] * p[0] + normal[1] * p[1] + normal[2] * p[2];
    };
    return !(along(low) > 0.0f) && along(high) >= 0.0f;
}

/// Whether the product of an edge and an axis of the cube separates them. The two other axes are `s` and `t`; `p` and
/// `q` are corners at the two ends of the triangle's shadow on that product.
bool IsSplit(FloatPoint const &edge, std::size_t s, std::size_t t, FloatPoint const &p, FloatPoint const &q,
             float half) {
    float const a = edge[t];
    float const b = edge[s];
    float const first = a * p[s] - b * p[t];
    float const second = a * q[s] - b * q[t];
    float const reach = std::abs(a) * half + std::abs(b) * half;
    return std::min(first, second) > reach || std::max(first, second) < -reach;
}

} // namespace

bool PlaneMeetsCube(Corners const &v, Cube const &cube) {
    FloatPoint const e0 = Minus(v[1], v[0]);
    FloatPoint const e1 = Minus(v[2], v[1]);
    return MeetsCube(CrossProduct(e0, e1), v[0], cube.half);
}

bool IsNotSeparated(Corners const &v, Cube const &cube) {
    float const half = cube.half;
    if (IsBeside(v, half) || !PlaneMeetsCube(v, cube))
        return false;
    FloatPoint const e0 = Minus(v[1], v[0]);
    FloatPoint const e1 = Minus(v[2], v[1]);
    FloatPoint const e2 = Minus(v[0], v[2]);
    constexpr std::size_t kX = 0;
    constexpr std::size_t kY = 1;
    constexpr std::size_t kZ = 2;
    return !(IsSplit(e0, kY, kZ, v[0], v[2], half) || IsSplit(e0, kX, kZ, v[0], v[2], half) ||
             IsSplit(e0, kX, kY, v[1], v[2], half) || IsSplit(e1, kY, kZ, v[0], v[2], half) ||
             IsSplit(e1, kX, kZ, v[0], v[2], half) || IsSplit(e1, kX, kY, v[0], v[1], half) ||
             IsSplit(e2, kY, kZ, v[0], v[1], half) || IsSplit(e2, kX, kZ, v[0], v[1], half) ||
             IsSplit(e2, kX, kY, v[1], v[2], half));
}

} // namespace zvi::lib::spatial
