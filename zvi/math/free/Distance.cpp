#include "zvi/math/free/Distance.h"

#include "zvi/math/free/FreeFamilyDetail.h"
#include "zvi/math/free/OnLine.h"
#include "zvi/math/free/PlaneProjection.h"
#include "zvi/math/free/Product.h"

#include <algorithm>
#include <cmath>

namespace zvi::lib {

using math::Dot3;
using math::kLengthZero;
using math::kScalarZero;
using math::Square;

namespace {

/// A line whose ends differ by less than this in one coordinate is parallel to the other axis; model units.
constexpr double kAxisParallel = 1e-8;
/// A point nearer than this to an axis-parallel line is a point of it; model units.
constexpr double kOnAxisParallelLine = 1e-8;
/// Tolerance with which `is_on_line` finds a point on a segment, a cosine.
constexpr double kOnSegment = 1e-8;

/// Distance of (x, y) from the slanted line through (x1, y1) with the slope m.
double SlantedLineDistance(double x1, double y1, double m, double x, double y) {
    return std::abs(y1 - m * x1 + m * x - y) / std::sqrt(Square(m) + 1.0);
}

/// Distance of p from the span a to b of the plane, p not being on it.
double SpanDistance(double const *a, double const *b, double const *p) {
    double const squaredLength = Square(a[0] - b[0]) + Square(a[1] - b[1]);
    double const t = ((p[0] - a[0]) * (b[0] - a[0]) + (p[1] - a[1]) * (b[1] - a[1])) / squaredLength;
    if (squaredLength < kScalarZero || t <= -kScalarZero || t >= math::kFractionEnd)
        return std::min(distance_2d(a, p), distance_2d(b, p));
    return distance_2d(p[0], p[1], a[0] + t * (b[0] - a[0]), a[1] + t * (b[1] - a[1]));
}

} // namespace

double distance_2d(double x1, double y1, double x2, double y2) {
    return std::sqrt(Square(x2 - x1) + Square(y2 - y1));
}

double distance_2d(double const *p1, double const *p2) {
    return distance_2d(p1[0], p1[1], p2[0], p2[1]);
}

double distance_3d(double x1, double y1, double z1, double x2, double y2, double z2) {
    return std::sqrt(squared_distance_3d(x1, y1, z1, x2, y2, z2));
}

double distance_3d(double const *p1, double const *p2) {
    return std::sqrt(squared_distance_3d(p1, p2));
}

double squared_distance_3d(double x1, double y1, double z1, double x2, double y2, double z2) {
    return Square(x2 - x1) + Square(y2 - y1) + Square(z2 - z1);
}

double squared_distance_3d(double const *p1, double const *p2) {
    return squared_distance_3d(p1[0], p1[1], p1[2], p2[0], p2[1], p2[2]);
}

double norm_2d(double x, double y) {
    return std::sqrt(Square(x) + Square(y));
}

double norm_2d(double const *v) {
    return norm_2d(v[0], v[1]);
}

double norm_3d(double x, double y, double z) {
    return std::sqrt(Square(x) + Square(y) + Square(z));
}

double norm_3d(double const *v) {
    return norm_3d(v[0], v[1], v[2]);
}

double distance_line_point_2d(double const *p1, double const *p2, double const *pt) {
    for (int axis = 0; axis < 2; ++axis) {
        if (std::abs(p2[axis] - p1[axis]) < kAxisParallel) {
            double const d = std::abs(pt[axis] - p1[axis]);
            return d > kOnAxisParallelLine ? d : std::min(distance_2d(p1, pt), distance_2d(p2, pt));
        }
    }
    double const slope = (p2[1] - p1[1]) / (p2[0] - p1[0]);
    return SlantedLineDistance(p1[0], p1[1], slope, pt[0], pt[1]);
}

double distance_line_point_2d_vec(double const *p, double const *dir, double const *pt) {
    for (int axis = 0; axis < 2; ++axis) {
        if (std::abs(dir[axis]) < kAxisParallel) {
            double const d = std::abs(pt[axis] - p[axis]);
            return d > kOnAxisParallelLine ? d : distance_2d(p, pt);
        }
    }
    return SlantedLineDistance(p[0], p[1], dir[1] / dir[0], pt[0], pt[1]);
}

double distance_line_point_3d(double const *p1, double const *p2, double const *pt) {
    double const length = distance_3d(p1, p2);
    if (length < kLengthZero)
        return kNoAnswer;
    double cross[3];
    cross_product_3d(p1, p2, pt, cross);
    return norm_3d(cross) / length;
}

double distance_segment_point_2d(double const *p1, double const *p2, double const *pt) {
    if (distance_2d(p1, p2) < kLengthZero)
        return kNoAnswer;
    if (is_on_line_2d(p1, p2, pt, kOnSegment))
        return 0.0;
    return SpanDistance(p1, p2, pt);
}

double distance_segment_point_3d(double const *p1, double const *p2, double const *pt) {
    if (distance_3d(p1, p2) < kLengthZero)
        return kNoAnswer;
    if (is_on_line_3d(p1, p2, pt, kOnSegment))
        return 0.0;
    double along[3];
    double toPoint[3];
    Subtract(p2, p1, along);
    Subtract(pt, p1, toPoint);
    double e1[3];
    double e2[3];
    gram_schmidt_orthonormal_basis_3d(along, toPoint, e1, e2);
    double const start[2] = {0.0, 0.0};
    double const end[2] = {Dot3(along, e1), Dot3(along, e2)};
    double const point[2] = {Dot3(toPoint, e1), Dot3(toPoint, e2)};
    return SpanDistance(start, end, point);
}

double distance_plane_point_3d(double const *p1, double const *p2, double const *p3, double const *pt) {
    double n[3];
    normal_3d(p1, p2, p3, n);
    return distance_plane_point_3d(n, p1, pt);
}

double distance_plane_point_3d(double const *n, double const *base, double const *pt) {
    double offset[3];
    Subtract(pt, base, offset);
    return std::abs(Dot3(offset, n));
}

double distance_plane_point_normal_3d(double const *p1, double const *p2, double const *p3, double const *pt) {
    return distance_plane_point_3d(p1, p2, p3, pt);
}

double distance_plane_point_vector_3d(double const *p1, double const *p2, double const *p3, double const *dir,
                                      double const *pt) {
    double projected[3] = {pt[0], pt[1], pt[2]};
    project_on_plane_vector(p1, p2, p3, dir, projected);
    return distance_3d(pt, projected);
}

} // namespace zvi::lib
