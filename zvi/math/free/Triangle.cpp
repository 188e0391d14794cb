#include "zvi/math/free/Triangle.h"

#include "zvi/math/free/Angle.h"
#include "zvi/math/free/Distance.h"
#include "zvi/math/free/FreeFamilyDetail.h"
#include "zvi/math/free/OnLine.h"
#include "zvi/math/free/Product.h"
#include "zvi/math/free/Scalar.h"

#include <cmath>

namespace zvi::lib {

using math::Cross2;
using math::Square;

namespace {

/// A point inside sees the edges under 360 degrees together, one outside under 0; degrees.
constexpr double kSeenFromInside = 350.0;
/// A triangle is flat if its height over the longest edge is at most this share of the edge.
constexpr double kFlatTriangle = 1e-12;

/// Whether the triangle has no area to speak of; NaN counts as flat.
bool IsFlat(double const *a, double const *b, double const *c) {
    double const longest = maximum3(distance_2d(a, b), distance_2d(b, c), distance_2d(c, a));
    return !(std::abs(Cross2(a, b, c)) > kFlatTriangle * Square(longest));
}

} // namespace

bool is_in_triangle_2d(double const *a, double const *b, double const *c, double const *p, double tol) {
    if (distance_2d(a, p) <= tol || distance_2d(b, p) <= tol || distance_2d(c, p) <= tol)
        return true;
    if (is_on_line_2d(a, b, p, tol) || is_on_line_2d(b, c, p, tol) || is_on_line_2d(c, a, p, tol))
        return true;
    return std::abs(angle_2d(p, a, b) + angle_2d(p, b, c) + angle_2d(p, c, a)) > kSeenFromInside;
}

bool is_in_triangle_3d(double const *a, double const *b, double const *c, double const *p, double tol) {
    double ab[3];
    double ac[3];
    double ap[3];
    Subtract(b, a, ab);
    Subtract(c, a, ac);
    Subtract(p, a, ap);
    double e1[3];
    double e2[3];
    gram_schmidt_orthonormal_basis_3d(ab, ac, e1, e2);
    using math::Dot3;
    double const a2[2] = {0.0, 0.0};
    double const b2[2] = {Dot3(ab, e1), Dot3(ab, e2)};
    double const c2[2] = {Dot3(ac, e1), Dot3(ac, e2)};
    double const p2[2] = {Dot3(ap, e1), Dot3(ap, e2)};
    return is_in_triangle_2d(a2, b2, c2, p2, tol);
}

bool are_coplanar_3d(double const *a, double const *b, double const *c, double const *d, double const *e,
                     double const *f, double tol) {
    return distance_plane_point_3d(a, b, c, d) <= tol && distance_plane_point_3d(a, b, c, e) <= tol &&
           distance_plane_point_3d(a, b, c, f) <= tol;
}

double signed_triangle_area_2d(double const *a, double const *b, double const *c) {
    return Cross2(a, b, c) / 2.0;
}

double triangle_area_2d(double const *a, double const *b, double const *c) {
    return std::abs(signed_triangle_area_2d(a, b, c));
}

double triangle_area_3d(double const *a, double const *b, double const *c) {
    double cross[3];
    cross_product_3d(a, b, c, cross);
    return norm_3d(cross) / 2.0;
}

double quadrilateral_area_2d(double const *a, double const *b, double const *c, double const *d) {
    return std::abs((c[0] - a[0]) * (d[1] - b[1]) - (c[1] - a[1]) * (d[0] - b[0])) / 2.0;
}

double quadrilateral_area_3d(double const *a, double const *b, double const *c, double const *d) {
    double diagonal1[3];
    double diagonal2[3];
    double cross[3];
    Subtract(c, a, diagonal1);
    Subtract(d, b, diagonal2);
    cross_product_3d(diagonal1, diagonal2, cross);
    return norm_3d(cross) / 2.0;
}

bool circumscribed_circle_2d(double const *a, double const *b, double const *c, double *center, double &radius) {
    if (IsFlat(a, b, c))
        return false;
    double const u[2] = {b[0] - a[0], b[1] - a[1]};
    double const v[2] = {c[0] - a[0], c[1] - a[1]};
    double const twiceCross = 2.0 * Cross2(u, v);
    double const squaredU = math::Dot2(u, u);
    double const squaredV = math::Dot2(v, v);
    double const x = (v[1] * squaredU - u[1] * squaredV) / twiceCross;
    double const y = (u[0] * squaredV - v[0] * squaredU) / twiceCross;
    radius = norm_2d(x, y);
    double const point[2] = {a[0] + x, a[1] + y};
    math::Copy2(point, center);
    return true;
}

bool inscribed_circle_2d(double const *a, double const *b, double const *c, double *center, double &radius) {
    if (IsFlat(a, b, c))
        return false;
    double const la = distance_2d(b, c);
    double const lb = distance_2d(c, a);
    double const lc = distance_2d(a, b);
    double const perimeter = la + lb + lc;
    radius = 2.0 * triangle_area_2d(a, b, c) / perimeter;
    double const point[2] = {(la * a[0] + lb * b[0] + lc * c[0]) / perimeter,
                             (la * a[1] + lb * b[1] + lc * c[1]) / perimeter};
    math::Copy2(point, center);
    return true;
}

} // namespace zvi::lib
