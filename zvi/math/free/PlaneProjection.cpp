#include "zvi/math/free/PlaneProjection.h"

#include "zvi/math/elementary/Elementary.h"
#include "zvi/math/free/Angle.h"
#include "zvi/math/free/Distance.h"
#include "zvi/math/free/FreeFamilyDetail.h"
#include "zvi/math/free/OnLine.h"
#include "zvi/math/free/Product.h"
#include "zvi/math/free/Scalar.h"

#include <cmath>

namespace zvi::lib {

using math::Dot3;

namespace {

/// A normal whose squared length is below this gives no plane.
constexpr double kSquaredNormalZero = 1e-8;
/// A direction shorter than this is none; model units.
constexpr double kDirectionZero = 1e-8;
/// A direction whose sine against the plane is below this never meets it.
constexpr double kAlongPlane = 1e-8;
/// Tolerance with which a point counts as on the segment and is its own foot, a cosine.
constexpr double kOnSegment = 1e-8;

} // namespace

void project_on_line(double const *a, double const *b, double const *p, double *out) {
    if (is_on_line_3d(a, b, p, kOnSegment)) {
        math::Copy3(p, out);
        return;
    }
    double ab[3];
    double ap[3];
    Subtract(b, a, ab);
    Subtract(p, a, ap);
    double e1[3];
    double e2[3];
    gram_schmidt_orthonormal_basis_3d(ab, ap, e1, e2);
    double const line[2] = {Dot3(ab, e1), Dot3(ab, e2)};
    double const point[2] = {Dot3(ap, e1), Dot3(ap, e2)};
    double const along = norm_2d(point) * Cos(radian(angle_2d(line, point)));
    double const foot[3] = {a[0] + e1[0] * along, a[1] + e1[1] * along, a[2] + e1[2] * along};
    math::Copy3(foot, out);
}

void project_on_plane_normal(double const *a, double const *b, double const *c, double *p) {
    double normal[3];
    cross_product_3d(a, b, c, normal);
    project_on_plane_normal(a, normal, p);
}

void project_on_plane_normal(double const *point, double const *normal, double *p) {
    double const squaredLength = Dot3(normal, normal);
    if (squaredLength < kSquaredNormalZero)
        return;
    double const t = (Dot3(point, normal) - Dot3(p, normal)) / squaredLength;
    for (int i = 0; i < 3; ++i)
        p[i] += normal[i] * t;
}

void project_on_plane_vector(double const *a, double const *b, double const *c, double const *dir, double *p) {
    double const length = norm_3d(dir);
    if (length < kDirectionZero) {
        project_on_plane_normal(a, b, c, p);
        return;
    }
    double normal[3];
    normal_3d(a, b, c, normal);
    double const unit[3] = {dir[0] / length, dir[1] / length, dir[2] / length};
    double const sine = Dot3(unit, normal);
    if (std::abs(sine) < kAlongPlane)
        return;
    double const t = (Dot3(a, normal) - Dot3(p, normal)) / sine;
    for (int i = 0; i < 3; ++i)
        p[i] += unit[i] * t;
}

} // namespace zvi::lib
