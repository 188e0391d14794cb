#include "zvi/drawing/MeetingsDetail.h"

#include <algorithm>
#include <array>
#include <optional>
#include <tuple>
#include <utility>

namespace zvi::lib::drawing {

namespace {

/// Centres nearer to one another than this share of the radius are one, and so are those nearer than the second share
/// of what the radii differ by.
constexpr double kOneCenter = 0x1p-40, kNearlyOneCenter = 0x1p-30;

/// Whether a point of what carries a stretch is on it and no end. A circle has none.
bool IsInside(Stretch const &s, DrawingPoint p) {
    if (s.IsFullTurn())
        return true;
    double const t = FractionAt(s, p);
    return t > 0.0 && t < 1.0;
}

void AddIfInside(Stretch const &a, Stretch const &b, DrawingPoint p, Meetings &meetings) {
    if (IsInside(a, p) && IsInside(b, p))
        meetings.Add(p);
}

/// A line by a point and a direction of length 1.
struct Ray {
    DrawingPoint base;
    DrawingPoint direction;

    DrawingPoint PointAt(double t) const { return base + direction * t; }
};

Ray RayOf(Stretch const &line) {
    DrawingPoint const chord = line.end - line.start;
    return {line.start, chord * (1.0 / Length(chord))};
}

/// The two distances along the ray at which it crosses the circle of the arc: the roots of t^2 + 2bt + c. None when it
/// misses the circle.
std::optional<std::array<double, 2>> MeetCircle(Ray const &ray, Stretch const &arc) {
    DrawingPoint const q = ray.base - arc.start, u = arc.start - arc.center;
    double const b = Dot(ray.direction, q + u);
    double const c = Dot(q, q) + 2.0 * Dot(u, q);
    double const discriminant = b * b - c;
    if (!(discriminant > 0.0))
        return {};
    double const first = -(b + std::copysign(std::sqrt(discriminant), b));
    return {{first, first != 0.0 ? c / first : 0.0}};
}

/// The points that have the same power over both circles; none when the circles have one centre.
std::optional<Ray> LineOfEqualPower(Stretch const &a, Stretch const &b) {
    DrawingPoint const w = b.start - a.start;
    DrawingPoint const u = a.start - a.center, v = b.start - b.center;
    DrawingPoint const between = u + w - v;
    double const squared = Dot(between, between);
    if (!(squared > 0.0))
        return {};
    double const power = 0.5 * (Dot(w, w) - 2.0 * Dot(v, w));
    return Ray{a.start + between * (power / squared), Left(between) * (1.0 / std::sqrt(squared))};
}

Meetings OfLines(Stretch const &a, Stretch const &b) {
    Meetings meetings;
    DrawingPoint const u = a.end - a.start, v = b.end - b.start;
    double const b0 = Cross(u, b.start - a.start), b1 = Cross(u, b.end - a.start);
    if ((b0 > 0.0) == (b1 > 0.0) || b0 == b1)
        return meetings;
    double const a0 = Cross(v, a.start - b.start), a1 = Cross(v, a.end - b.start);
    if ((a0 > 0.0) == (a1 > 0.0) || a0 == a1)
        return meetings;
    // Along the shorter one, whose rounding is smaller. Of lines behind one another rounding decides all four sides.
    bool const isFirstShort = Dot(u, u) != Dot(v, v) ? Dot(u, u) < Dot(v, v) : ComesFirst(a.start, b.start);
    DrawingPoint const p = isFirstShort ? PointAt(a, a0 / (a0 - a1)) : PointAt(b, b0 / (b0 - b1));
    if (IsInside(isFirstShort ? b : a, p))
        meetings.Add(p);
    return meetings;
}

Meetings OnRay(Ray const &ray, Stretch const &arc, Stretch const &other) {
    Meetings meetings;
    if (auto const distances = MeetCircle(ray, arc))
        for (double const at : *distances)
            AddIfInside(arc, other, ray.PointAt(at), meetings);
    return meetings;
}

Approach ApproachIfInside(Stretch const &a, Stretch const &b, DrawingPoint onA, DrawingPoint onB, double distance) {
    return {IsInside(a, onA) && IsInside(b, onB), onA, onB, distance};
}

Approach OfLineAndArc(Stretch const &line, Stretch const &arc) {
    Ray const ray = RayOf(line);
    DrawingPoint const foot = ray.PointAt(Dot(ray.direction, arc.center - ray.base));
    double const out = OutOfCircle(arc, foot);
    double const length = Distance(foot, arc.center);
    if (!(length > 0.0))
        return {};
    return ApproachIfInside(line, arc, foot, foot - (foot - arc.center) * (out / length), std::fabs(out));
}

Approach OfArcs(Stretch const &a, Stretch const &b, DrawingPoint aside) {
    DrawingPoint const between = b.center - a.center;
    double const d = Length(between);
    // Circles of one centre are as near to one another everywhere.
    bool const isOneCenter = d <= kOneCenter * a.radius || d < kNearlyOneCenter * std::fabs(a.radius - b.radius);
    DrawingPoint const u = isOneCenter ? aside * (1.0 / Length(aside)) : between * (1.0 / d);
    double const outside = std::fabs(d - a.radius - b.radius);
    double const inside = std::fabs(std::fabs(a.radius - b.radius) - d);
    // What rounding alone tells apart it does not decide.
    double const near = kOneCenter * std::max(a.radius, b.radius);
    bool const isOutside = outside < inside + near, isOneRadius = std::fabs(a.radius - b.radius) <= near;
    double const sideOfA = isOutside || (isOneRadius ? Dot(u, aside) > 0.0 : a.radius > b.radius) ? 1.0 : -1.0;
    double const sideOfB = isOutside ? -1.0 : sideOfA;
    return ApproachIfInside(a, b, a.center + u * (sideOfA * a.radius), b.center + u * (sideOfB * b.radius),
                            std::min(outside, inside));
}

} // namespace

Meetings CrossingsOf(Stretch const &a, Stretch const &b) {
    if (!a.isArc && !b.isArc)
        return OfLines(a, b);
    if (!a.isArc)
        return OnRay(RayOf(a), b, a);
    if (!b.isArc)
        return OnRay(RayOf(b), a, b);
    // The smaller one first, so that the order of the two decides nothing.
    auto const key = [](Stretch const &s) {
        return std::tuple(s.radius, s.center.x, s.center.y, s.start.x, s.start.y);
    };
    Stretch const &first = key(a) <= key(b) ? a : b, &second = &first == &a ? b : a;
    std::optional<Ray> const ray = LineOfEqualPower(first, second);
    return ray ? OnRay(*ray, first, second) : Meetings{};
}

Approach ApproachOf(Stretch const &a, Stretch const &b, DrawingPoint aside) {
    if (a.isArc && b.isArc)
        return OfArcs(a, b, aside);
    if (b.isArc)
        return a.isArc ? Approach{} : OfLineAndArc(a, b);
    if (!a.isArc)
        return {};
    Approach approach = OfLineAndArc(b, a);
    std::swap(approach.onFirst, approach.onSecond);
    return approach;
}

bool StayNear(Stretch const &a, Stretch const &b, DrawingPoint from, DrawingPoint to, double distance) {
    double const first = FractionAt(a, from), second = FractionAt(a, to);
    double middle = 0.5 * (first + second);
    // Round a circle the short way.
    if (a.IsFullTurn() && std::fabs(second - first) > 0.5)
        middle += 0.5;
    return DistanceTo(b, PointAt(a, middle)) < distance;
}

} // namespace zvi::lib::drawing
