#pragma once

#include "zvi/drawing/NetworkDetail.h"
#include "zvi/drawing/PlainCrossingsDetail.h"

namespace zvi::lib::drawing {

/// Nearest point of an edge to some point, where it lies inside the edge and not at an end.
struct Foot {
    double distance = 0.0;
    double t = 0.0; ///< fraction of the length of the edge
    DrawingPoint point;
};

/// The foot of `p` on the inside of `e`. False when the nearest point of the carrier lies beyond the ends, or when
/// `p` is the centre of the arc.
bool FootOn(Edge const &e, DrawingPoint p, Foot &foot);

/// Distance from `p` to the edge, its ends included.
double DistanceTo(Edge const &e, DrawingPoint p);

/// A place where two edges cross or touch inside both.
struct Meeting {
    DrawingPoint point;
    double tOfFirst = 0.0;
    double tOfSecond = 0.0;
};

/// Finds where edges meet. Pairs that cross plainly are answered by MIntersectUtil, the others by a kernel of its own:
/// lines by orientation tests, circles by the half chord in factored form, all relative to a point of the pair, so that
/// coordinates far from the origin cost no digits.
class MeetingFinder {
public:
    explicit MeetingFinder(double snapDistance) : snap(snapDistance) {}

    /// Points where the insides of `a` and `b` cross, or touch within the snap distance; at most two.
    /// `contacts` are the points, at most four, where an end of one edge lies within the snap distance of the other (a
    /// shared place included). Edges that stay within it from such a contact to a crossing count as meeting at the
    /// contact alone; so do the two crossings of a lens thinner than it, which count as one touching point.
    /// Overlaps give nothing: they begin and end at contacts.
    int Find(Edge const &a, Edge const &b, DrawingPoint const *contacts, int contactCount, Meeting (&out)[2]);

private:
    int LineAndLine(Edge const &a, Edge const &b, Meeting (&out)[2]);
    int LineAndArc(Edge const &line, Edge const &arc, DrawingPoint const *contacts, int contactCount,
                   Meeting (&out)[2]);
    int ArcAndArc(Edge const &a, Edge const &b, DrawingPoint const *contacts, int contactCount, Meeting (&out)[2]);

    double snap;
    PlainCrossings plain;
};

} // namespace zvi::lib::drawing
