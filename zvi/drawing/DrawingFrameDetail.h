#pragma once

#include "zvi/drawing/NetworkDetail.h"

namespace zvi::lib::drawing {

/// The frame in which leftmost points are looked for: turned by a general angle, so that no edge that people draw is
/// parallel to an axis.
inline constexpr double kFrameAngle = 0.6180339887;

/// The point as the turned frame sees it.
DrawingPoint Turned(DrawingPoint p);

/// The edge as the turned frame sees it.
Edge Turned(Edge e);

/// The leftmost point of an edge, in any frame.
struct Leftmost {
    DrawingPoint point;
    double turn = 0.0; ///< where it lies inside an arc the angle from its start; elsewhere 0
    int end = 0;       ///< 0 at the start, 1 at the end, 2 inside
};

/// A point just beside an end counts as that end, so that which of two arcs that touch there lies further left is left
/// to the order of the spokes.
Leftmost LeftmostOf(Edge const &e);

} // namespace zvi::lib::drawing
