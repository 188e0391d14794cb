#include "zvi/math/free/Intersection.h"

#include "zvi/math/free/Distance.h"
#include "zvi/math/free/FreeFamilyDetail.h"
#include "zvi/math/free/OnLine.h"
#include "zvi/math/free/Product.h"
#include "zvi/math/free/Triangle.h"

#include <cmath>
#include <initializer_list>

namespace zvi::lib {

using math::Cross2;
using math::Dot3;
using math::kFractionEnd;
using math::kLengthZero;
using math::kScalarZero;

namespace {

/// How far two lines in space may pass each other, and a point be off a plane, to count as coplanar; model units.
constexpr double kCoplanar = 0.001;
/// Tolerance with which the meeting point must lie on both segments, a cosine.
constexpr double kOnSegment = 1e-8;
/// Tolerance with which a cut point must lie in a triangle.
constexpr double kInTriangle = 1e-8;

bool IsInsideFraction(double fraction) {
    return fraction > -kScalarZero && fraction < kFractionEnd;
}

/// The unit direction from `from` to `to`; false for one without length.
bool UnitDirection3(double const *from, double const *to, double *out) {
    double const length = distance_3d(from, to);
    if (length < kLengthZero)
        return false;
    for (int i = 0; i < 3; ++i)
        out[i] = (to[i] - from[i]) / length;
    return true;
}

/// The point on the line from c to d in which it meets the line from a to b, if they pass each other within `coplanar`.
bool MeetOnSecondLine(double const *a, double const *b, double const *c, double const *d, double coplanar,
                      double *out) {
    double u[3];
    double w[3];
    if (!UnitDirection3(a, b, u) || !UnitDirection3(c, d, w))
        return false;
    double cross[3];
    double offset[3];
    cross_product_3d(u, w, cross);
    Subtract(c, a, offset);
    if (!(std::abs(Dot3(cross, offset)) <= coplanar))
        return false;
    // From a + s u = c + t w follows t (u x w) = (c - a) x u, and any component that is not zero gives t.
    double numerator[3];
    cross_product_3d(offset, u, numerator);
    for (int i = 2; i >= 0; --i) {
        if (std::abs(cross[i]) > kScalarZero) {
            double const t = numerator[i] / cross[i];
            double const point[3] = {c[0] + t * w[0], c[1] + t * w[1], c[2] + t * w[2]};
            math::Copy3(point, out);
            return true;
        }
    }
    return false;
}

} // namespace

bool check_line_line_intersection_2d(double const *a, double const *b, double const *c, double const *d) {
    return Cross2(a, b, c) * Cross2(a, b, d) < 0.0 && Cross2(c, d, a) * Cross2(c, d, b) < 0.0;
}

bool intersect_line_line_2d(double x1, double y1, double x2, double y2, double x3, double y3, double x4, double y4,
                            double &s, double &t) {
    if (distance_2d(x1, y1, x2, y2) < kLengthZero || distance_2d(x3, y3, x4, y4) < kLengthZero)
        return false;
    double const det = (x3 - x4) * (y1 - y2) - (x1 - x2) * (y3 - y4);
    if (std::abs(det) < kScalarZero)
        return false;
    s = ((x3 - x1) * (y3 - y4) - (x3 - x4) * (y3 - y1)) / det;
    t = ((x2 - x1) * (y3 - y1) - (y2 - y1) * (x3 - x1)) / det;
    return IsInsideFraction(s) && IsInsideFraction(t);
}

bool intersect_line_line_2d(double const *a, double const *b, double const *c, double const *d, double &s, double &t) {
    return intersect_line_line_2d(a[0], a[1], b[0], b[1], c[0], c[1], d[0], d[1], s, t);
}

bool intersect_line_line_2d(double const *a, double const *b, double const *c, double const *d, double *out) {
    double s = 0.0;
    double t = 0.0;
    if (!intersect_line_line_2d(a, b, c, d, s, t))
        return false;
    double const point[2] = {a[0] + s * (b[0] - a[0]), a[1] + s * (b[1] - a[1])};
    math::Copy2(point, out);
    return true;
}

bool intersect_line_line_2d_extension(double const *a, double const *b, double const *c, double const *d, double *out) {
    double const lengthAB = distance_2d(a, b);
    double const lengthCD = distance_2d(c, d);
    if (lengthAB < kLengthZero || lengthCD < kLengthZero)
        return false;
    double const u[2] = {(b[0] - a[0]) / lengthAB, (b[1] - a[1]) / lengthAB};
    double const w[2] = {(d[0] - c[0]) / lengthCD, (d[1] - c[1]) / lengthCD};
    double const sine = w[0] * u[1] - w[1] * u[0];
    if (!(std::abs(sine) >= kScalarZero))
        return false;
    double const t = ((c[1] - a[1]) * u[0] - (c[0] - a[0]) * u[1]) / sine;
    double const point[2] = {c[0] + t * w[0], c[1] + t * w[1]};
    math::Copy2(point, out);
    return true;
}

bool intersect_line_line_3d(double const *a, double const *b, double const *c, double const *d, double *out) {
    for (double const *p : {a, b, d}) {
        if (distance_plane_point_3d(a, b, c, p) > kCoplanar)
            return false;
    }
    if (!MeetOnSecondLine(a, b, c, d, kCoplanar, out))
        return false;
    return is_on_line_3d(a, b, out, kOnSegment) && is_on_line_3d(c, d, out, kOnSegment);
}

bool intersect_line_line_3d_withTol(double const *a, double const *b, double const *c, double const *d, double *out,
                                    double tol) {
    if (distance_plane_point_3d(a, b, c, d) > tol && distance_plane_point_3d(a, b, d, c) > tol)
        return false;
    if (!MeetOnSecondLine(a, b, c, d, tol, out))
        return false;
    return is_on_line_3d(a, b, out, tol) && is_on_line_3d(c, d, out, tol);
}

bool intersect_line_line_3d_extension(double const *a, double const *b, double const *c, double const *d, double *out) {
    return MeetOnSecondLine(a, b, c, d, kCoplanar, out);
}

bool intersect_triangle_line_3d(double const *t1, double const *t2, double const *t3, double const *l1,
                                double const *l2) {
    if (distance_3d(t1, t2) < kLengthZero || distance_3d(t2, t3) < kLengthZero || distance_3d(t3, t1) < kLengthZero)
        return false;
    double normal[3];
    cross_product_3d(t1, t2, t3, normal);
    double const normalLength = norm_3d(normal);
    if (normalLength < kLengthZero)
        return false;
    double rise[3];
    double toPlane[3];
    Subtract(l2, l1, rise);
    Subtract(t1, l1, toPlane);
    double const denominator = Dot3(normal, rise) / normalLength;
    if (!(std::abs(denominator) >= kScalarZero))
        return false;
    double const t = Dot3(normal, toPlane) / normalLength / denominator;
    if (!(t >= -kScalarZero && t <= kFractionEnd))
        return false;
    double const cut[3] = {l1[0] + t * rise[0], l1[1] + t * rise[1], l1[2] + t * rise[2]};
    return is_in_triangle_3d(t1, t2, t3, cut, kInTriangle);
}

bool intersect_quadrilateral_line_3d(double const *q1, double const *q2, double const *q3, double const *q4,
                                     double const *l1, double const *l2) {
    bool const meetsFirst = intersect_triangle_line_3d(q1, q2, q3, l1, l2);
    bool const meetsSecond = intersect_triangle_line_3d(q1, q3, q4, l1, l2);
    return meetsFirst || meetsSecond;
}

} // namespace zvi::lib
