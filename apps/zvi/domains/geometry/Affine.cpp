#include "apps/zvi/domains/geometry/Affine.h"

#include "zvi/math/elementary/Elementary.h"

#include <cmath>
#include <numbers>

namespace zvi::app {

namespace {

/// An extrusion direction whose x and y both stay below this is taken as near the z axis; the number is the format's.
constexpr double kNearZAxis = 1.0 / 64.0;

Point3 Unit(Point3 const &v) {
    double const length = std::sqrt(v.x * v.x + v.y * v.y + v.z * v.z);
    return {v.x / length, v.y / length, v.z / length};
}

bool HasDirection(Point3 const &v) {
    double const squared = v.x * v.x + v.y * v.y + v.z * v.z;
    return squared > 0.0 && std::isfinite(squared);
}

} // namespace

Point3 Affine::Point(Point3 const &p) const {
    Point3 const v = Direction(p);
    return {v.x + m[0][3], v.y + m[1][3], v.z + m[2][3]};
}

Point3 Affine::Direction(Point3 const &v) const {
    return {m[0][0] * v.x + m[0][1] * v.y + m[0][2] * v.z, m[1][0] * v.x + m[1][1] * v.y + m[1][2] * v.z,
            m[2][0] * v.x + m[2][1] * v.y + m[2][2] * v.z};
}

Affine Then(Affine const &first, Affine const &second) {
    Affine both;
    for (int row = 0; row < 3; ++row) {
        for (int column = 0; column < 4; ++column) {
            double const *r = second.m[row];
            both.m[row][column] = r[0] * first.m[0][column] + r[1] * first.m[1][column] + r[2] * first.m[2][column] +
                                  (column == 3 ? r[3] : 0.0);
        }
    }
    return both;
}

Affine Translation(Point3 const &by) {
    Affine map;
    map.m[0][3] = by.x;
    map.m[1][3] = by.y;
    map.m[2][3] = by.z;
    return map;
}

Affine Scaling(Point3 const &factors) {
    Affine map;
    map.m[0][0] = factors.x;
    map.m[1][1] = factors.y;
    map.m[2][2] = factors.z;
    return map;
}

Affine RotationZ(double degrees) {
    Point3 const direction = UnitAtDegrees(degrees);
    Affine map;
    map.m[0][0] = direction.x;
    map.m[0][1] = -direction.y;
    map.m[1][0] = direction.y;
    map.m[1][1] = direction.x;
    return map;
}

Affine FromExtrusion(Point3 const &extrusion) {
    if (!HasDirection(extrusion) || (extrusion.x == 0.0 && extrusion.y == 0.0 && extrusion.z > 0.0))
        return {};
    Point3 const z = Unit(extrusion);
    bool const nearZAxis = std::abs(z.x) < kNearZAxis && std::abs(z.y) < kNearZAxis;
    Point3 const x = Unit(Cross(nearZAxis ? Point3{0.0, 1.0, 0.0} : Point3{0.0, 0.0, 1.0}, z));
    Point3 const y = Unit(Cross(z, x));
    return {{{x.x, y.x, z.x, 0.0}, {x.y, y.y, z.y, 0.0}, {x.z, y.z, z.z, 0.0}}};
}

Point3 Cross(Point3 const &a, Point3 const &b) {
    return {a.y * b.z - a.z * b.y, a.z * b.x - a.x * b.z, a.x * b.y - a.y * b.x};
}

Point3 UnitAtDegrees(double degrees) {
    constexpr double kQuarter = 90.0;
    double const turned = std::fmod(degrees, 4.0 * kQuarter);
    double const quarters = turned / kQuarter;
    if (quarters == std::floor(quarters)) {
        constexpr double kCosines[4] = {1.0, 0.0, -1.0, 0.0};
        int const quarter = (static_cast<int>(quarters) + 4) % 4;
        return {kCosines[quarter], kCosines[(quarter + 3) % 4], 0.0};
    }
    double const radians = turned * std::numbers::pi / 180.0;
    return {lib::Cos(radians), lib::Sin(radians), 0.0};
}

} // namespace zvi::app
