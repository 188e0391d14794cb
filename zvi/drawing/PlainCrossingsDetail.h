#pragma once

#include "zvi/core/MArray.h"
#include "zvi/core/MVector.h"
#include "zvi/drawing/NetworkDetail.h"

namespace zvi::lib::drawing {

/// Meeting points by MIntersectUtil, for pairs that its rules answer fully: no end near the other curve, no touching,
/// no overlap, and no crossing so flat that its limits, which have units, would take it for one of these. Each pair is
/// seen from a point of its own and in units of its own size, so that neither those limits nor the distance from the
/// origin matter.
class PlainCrossings {
public:
    /// Of two segments that are known to cross. False, with nothing written, when they cross too flatly.
    bool OfLines(Edge const &a, Edge const &b, DrawingPoint &point);
    /// Of the carriers of a segment and an arc, where both points lie inside both. `half` is half the chord that the
    /// line cuts off the circle. Returns how many points of `points` are written, 0 when the pair is not plain.
    int OfLineAndArc(Edge const &line, Edge const &arc, double half, DrawingPoint (&points)[2]);
    /// Of two arcs whose circles are `between` apart and have a common chord of half the length `half`.
    int OfArcs(Edge const &a, Edge const &b, double between, double half, DrawingPoint (&points)[2]);

private:
    struct Frame;
    int Points(Frame const &frame, Edge const &a, Edge const &b, DrawingPoint (&points)[2]);

    MArray<MVector<double, 3>> found;
};

} // namespace zvi::lib::drawing
