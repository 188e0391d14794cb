#pragma once

// What the sources of the free numeric family share: its limits and a few products on bare coordinates.

#include <cmath>

namespace zvi::lib::math {

/// Below it a number counts as zero: coordinates, determinants, sines, squares of lengths alike.
inline constexpr double kScalarZero = 1e-8;
/// Below it a vector has no direction and a segment no length; model units.
inline constexpr double kLengthZero = 1e-8;
/// A fraction along a segment lies on it between -kScalarZero and this.
inline constexpr double kFractionEnd = 1.00000001;

/// pow(x, 2.0) as the correctly rounded x * x. Optimised builds fold the call to this product; an unoptimised one would
/// differ from it in the last bit now and then.
inline double Square(double x) {
    return x * x;
}

inline double Dot2(double const *a, double const *b) {
    return a[0] * b[0] + a[1] * b[1];
}
inline double Dot3(double const *a, double const *b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
inline double Cross2(double const *a, double const *b) {
    return a[0] * b[1] - a[1] * b[0];
}
/// (b - a) x (p - a), twice the signed area of the triangle: positive with p on the left of the line from a to b.
inline double Cross2(double const *a, double const *b, double const *p) {
    return (b[0] - a[0]) * (p[1] - a[1]) - (b[1] - a[1]) * (p[0] - a[0]);
}

inline void Copy2(double const *from, double *to) {
    to[0] = from[0];
    to[1] = from[1];
}

inline void Copy3(double const *from, double *to) {
    to[0] = from[0];
    to[1] = from[1];
    to[2] = from[2];
}

} // namespace zvi::lib::math
