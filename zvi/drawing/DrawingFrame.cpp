#include "zvi/drawing/DrawingFrameDetail.h"

namespace zvi::lib::drawing {

namespace {

constexpr double kFrameCosine = 0.8150192047167896;
constexpr double kFrameSine = 0.5794339444171457;

/// Angle about the centre of an arc, in radians, within which its leftmost point counts as its end.
constexpr double kBesideEnd = 1e-6;

} // namespace

DrawingPoint Turned(DrawingPoint p) {
    return {kFrameCosine * p.x + kFrameSine * p.y, kFrameCosine * p.y - kFrameSine * p.x};
}

Edge Turned(Edge e) {
    e.start = Turned(e.start);
    e.end = Turned(e.end);
    e.center = Turned(e.center);
    return e;
}

Leftmost LeftmostOf(Edge const &e) {
    if (e.isArc) {
        DrawingPoint const left{e.center.x - e.radius, e.center.y};
        double const turn = TurnTo(e, left);
        if (turn > kBesideEnd && turn < std::fabs(e.sweep) - kBesideEnd)
            return {left, turn, 2};
    }
    return e.start.x <= e.end.x ? Leftmost{e.start, 0.0, 0} : Leftmost{e.end, 0.0, 1};
}

} // namespace zvi::lib::drawing
