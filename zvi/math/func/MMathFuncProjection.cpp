#include "zvi/math/elementary/Elementary.h"
#include "zvi/math/func/MMathFunc.h"

#include <algorithm>
#include <cmath>
#include <optional>

#include "zvi/math/func/MMathFuncDetail.h"

namespace zvi::lib {

using math::Cross;
using math::Load3;
using math::Unit;
using math::Vec2;
using math::Vec3;

namespace {

constexpr double kGrazingSine = 0.0174524;    // a direction nearer to the plane, about one degree, does not project
constexpr double kCuttingSine = 1e-10;        // the same for a cutting plane
constexpr double kAlongNormal = 1e-7;         // a unit vector that misses the normal by less has no part in the plane
constexpr double kCylinderAxisSine = 0.17452; // the z of a direction that has no x and y, below which it is rejected

Vec3 NormalOf(double const *a, double const *b, double const *c) {
    return Cross(Load3(b) - Load3(a), Load3(c) - Load3(a));
}

bool ProjectAlong(double const *p, double const *dir, double const *a, double const *b, double const *c,
                  double smallestSine, double *out) {
    Vec3 const n = Unit(NormalOf(a, b, c));
    Vec3 const d = Unit(Load3(dir));
    double const sine = Dot(d, n);
    if (std::abs(sine) < smallestSine)
        return false;
    Store(Load3(p) + d * (Dot(Load3(a), n) - Dot(Load3(p), n)) / sine, out);
    return true;
}

// A point as its distance from z, its angle about z in radians and its height.
struct Cylindrical {
    double r, angle, z;
};

Cylindrical CylindricalOf(double const *p, double tol) {
    double const r = std::sqrt(p[0] * p[0] + p[1] * p[1]);
    double const angle = std::abs(p[0]) < tol ? MMathFunc::m_pi / 2.0 : MMathFunc::mathAcos(p[0] / r);
    return {r, p[1] < 0.0 ? -angle : angle, p[2]};
}

void Store(Cylindrical c, double *out) {
    math::Store(Vec3{c.r * Cos(c.angle), c.r * Sin(c.angle), c.z}, out);
}

// A t^2 + 2 B t + C = 0: where a line meets a surface, t along its unit direction.
struct Quadratic {
    double a, b, c;
};

std::optional<double> NearerRoot(Quadratic q, double tol) {
    if (std::abs(q.a) < tol && !(std::abs(q.b) < tol))
        return -q.c / (2.0 * q.b);
    double const discriminant = q.b * q.b - q.a * q.c;
    if (q.a == 0.0 || !(discriminant >= 0.0))
        return std::nullopt;
    double const ahead = (-q.b + std::sqrt(discriminant)) / q.a;
    double const behind = (-q.b - std::sqrt(discriminant)) / q.a;
    return std::abs(ahead) < std::abs(behind) ? ahead : behind;
}

bool StoreNearerPoint(Vec3 p, Vec3 direction, Quadratic q, double tol, double *out) {
    std::optional<double> const t = NearerRoot(q, tol);
    if (!t)
        return false;
    math::Store(p + direction * *t, out);
    return true;
}

} // namespace

bool MMathFunc::project_on_plane_normal(double const *p, double const *a, double const *b, double const *c, double tol,
                                        double *out) {
    Vec3 const n = NormalOf(a, b, c);
    double const square = math::Dot(n, n);
    if (std::abs(square) < tol)
        return false;
    Store(Load3(p) + n * (math::Dot(Load3(a), n) - math::Dot(Load3(p), n)) / square, out);
    return true;
}

bool MMathFunc::project_on_plane_normal(double const *p, double a, double b, double c, double d, double tol,
                                        double *out) {
    Vec3 const n{a, b, c};
    double const square = math::Dot(n, n);
    if (square < tol)
        return false;
    Store(Load3(p) + n * (d - math::Dot(n, Load3(p))) / square, out);
    return true;
}

bool MMathFunc::project_on_plane_mf_vector(double const *p, double const *dir, double const *a, double const *b,
                                           double const *c, double /*tol*/, double *out) {
    return ProjectAlong(p, dir, a, b, c, kGrazingSine, out);
}

bool MMathFunc::project_on_plane_mf_vector_for_CuttingPlane(double const *p, double const *dir, double const *a,
                                                            double const *b, double const *c, double *out) {
    return ProjectAlong(p, dir, a, b, c, kCuttingSine, out);
}

int MMathFunc::project_on_plane_vector(double const *n, double const *v, double *out) {
    double const k = Dot(n, v);
    if (1.0 - std::abs(k) < kAlongNormal)
        return 0;
    Store(Load3(v) - Load3(n) * k, out);
    return 1;
}

bool MMathFunc::project_on_cylinder_normal(double const *p, double radius, double height, double tol, double *out) {
    if (!(height > 0.0))
        return false;
    Cylindrical const c = CylindricalOf(p, tol);
    if (c.r < tol)
        return false;
    Store(Cylindrical{radius, c.angle, c.z}, out);
    return true;
}

bool MMathFunc::project_on_cylinder_mf_vector(double const *p, double const *dir, double radius, double /*height*/,
                                              double tol, double *out) {
    Vec3 const d = Unit(Load3(dir));
    if (std::abs(d.x) < tol && std::abs(d.y) < tol && std::abs(d.z) < kCylinderAxisSine)
        return false;
    Quadratic const q{d.x * d.x + d.y * d.y, p[0] * d.x + p[1] * d.y, p[0] * p[0] + p[1] * p[1] - radius * radius};
    return StoreNearerPoint(Load3(p), d, q, tol, out);
}

bool MMathFunc::project_on_sphere_normal(double const *p, double radius, double tol, double *out) {
    if (!(radius > 0.0))
        return false;
    Cylindrical const c = CylindricalOf(p, tol);
    if (c.r < tol) {
        if (std::abs(c.z) < tol)
            return false;
        Copy(0.0, 0.0, c.z < 0.0 ? -radius : radius, out);
        return true;
    }
    double const slope = c.r / c.z; // infinite on the equator, which gives the height 0
    double const height = std::sqrt(radius * radius / (slope * slope + 1.0));
    double const distance = mathSqrt(radius * radius - height * height);
    Store(Cylindrical{distance, c.angle, c.z < 0.0 ? -height : height}, out);
    return true;
}

bool MMathFunc::project_on_sphere_mf_vector(double const *p, double const *dir, double radius, double tol,
                                            double *out) {
    Vec3 const from = Load3(p);
    Vec3 const d = Unit(Load3(dir));
    Quadratic const q{math::Dot(d, d), math::Dot(from, d), math::Dot(from, from) - radius * radius};
    return StoreNearerPoint(from, d, q, tol, out);
}

bool MMathFunc::project_on_cone_normal(double const *p, double radius1, double radius2, double height, double tol,
                                       double *out) {
    if (!(height > 0.0))
        return false;
    Cylindrical const c = CylindricalOf(p, tol);
    if (c.r < tol)
        return false;
    // Beyond the apex the nearer generator is the mirrored one: the same line as seen from -r.
    double const side = radius1 + (radius2 - radius1) * c.z / height < 0.0 ? -1.0 : 1.0;
    Vec2 const generator{radius2 - radius1, height};
    double const t = math::Dot(Vec2{side * c.r - radius1, c.z}, generator) / math::Dot(generator, generator);
    Store(Cylindrical{side * (radius1 + t * generator.x), c.angle, t * height}, out);
    return true;
}

bool MMathFunc::project_on_cone_mf_vector(double const *p, double const *dir, double radius1, double radius2,
                                          double height, double tol, double *out) {
    if (!(height > 0.0))
        return false;
    Vec3 const d = Unit(Load3(dir));
    double const k = (radius2 - radius1) / height;
    double const radius = radius1 + k * p[2];
    Quadratic const q{d.x * d.x + d.y * d.y - k * k * d.z * d.z, p[0] * d.x + p[1] * d.y - k * d.z * radius,
                      p[0] * p[0] + p[1] * p[1] - radius * radius};
    return StoreNearerPoint(Load3(p), d, q, tol, out);
}

bool MMathFunc::project_on_ellipsoid_normal(double const *p, double a, double b, double tol, double *out) {
    if (!(a > 0.0) || !(b > 0.0))
        return false;
    Cylindrical const c = CylindricalOf(p, tol);
    if (c.r < tol) {
        Copy(0.0, 0.0, b, out);
        return true;
    }
    double const focus = std::sqrt(std::abs(a * a - b * b));
    Vec2 const toFocus = a >= b ? Vec2{focus, 0.0} : Vec2{0.0, focus};
    double const z = c.z + 0.0; // no negative zero, whose angle over the inner focus would be -pi
    double const fromFirst = Atan2(z - toFocus.y, c.r - toFocus.x);
    double const fromSecond = Atan2(z + toFocus.y, c.r + toFocus.x);
    double const normal = (fromFirst + fromSecond) / 2.0;
    Vec2 const point{a * a * Cos(normal), b * b * Sin(normal)};
    double const scale = std::sqrt(point.x * Cos(normal) + point.y * Sin(normal));
    Store(Cylindrical{point.x / scale, c.angle, point.y / scale}, out);
    return true;
}

bool MMathFunc::project_on_ellipsoid_mf_vector(double const *p, double const *dir, double a, double b, double tol,
                                               double *out) {
    if (!(a > 0.0) || !(b > 0.0))
        return false;
    double const m = std::max(a, b);
    Vec3 const d = Unit(Load3(dir));
    // Scaled to a sphere of radius m; t stays the distance along the unit direction.
    Vec3 const scaledP{p[0] * (m / a), p[1] * (m / a), p[2] * (m / b)};
    Vec3 const scaledD{d.x * (m / a), d.y * (m / a), d.z * (m / b)};
    Quadratic const q{math::Dot(scaledD, scaledD), math::Dot(scaledP, scaledD), math::Dot(scaledP, scaledP) - m * m};
    return StoreNearerPoint(Load3(p), d, q, tol, out);
}

} // namespace zvi::lib
