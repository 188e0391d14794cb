#include "zvi/drawing/DrawingMeetingsDetail.h"

#include <algorithm>

namespace zvi::lib::drawing {

namespace {

bool FractionOnArc(Edge const &e, DrawingPoint p, double &t) {
    t = TurnTo(e, p) / std::fabs(e.sweep);
    return t > 0.0 && t < 1.0;
}

/// Adds `point` when it lies inside both edges. `t` is its fraction on the line.
void AddOnLineAndArc(Edge const &arc, DrawingPoint point, double t, Meeting (&out)[2], int &count) {
    if (t > 0.0 && t < 1.0 && FractionOnArc(arc, point, out[count].tOfSecond)) {
        out[count].tOfFirst = t;
        out[count].point = point;
        ++count;
    }
}

void AddOnArcs(Edge const &a, Edge const &b, DrawingPoint point, Meeting (&out)[2], int &count) {
    if (FractionOnArc(a, point, out[count].tOfFirst) && FractionOnArc(b, point, out[count].tOfSecond)) {
        out[count].point = point;
        ++count;
    }
}

} // namespace

bool FootOn(Edge const &e, DrawingPoint p, Foot &foot) {
    if (!e.isArc) {
        DrawingPoint const chord = e.end - e.start;
        double const squared = Dot(chord, chord);
        double const along = Dot(p - e.start, chord);
        if (!(along > 0.0) || !(along < squared))
            return false;
        foot.t = along / squared;
        foot.point = PointAt(e, foot.t);
        foot.distance = std::fabs(Cross(chord, p - e.start)) / std::sqrt(squared);
        return true;
    }
    DrawingPoint const v = p - e.center;
    double const length = Length(v);
    if (length == 0.0 || !FractionOnArc(e, p, foot.t))
        return false;
    foot.point = e.center + v * (e.radius / length);
    foot.distance = std::fabs(length - e.radius);
    return true;
}

double DistanceTo(Edge const &e, DrawingPoint p) {
    Foot foot;
    double const ends = std::min(Distance(e.start, p), Distance(e.end, p));
    return FootOn(e, p, foot) ? std::min(ends, foot.distance) : ends;
}

int MeetingFinder::LineAndLine(Edge const &a, Edge const &b, Meeting (&out)[2]) {
    DrawingPoint const u = a.end - a.start;
    DrawingPoint const v = b.end - b.start;
    double const b0 = Cross(u, b.start - a.start), b1 = Cross(u, b.end - a.start);
    if ((b0 > 0.0) == (b1 > 0.0) || b0 == b1)
        return 0;
    double const a0 = Cross(v, a.start - b.start), a1 = Cross(v, a.end - b.start);
    if ((a0 > 0.0) == (a1 > 0.0) || a0 == a1)
        return 0;
    out[0].tOfFirst = a0 / (a0 - a1);
    out[0].tOfSecond = b0 / (b0 - b1);
    if (!plain.OfLines(a, b, out[0].point))
        out[0].point = PointAt(a, out[0].tOfFirst);
    return 1;
}

int MeetingFinder::LineAndArc(Edge const &line, Edge const &arc, DrawingPoint const *contacts, int contactCount,
                              Meeting (&out)[2]) {
    DrawingPoint const chord = line.end - line.start;
    double const length = Length(chord);
    DrawingPoint const d = chord * (1.0 / length);
    DrawingPoint const a = line.start - arc.center;
    double const offset = std::fabs(Cross(d, a));
    double const footAt = -Dot(a, d);
    if (offset >= arc.radius + snap)
        return 0;
    int count = 0;
    if (offset > arc.radius - snap) {
        if (contactCount == 0)
            AddOnLineAndArc(arc, line.start + d * footAt, footAt / length, out, count);
        return count;
    }
    double const half = std::sqrt((arc.radius - offset) * (arc.radius + offset));
    DrawingPoint points[2];
    if (int const found = contactCount == 0 ? plain.OfLineAndArc(line, arc, half, points) : 0; found > 0) {
        for (int i = 0; i < found; ++i)
            AddOnLineAndArc(arc, points[i], Dot(points[i] - line.start, d) / length, out, count);
        return count;
    }
    bool taken[2] = {false, false};
    for (int i = 0; i < contactCount; ++i)
        taken[Dot(contacts[i] - line.start, d) > footAt] = true;
    for (int side = 0; side < 2; ++side) {
        double const at = side == 0 ? footAt - half : footAt + half;
        if (!taken[side])
            AddOnLineAndArc(arc, line.start + d * at, at / length, out, count);
    }
    return count;
}

int MeetingFinder::ArcAndArc(Edge const &a, Edge const &b, DrawingPoint const *contacts, int contactCount,
                             Meeting (&out)[2]) {
    DrawingPoint const between = b.center - a.center;
    double const d = Length(between);
    double const difference = std::fabs(a.radius - b.radius);
    double const sum = a.radius + b.radius;
    bool const apart = d >= sum + snap || d <= difference - snap;
    bool const same = d + difference < snap;
    if (apart || same || d == 0.0)
        return 0;
    DrawingPoint const u = between * (1.0 / d);
    int count = 0;
    bool const touchOutside = d > sum - snap;
    if (touchOutside || d < difference + snap) {
        double const reach = touchOutside || a.radius >= b.radius ? a.radius : -a.radius;
        if (contactCount == 0)
            AddOnArcs(a, b, a.center + u * reach, out, count);
        return count;
    }
    double const along = (d * d + (a.radius - b.radius) * sum) / (2.0 * d);
    double const half = std::sqrt((sum + d) * (sum - d) * (d + difference) * (d - difference)) / (2.0 * d);
    DrawingPoint points[2];
    if (int const found = contactCount == 0 ? plain.OfArcs(a, b, d, half, points) : 0; found > 0) {
        for (int i = 0; i < found; ++i)
            AddOnArcs(a, b, points[i], out, count);
        return count;
    }
    bool taken[2] = {false, false};
    for (int i = 0; i < contactCount; ++i)
        taken[Cross(u, contacts[i] - a.center) > 0.0] = true;
    for (int side = 0; side < 2; ++side)
        if (!taken[side])
            AddOnArcs(a, b, a.center + u * along + Left(u) * (side == 0 ? -half : half), out, count);
    return count;
}

int MeetingFinder::Find(Edge const &a, Edge const &b, DrawingPoint const *contacts, int contactCount,
                        Meeting (&out)[2]) {
    if (!a.isArc && !b.isArc)
        return contactCount > 0 ? 0 : LineAndLine(a, b, out);
    if (a.isArc && b.isArc)
        return ArcAndArc(a, b, contacts, contactCount, out);
    if (b.isArc)
        return LineAndArc(a, b, contacts, contactCount, out);
    int const count = LineAndArc(b, a, contacts, contactCount, out);
    for (int i = 0; i < count; ++i)
        std::swap(out[i].tOfFirst, out[i].tOfSecond);
    return count;
}

} // namespace zvi::lib::drawing
