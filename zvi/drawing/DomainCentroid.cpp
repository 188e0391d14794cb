#include "zvi/drawing/DomainCentroid.h"

#include "zvi/drawing/StretchDetail.h"
#include "zvi/math/elementary/Elementary.h"

namespace zvi::lib {

namespace {

using namespace drawing;

/// Area, and area times centre of gravity, both seen from one origin.
struct Moment {
    double area = 0.0;
    DrawingPoint first;

    void Add(double share, DrawingPoint center) {
        area += share;
        first = first + center * share;
    }
};

/// Adds the triangle that the origin makes with the chord of `s`, and the area between chord and arc.
void Add(Moment &moment, Stretch const &s, DrawingPoint origin) {
    DrawingPoint const a = s.start - origin, b = s.end - origin;
    moment.Add(0.5 * Cross(a, b), (a + b) * (1.0 / 3.0));
    if (!s.isArc)
        return;
    moment.Add(SegmentAreaOf(s), s.center - origin);
    if (s.IsFullTurn())
        return;
    // Seen from the circle's centre the first moment of a segment is a twelfth of the chord's cube, along the middle of
    // the arc.
    double const chord = 2.0 * s.radius * Sin(0.5 * std::fabs(s.sweep));
    DrawingPoint const middle = (PointAt(s, 0.5) - s.center) * (1.0 / s.radius);
    moment.first = moment.first + middle * std::copysign(chord * chord * chord / 12.0, s.sweep);
}

} // namespace

DrawingPoint DomainCentroid(DrawingDomain const &domain) {
    if (domain.outer.empty())
        return {};
    DrawingPoint const origin = domain.outer.front().start;
    Moment moment;
    for (DrawingPiece const &piece : domain.outer)
        Add(moment, StretchOf(piece), origin);
    for (auto const &hole : domain.holes)
        for (DrawingPiece const &piece : hole)
            Add(moment, StretchOf(piece), origin);
    DrawingPoint const center = moment.first * (1.0 / moment.area);
    return std::isfinite(center.x) && std::isfinite(center.y) ? origin + center : origin;
}

} // namespace zvi::lib
