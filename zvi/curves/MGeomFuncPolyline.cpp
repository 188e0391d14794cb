#include "zvi/curves/MGeomFunc.h"

#include "zvi/curves/VectorDetail.h"
#include "zvi/math/func/MMathFunc.h"

#include <algorithm>

namespace zvi::lib {

namespace {

using curves::Vec3;

/// A point this near to a segment touches it (units of the input).
constexpr double kTouching = 1e-10;

Vec3 ToVector(double const *p) {
    return Vec3::FromArray(p);
}

Vec3 ToVector(T_POINT3D const &p) {
    return {p.x, p.y, p.z};
}

Vec3 ToVector(T_POINT2D const &p) {
    return {p.x, p.y, 0.0};
}

bool IsTouching(Vec3 const &a, Vec3 const &b, Vec3 const &p) {
    return curves::SegmentDistance(a, b, p) < kTouching;
}

/// 1 if the segments cross and their carriers meet exactly.
int CrossExactly(Vec3 const &a, Vec3 const &b, Vec3 const &c, Vec3 const &d) {
    double distance = 0.0;
    Vec3 point;
    return MMathFunc::mathIntersectLine2(a.Data(), b.Data(), c.Data(), d.Data(), 0.0, distance, point.Data()) == 1 ? 1
                                                                                                                   : 0;
}

int IsSegmentContact(Vec3 const &a, Vec3 const &b, Vec3 const &c, Vec3 const &d, int anyContact) {
    int const touching = static_cast<int>(IsTouching(a, b, c)) + static_cast<int>(IsTouching(a, b, d)) +
                         static_cast<int>(IsTouching(c, d, a)) + static_cast<int>(IsTouching(c, d, b));
    if (touching == 0)
        return CrossExactly(a, b, c, d);
    if (anyContact != 0 || touching != 2)
        return 1;
    // Two touching ends: neighbours of a polyline share one end exactly.
    return a == c || a == d || b == c || b == d ? 0 : 1;
}

template <typename Point>
int IsPolylineContact(MArray<Point> const &first, MArray<Point> const &second, bool testLastEnd) {
    for (std::size_t i = 0; i + 1 < first.Size(); ++i) {
        Vec3 const a = ToVector(first[i]);
        Vec3 const b = ToVector(first[i + 1]);
        for (std::size_t j = 0; j + 1 < second.Size(); ++j) {
            Vec3 const c = ToVector(second[j]);
            Vec3 const d = ToVector(second[j + 1]);
            if (IsTouching(a, b, c) || IsTouching(a, b, d) || IsTouching(c, d, a) ||
                (testLastEnd && IsTouching(c, d, b)) || CrossExactly(a, b, c, d) != 0)
                return 1;
        }
    }
    return 0;
}

} // namespace

int MGeomFunc::CheckLineIntersection(double const *a, double const *b, double const *c, double const *d,
                                     int anyContact) {
    return IsSegmentContact(ToVector(a), ToVector(b), ToVector(c), ToVector(d), anyContact);
}

int MGeomFunc::CheckPolylineSelfIntersection(MArray<T_POINT3D> const &points) {
    if (points.Size() < 3)
        return 0;
    for (std::size_t i = 0; i + 2 < points.Size(); ++i) {
        Vec3 const a = ToVector(points[i]);
        Vec3 const b = ToVector(points[i + 1]);
        for (std::size_t j = i + 1; j + 1 < points.Size(); ++j) {
            if (IsSegmentContact(a, b, ToVector(points[j]), ToVector(points[j + 1]), 0) != 0)
                return 1;
        }
    }
    return 0;
}

int MGeomFunc::CheckPolylineCrossIntersection(MArray<T_POINT3D> const &a, MArray<T_POINT3D> const &b) {
    return IsPolylineContact(a, b, true);
}

int MGeomFunc::CheckPolylineCrossIntersection(MArray<T_POINT2D> const &a, MArray<T_POINT2D> const &b) {
    return IsPolylineContact(a, b, false);
}

} // namespace zvi::lib
