#include "zvi/drawing/StretchDetail.h"

#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <cassert>
#include <utility>

namespace zvi::lib::drawing {

namespace {

/// Below this angle t - sin t loses digits, and its series is used.
constexpr double kSeriesAngle = 0.1;

/// A turn that passes its start by less than this angle is a full one.
constexpr double kPassesStart = 1e-6;

/// Nearer to the centre than this share of the radius no point of a circle is the nearest but by rounding.
constexpr double kAtCenter = 0x1p-20;

/// t - sin t without cancellation.
double TurnMinusSine(double t) {
    if (std::fabs(t) > kSeriesAngle)
        return t - Sin(t);
    double const t2 = t * t;
    return t * t2 / 6.0 * (1.0 - t2 / 20.0 * (1.0 - t2 / 42.0 * (1.0 - t2 / 72.0)));
}

/// The angle that differs from `angle` by whole turns and lies nearest to `wanted`.
double NearestTurn(double angle, double wanted) {
    return angle + kTwoPi * std::round((wanted - angle) / kTwoPi);
}

double AngleBetween(DrawingPoint u, DrawingPoint v) {
    return Atan2(Cross(u, v), Dot(u, v));
}

/// The turn of an arc between two points of its circle that is nearest to `wanted`, the lesser one of two that are as
/// near but for rounding, but for one that passes the start again by more than rounding.
double TurnBetween(Stretch const &s, DrawingPoint start, DrawingPoint end, double wanted) {
    double const lesser = wanted - std::copysign(kNoAngle, wanted);
    double const turn = NearestTurn(AngleBetween(start - s.center, end - s.center), lesser);
    return std::fabs(turn) > kTwoPi + kPassesStart ? turn - std::copysign(kTwoPi, turn) : turn;
}

/// Circle through the ends of a nearly full arc and its middle point.
void FitThroughMiddle(Stretch &s, DrawingPoint middle) {
    DrawingPoint const chordMiddle = (s.start + s.end) * 0.5;
    DrawingPoint const chord = s.end - s.start;
    double const half = 0.5 * Length(chord);
    if (half == 0.0) {
        s.center = (s.start + middle) * 0.5;
        s.radius = Distance(s.center, middle);
        s.sweep = std::copysign(kTwoPi, s.sweep);
        return;
    }
    DrawingPoint const normal = Left(chord) * (0.5 / half);
    DrawingPoint const m = middle - chordMiddle;
    double const u = Dot(m, chord) * (0.5 / half);
    double const v = Dot(m, normal);
    double const offset = (u * u + v * v - half * half) / (2.0 * v);
    s.center = chordMiddle + normal * offset;
    s.radius = Hypot(half, offset);
    s.sweep = TurnBetween(s, s.start, s.end, s.sweep);
}

/// Circle over the new chord with the rise that the arc had, which is not 0.
void FitWithRise(Stretch &s, double rise) {
    assert(rise != 0.0);
    DrawingPoint const chord = s.end - s.start;
    double const length = Length(chord);
    double const half = 0.5 * length;
    double const offset = (half * half - rise * rise) / (2.0 * rise);
    s.center = (s.start + s.end) * 0.5 + Left(chord) * (offset / length);
    s.radius = Hypot(half, offset);
    s.sweep = 4.0 * Atan(rise / half);
}

bool LiesOnCircle(Stretch const &arc, DrawingPoint p, double allowed) {
    return std::fabs(OutOfCircle(arc, p)) <= allowed;
}

double DistanceFromCarrier(Stretch const &s, DrawingPoint p, double nothing) {
    if (s.isArc)
        return std::fabs(OutOfCircle(s, p));
    DrawingPoint const chord = s.end - s.start;
    double const length = Length(chord);
    return length < nothing ? Distance(s.start, p) : std::fabs(Cross(chord, p - s.start)) / length;
}

} // namespace

double OutOfCircle(Stretch const &arc, DrawingPoint p) {
    assert(arc.isArc);
    DrawingPoint const u = arc.start - arc.center, q = p - arc.start;
    return (Dot(q, q) + 2.0 * Dot(u, q)) / (Length(p - arc.center) + Length(u));
}

double TurnTo(Stretch const &arc, DrawingPoint p) {
    assert(arc.isArc);
    DrawingPoint const u = arc.start - arc.center;
    double angle = Atan2(Cross(u, p - arc.start), Dot(u, p - arc.center));
    if (arc.sweep < 0.0)
        angle = -angle;
    return angle < 0.0 ? angle + kTwoPi : angle;
}

bool IsAtCenter(Stretch const &s, DrawingPoint p) {
    return s.isArc && !(Distance(p, s.center) > kAtCenter * s.radius);
}

double FractionAt(Stretch const &s, DrawingPoint p) {
    if (s.isArc) {
        double const sweep = std::fabs(s.sweep), turn = TurnTo(s, p);
        return (turn > 0.5 * (sweep + kTwoPi) ? turn - kTwoPi : turn) / sweep;
    }
    DrawingPoint const chord = s.end - s.start;
    return Dot(p - s.start, chord) / Dot(chord, chord);
}

std::optional<Foot> FootOn(Stretch const &s, DrawingPoint p, double within) {
    Foot foot;
    if (!s.isArc) {
        DrawingPoint const chord = s.end - s.start;
        double const squared = Dot(chord, chord);
        double const along = Dot(p - s.start, chord);
        if (!(along > 0.0) || !(along < squared))
            return {};
        foot.distance = std::fabs(Cross(chord, p - s.start)) / std::sqrt(squared);
        if (foot.distance >= within)
            return {};
        foot.t = along / squared;
        foot.point = PointAt(s, foot.t);
        return foot;
    }
    if (IsAtCenter(s, p))
        return {};
    DrawingPoint const v = p - s.center;
    double const length = Length(v);
    double const out = OutOfCircle(s, p);
    foot.distance = std::fabs(out);
    if (foot.distance >= within)
        return {};
    foot.t = FractionAt(s, p);
    if (!s.IsFullTurn() && !(foot.t > 0.0 && foot.t < 1.0))
        return {};
    foot.point = p - v * (out / length);
    return foot;
}

double DistanceTo(Stretch const &s, DrawingPoint p) {
    double const ends = std::min(Distance(s.start, p), Distance(s.end, p));
    std::optional<Foot> const foot = FootOn(s, p);
    return foot ? std::min(ends, foot->distance) : ends;
}

DrawingPoint PointAt(Stretch const &s, double t) {
    if (!s.isArc)
        return t < 0.5 ? s.start + (s.end - s.start) * t : s.end - (s.end - s.start) * (1.0 - t);
    // From the start by the versed sine, so that a large radius costs no digits.
    double const angle = s.sweep * t, half = Sin(0.5 * angle);
    DrawingPoint const u = s.start - s.center;
    return s.start + u * (-2.0 * half * half) + Left(u) * Sin(angle);
}

Stretch PartOf(Stretch const &s, double from, double to) {
    Stretch part = s;
    part.from = from <= 0.0 ? s.from : s.from + from * (s.to - s.from);
    part.to = to >= 1.0 ? s.to : s.from + to * (s.to - s.from);
    part.start = from <= 0.0 ? s.start : PointAt(s, from);
    part.end = to >= 1.0 ? s.end : PointAt(s, to);
    part.sweep = s.sweep * (to - from);
    return part;
}

Stretch Reversed(Stretch s) {
    std::swap(s.start, s.end);
    s.sweep = -s.sweep;
    return s;
}

Box BoxOf(Stretch const &s) {
    Box box{std::min(s.start.x, s.end.x), std::min(s.start.y, s.end.y), std::max(s.start.x, s.end.x),
            std::max(s.start.y, s.end.y)};
    if (!s.isArc)
        return box;
    double const turn = std::fabs(s.sweep);
    auto const reaches = [&](double dx, double dy) {
        return TurnTo(s, {s.center.x + dx * s.radius, s.center.y + dy * s.radius}) <= turn;
    };
    if (reaches(1.0, 0.0))
        box.maxX = std::max(box.maxX, s.center.x + s.radius);
    if (reaches(-1.0, 0.0))
        box.minX = std::min(box.minX, s.center.x - s.radius);
    if (reaches(0.0, 1.0))
        box.maxY = std::max(box.maxY, s.center.y + s.radius);
    if (reaches(0.0, -1.0))
        box.minY = std::min(box.minY, s.center.y - s.radius);
    return box;
}

double SagittaOf(Stretch const &s) {
    if (!s.isArc)
        return 0.0;
    double const sine = Sin(0.25 * s.sweep);
    return std::copysign(2.0 * s.radius * sine * sine, s.sweep);
}

double SegmentAreaOfArc(Stretch const &s) {
    assert(s.isArc);
    return 0.5 * s.radius * s.radius * TurnMinusSine(s.sweep);
}

double DeviationOf(Stretch const &s, Stretch const &other, double nothing) {
    double deviation =
        std::max(DistanceFromCarrier(other, s.start, nothing), DistanceFromCarrier(other, s.end, nothing));
    auto const lookAt = [&](DrawingPoint p) {
        double const t = FractionAt(s, p);
        if (t > 0.0 && t < 1.0)
            deviation = std::max(deviation, DistanceFromCarrier(other, p, nothing));
    };
    if (s.isArc) {
        // The points of the circle farthest from the line, or from the other circle, one on either side.
        DrawingPoint const across = other.isArc ? other.center - s.center : Left(other.end - other.start);
        double const length = Length(across);
        if (length > 0.0) {
            lookAt(s.center + across * (s.radius / length));
            lookAt(s.center - across * (s.radius / length));
        }
    } else if (other.isArc) {
        lookAt(PointAt(s, FractionAt(s, other.center)));
    }
    return deviation;
}

bool IsBetterHalved(Stretch const &s, DrawingPoint start, DrawingPoint end, double allowed) {
    return s.IsOverHalf() && !(start == end) && !(LiesOnCircle(s, start, allowed) && LiesOnCircle(s, end, allowed));
}

void FitToEnds(Stretch &s, DrawingPoint start, DrawingPoint end, double allowed) {
    if (!s.isArc) {
        s.start = start;
        s.end = end;
        return;
    }
    bool const isClosed = start == end;
    if (LiesOnCircle(s, start, allowed) && LiesOnCircle(s, end, allowed)) {
        double const sweep = isClosed ? std::copysign(kTwoPi, s.sweep) : TurnBetween(s, start, end, s.sweep);
        s.start = start;
        s.end = end;
        s.isArc = sweep * s.sweep > 0.0;
        s.sweep = s.isArc ? sweep : 0.0;
        return;
    }
    double const rise = SagittaOf(s);
    DrawingPoint const middle = PointAt(s, 0.5);
    DrawingPoint const chord = end - start, oldChord = s.end - s.start;
    bool const isTurnedRound = Dot(chord, oldChord) < -kNoAngle * Length(chord) * Length(oldChord);
    bool const isOverHalf = s.IsOverHalf();
    s.start = start;
    s.end = end;
    if (isOverHalf || isClosed)
        FitThroughMiddle(s, middle);
    else if (std::fabs(rise) > allowed && !isTurnedRound)
        FitWithRise(s, rise);
    else
        s.isArc = false;
    s.sweep = s.isArc ? s.sweep : 0.0;
}

DrawingPiece PieceOf(Stretch const &s, unsigned int id, bool reversed) {
    DrawingPiece piece;
    piece.curve = id;
    piece.type = !s.isArc           ? DrawingCurveType::kLine
                 : s.start == s.end ? DrawingCurveType::kCircle
                                    : DrawingCurveType::kArc;
    piece.reversed = reversed;
    piece.from = s.from;
    piece.to = s.to;
    piece.start = reversed ? s.end : s.start;
    piece.end = reversed ? s.start : s.end;
    piece.center = s.center;
    piece.radius = s.radius;
    piece.clockwise = s.isArc && (s.sweep < 0.0) != reversed;
    return piece;
}

Stretch StretchOf(DrawingPiece const &piece) {
    Stretch s;
    s.start = piece.start;
    s.end = piece.end;
    if (piece.type == DrawingCurveType::kLine)
        return s;
    s.isArc = true;
    s.center = piece.center;
    s.radius = piece.radius;
    s.sweep = piece.clockwise ? -1.0 : 1.0;
    s.sweep *= piece.type == DrawingCurveType::kCircle ? kTwoPi : TurnTo(s, piece.end);
    return s;
}

} // namespace zvi::lib::drawing
