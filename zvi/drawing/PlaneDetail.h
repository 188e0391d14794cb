#pragma once

// Points of the plane as vectors, boxes, and what rounding means here.

#include "zvi/base/Index.h"
#include "zvi/base/Pi.h"
#include "zvi/drawing/DrawingRecords.h"

#include <cmath>

namespace zvi::lib::drawing {

using base::Index;
using base::kPi;
using base::kTwoPi;

/// Rounding of a coordinate as a share of the largest coordinate: sixteen units in the last place.
inline constexpr double kRounding = 0x1p-48;

/// The distance below which two places are one, in units of rounding: well above what computed points miss their curves
/// by.
inline constexpr double kSnapInRoundings = 8.0;

inline DrawingPoint operator+(DrawingPoint a, DrawingPoint b) {
    return {a.x + b.x, a.y + b.y};
}
inline DrawingPoint operator-(DrawingPoint a, DrawingPoint b) {
    return {a.x - b.x, a.y - b.y};
}
inline DrawingPoint operator*(DrawingPoint a, double s) {
    return {a.x * s, a.y * s};
}
inline bool operator==(DrawingPoint a, DrawingPoint b) {
    return a.x == b.x && a.y == b.y;
}
inline double Dot(DrawingPoint a, DrawingPoint b) {
    return a.x * b.x + a.y * b.y;
}
inline double Cross(DrawingPoint a, DrawingPoint b) {
    return a.x * b.y - a.y * b.x;
}
inline double Length(DrawingPoint a) {
    return std::sqrt(Dot(a, a));
}
inline double Distance(DrawingPoint a, DrawingPoint b) {
    return Length(a - b);
}
/// The vector turned by a quarter, counter-clockwise.
inline DrawingPoint Left(DrawingPoint a) {
    return {-a.y, a.x};
}
/// Whether `a` lies further left than `b`, or as far left and lower: the order that settles ties.
inline bool ComesFirst(DrawingPoint a, DrawingPoint b) {
    return a.x != b.x ? a.x < b.x : a.y < b.y;
}

struct Box {
    double minX = 0.0, minY = 0.0, maxX = 0.0, maxY = 0.0;
};

/// Whether two boxes have a point in common.
inline bool Meet(Box const &a, Box const &b) {
    // Without branches, for nothing foretells which way they go.
    int const meet = static_cast<int>(a.minX <= b.maxX) & static_cast<int>(b.minX <= a.maxX) &
                     static_cast<int>(a.minY <= b.maxY) & static_cast<int>(b.minY <= a.maxY);
    return meet != 0;
}

inline Box Grown(Box box, double by) {
    return {box.minX - by, box.minY - by, box.maxX + by, box.maxY + by};
}

} // namespace zvi::lib::drawing
