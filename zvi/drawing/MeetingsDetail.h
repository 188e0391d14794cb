#pragma once

#include "zvi/drawing/StretchDetail.h"

#include <cassert>

namespace zvi::lib::drawing {

/// At most two points inside both of two stretches.
struct Meetings {
    DrawingPoint points[2];
    int count = 0;

    void Add(DrawingPoint p) {
        assert(count < 2);
        points[count++] = p;
    }
};

/// Where the insides of `a` and `b` cross. Overlapping stretches of one line or circle, and ends that lie on the other
/// stretch, give nothing. Each point lies on both carriers but for rounding, however flat the crossing is.
/// Lines: orientation tests. Circles: the line of equal power is met with the first circle, all relative to a start of
/// the pair, so that neither coordinates far from the origin nor a large radius cost digits.
Meetings CrossingsOf(Stretch const &a, Stretch const &b);

/// Where two stretches that do not cross come nearest to one another inside both.
struct Approach {
    bool exists = false;
    DrawingPoint onFirst;
    DrawingPoint onSecond;
    double distance = 0.0;
};

/// The near touching of a line and an arc, or of two arcs; for two lines there is none. Circles of one centre are as
/// near everywhere, and `aside` is the direction from the centre in which that is looked at.
Approach ApproachOf(Stretch const &a, Stretch const &b, DrawingPoint aside);

/// Whether the stretches keep nearer to one another than `distance` from a point that both pass to another such point.
bool StayNear(Stretch const &a, Stretch const &b, DrawingPoint from, DrawingPoint to, double distance);

} // namespace zvi::lib::drawing
