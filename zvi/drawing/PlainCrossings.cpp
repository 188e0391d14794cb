#include "zvi/drawing/PlainCrossingsDetail.h"

#include "zvi/curves/MIntersectUtil.h"

#include <algorithm>

namespace zvi::lib::drawing {

namespace {

/// Two segments cross plainly when the sine of their angle is at least this.
constexpr double kPlainSine = 0.01;

/// Half a common chord is at least this share of the radius, and so is the gap of an arc that is not a full circle.
constexpr double kPlainChord = 0.05;

/// No radius, length or distance of a plain pair with an arc is this many times another one.
constexpr double kPlainRatio = 16.0;

/// Distance within which a point lies on a curve, in units of the pair.
constexpr double kOnCurve = 1e-9;

using Point = MIntersectUtil::Point;

bool AreAlike(double a, double b) {
    return a <= kPlainRatio * b && b <= kPlainRatio * a;
}

/// Whether the ends of an arc stand well apart, or are one.
bool IsPlainArc(Edge const &e) {
    return e.IsLoop() || Distance(e.start, e.end) >= kPlainChord * e.radius;
}

} // namespace

/// A point and a length of a pair, from which and in which the pair is seen.
struct PlainCrossings::Frame {
    DrawingPoint origin;
    double unit = 1.0;

    Point In(DrawingPoint p) const { return {(p.x - origin.x) / unit, (p.y - origin.y) / unit, 0.0}; }
    DrawingPoint Out(Point const &p) const { return {origin.x + p[0] * unit, origin.y + p[1] * unit}; }

    /// The edge as a curve record; an arc counter-clockwise.
    T_LINE_G Curve(Edge const &e) const {
        T_LINE_G curve;
        Point const up{0.0, 0.0, 1.0};
        if (!e.isArc)
            return curve.Set(In(e.start), In(e.end));
        if (e.IsLoop())
            return curve.Set(In(e.center), e.radius / unit, up);
        bool const turned = e.sweep < 0.0;
        return curve.Set(In(turned ? e.end : e.start), In(turned ? e.start : e.end), 1, In(e.center), up, 1, kOnCurve);
    }
};

bool PlainCrossings::OfLines(Edge const &a, Edge const &b, DrawingPoint &point) {
    DrawingPoint const u = a.end - a.start, v = b.end - b.start;
    double const sine = Cross(u, v), squared = Dot(u, u);
    if (!(sine * sine >= kPlainSine * kPlainSine * squared * Dot(v, v)))
        return false;
    DrawingPoint points[2];
    if (Points({a.start, std::sqrt(squared)}, a, b, points) == 0)
        return false;
    point = points[0];
    return true;
}

int PlainCrossings::Points(Frame const &frame, Edge const &a, Edge const &b, DrawingPoint (&points)[2]) {
    if (MIntersectUtil::IsIntersectLine2Line(frame.Curve(a), frame.Curve(b), found, kOnCurve) == 0)
        return 0;
    int const count = static_cast<int>(std::min<std::size_t>(found.Size(), 2));
    for (int i = 0; i < count; ++i)
        points[i] = frame.Out(found[At(i)]);
    return count;
}

int PlainCrossings::OfLineAndArc(Edge const &line, Edge const &arc, double half, DrawingPoint (&points)[2]) {
    if (half < kPlainChord * arc.radius || !AreAlike(Length(line.end - line.start), arc.radius) ||
        Distance(line.start, arc.center) > kPlainRatio * arc.radius || !IsPlainArc(arc))
        return 0;
    return Points({arc.center, arc.radius}, line, arc, points);
}

int PlainCrossings::OfArcs(Edge const &a, Edge const &b, double between, double half, DrawingPoint (&points)[2]) {
    if (half < kPlainChord * std::max(a.radius, b.radius) || !AreAlike(a.radius, b.radius) ||
        !AreAlike(between, a.radius) || !IsPlainArc(a) || !IsPlainArc(b))
        return 0;
    return Points({a.center, a.radius}, a, b, points);
}

} // namespace zvi::lib::drawing
