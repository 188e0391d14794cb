#pragma once

#include "zvi/core/MVector.h"

#include <cmath>

// Small vector helpers of the curve room.

namespace zvi::lib::curves {

using Vec3 = MVector<double, 3>;

/// A length of smaller size counts as zero, and a vector of such a length has no direction (units of the input).
inline constexpr double kZeroLength = 1e-12;

inline bool IsZeroLength(double length) {
    return kZeroLength > length && length > -kZeroLength;
}

inline double Dot(Vec3 const &a, Vec3 const &b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

inline Vec3 Cross(Vec3 const &a, Vec3 const &b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

inline double Length(Vec3 const &v) {
    return std::sqrt(Dot(v, v));
}

inline double Distance(Vec3 const &a, Vec3 const &b) {
    return Length(b - a);
}

/// Distance in x and y alone.
inline double PlanDistance(Vec3 const &a, Vec3 const &b) {
    double const dx = b[0] - a[0];
    double const dy = b[1] - a[1];
    return std::sqrt(dx * dx + dy * dy);
}

/// The point or vector with its z replaced.
inline Vec3 WithZ(Vec3 v, double z) {
    v[2] = z;
    return v;
}

inline Vec3 Midpoint(Vec3 const &a, Vec3 const &b) {
    return (a + b) * 0.5;
}

/// Makes `v` a unit vector. False, with `v` as it was, for a vector of zero length.
inline bool Normalize(Vec3 &v) {
    double const length = Length(v);
    if (IsZeroLength(length))
        return false;
    v /= length;
    return true;
}

/// `v` as a unit vector, or as it is when its length is zero.
inline Vec3 Normalized(Vec3 v) {
    Normalize(v);
    return v;
}

/// Distance from `p` to the nearest point of the segment ab. A segment of length 0 is its first end.
inline double SegmentDistance(Vec3 const &a, Vec3 const &b, Vec3 const &p) {
    Vec3 const along = b - a;
    Vec3 const toPoint = p - a;
    double const squaredLength = Dot(along, along);
    double const t = Dot(toPoint, along);
    if (!(t > 0.0) || squaredLength == 0.0)
        return Length(toPoint);
    if (t >= squaredLength)
        return Distance(b, p);
    return Length(Cross(along, toPoint)) / std::sqrt(squaredLength);
}

/// The same in the plane.
inline double SegmentDistance2D(double ax, double ay, double bx, double by, double px, double py) {
    double const dx = bx - ax;
    double const dy = by - ay;
    double const vx = px - ax;
    double const vy = py - ay;
    double const squaredLength = dx * dx + dy * dy;
    double const t = vx * dx + vy * dy;
    if (!(t > 0.0) || squaredLength == 0.0)
        return std::sqrt(vx * vx + vy * vy);
    if (t >= squaredLength)
        return std::sqrt((px - bx) * (px - bx) + (py - by) * (py - by));
    return std::fabs(dx * vy - dy * vx) / std::sqrt(squaredLength);
}

} // namespace zvi::lib::curves
