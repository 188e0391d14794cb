#include "zvi/drawing/NetworkDetail.h"

#include <algorithm>

namespace zvi::lib::drawing {

namespace {

/// Below this angle t - sin t loses digits, and its series is used.
constexpr double kSeriesAngle = 0.1;

/// t - sin t without cancellation.
double TurnMinusSine(double t) {
    if (std::fabs(t) > kSeriesAngle)
        return t - std::sin(t);
    double const t2 = t * t;
    return t * t2 / 6.0 * (1.0 - t2 / 20.0 * (1.0 - t2 / 42.0 * (1.0 - t2 / 72.0)));
}

/// The angle that differs from `angle` by whole turns and lies nearest to `wanted`.
double NearestTurn(double angle, double wanted) {
    return angle + kTwoPi * std::round((wanted - angle) / kTwoPi);
}

double AngleBetween(DrawingPoint u, DrawingPoint v) {
    return std::atan2(Cross(u, v), Dot(u, v));
}

/// Circle through the places of a nearly full arc and its middle point.
void FitThroughMiddle(Edge &e, DrawingPoint middle) {
    DrawingPoint const chordMiddle = (e.start + e.end) * 0.5;
    DrawingPoint const chord = e.end - e.start;
    double const half = 0.5 * Length(chord);
    if (half == 0.0) {
        e.center = (e.start + middle) * 0.5;
        e.radius = Distance(e.center, middle);
        e.sweep = std::copysign(kTwoPi, e.sweep);
        return;
    }
    DrawingPoint const normal = Left(chord) * (0.5 / half);
    DrawingPoint const m = middle - chordMiddle;
    double const u = Dot(m, chord) * (0.5 / half);
    double const v = Dot(m, normal);
    double const offset = (u * u + v * v - half * half) / (2.0 * v);
    e.center = chordMiddle + normal * offset;
    e.radius = std::hypot(half, offset);
    e.sweep = NearestTurn(AngleBetween(e.start - e.center, e.end - e.center), e.sweep);
}

/// Circle over the new chord with the rise that the arc had.
void FitWithRise(Edge &e, double rise) {
    DrawingPoint const chord = e.end - e.start;
    double const length = Length(chord);
    double const half = 0.5 * length;
    double const offset = (half * half - rise * rise) / (2.0 * rise);
    e.center = (e.start + e.end) * 0.5 + Left(chord) * (offset / length);
    e.radius = std::hypot(half, offset);
    e.sweep = 4.0 * std::atan(rise / half);
}

bool LiesOnPlaces(Edge const &e, std::vector<DrawingPoint> const &places, double rounding) {
    double const allowed = rounding + e.radius * kRounding;
    double const offStart = std::fabs(Distance(places[At(e.startPlace)], e.center) - e.radius);
    double const offEnd = std::fabs(Distance(places[At(e.endPlace)], e.center) - e.radius);
    return offStart <= allowed && offEnd <= allowed;
}

} // namespace

double TurnTo(Edge const &e, DrawingPoint p) {
    DrawingPoint const u = e.start - e.center;
    double angle = std::atan2(Cross(u, p - e.start), Dot(u, p - e.center));
    if (e.sweep < 0.0)
        angle = -angle;
    return angle < 0.0 ? angle + kTwoPi : angle;
}

DrawingPoint PointAt(Edge const &e, double t) {
    if (!e.isArc)
        return t < 0.5 ? e.start + (e.end - e.start) * t : e.end - (e.end - e.start) * (1.0 - t);
    double const angle = e.sweep * t;
    DrawingPoint const u = e.start - e.center;
    return e.center + u * std::cos(angle) + Left(u) * std::sin(angle);
}

Box BoxOf(Edge const &e) {
    Box box{std::min(e.start.x, e.end.x), std::min(e.start.y, e.end.y), std::max(e.start.x, e.end.x),
            std::max(e.start.y, e.end.y)};
    if (!e.isArc)
        return box;
    double const turn = std::fabs(e.sweep);
    auto const reaches = [&](double dx, double dy) {
        return TurnTo(e, {e.center.x + dx * e.radius, e.center.y + dy * e.radius}) <= turn;
    };
    if (reaches(1.0, 0.0))
        box.maxX = std::max(box.maxX, e.center.x + e.radius);
    if (reaches(-1.0, 0.0))
        box.minX = std::min(box.minX, e.center.x - e.radius);
    if (reaches(0.0, 1.0))
        box.maxY = std::max(box.maxY, e.center.y + e.radius);
    if (reaches(0.0, -1.0))
        box.minY = std::min(box.minY, e.center.y - e.radius);
    return box;
}

double LengthOf(Edge const &e) {
    return e.isArc ? e.radius * std::fabs(e.sweep) : Distance(e.start, e.end);
}

double SagittaOf(Edge const &e) {
    if (!e.isArc)
        return 0.0;
    double const s = std::sin(0.25 * e.sweep);
    return std::copysign(2.0 * e.radius * s * s, e.sweep);
}

double SegmentAreaOf(Edge const &e) {
    return e.isArc ? 0.5 * e.radius * e.radius * TurnMinusSine(e.sweep) : 0.0;
}

bool IsBetterHalved(Edge const &e, std::vector<DrawingPoint> const &places, double rounding) {
    return e.isArc && !e.IsLoop() && std::fabs(e.sweep) > kPi && !LiesOnPlaces(e, places, rounding);
}

Edge TakeSecondHalf(Edge &e, int middle) {
    Edge half = e;
    half.startPlace = e.endPlace = middle;
    half.from = e.to = 0.5 * (e.from + e.to);
    half.start = e.end = PointAt(e, 0.5);
    half.sweep = e.sweep *= 0.5;
    return half;
}

bool FitToPlaces(Edge &e, std::vector<DrawingPoint> const &places, double rounding) {
    DrawingPoint const start = places[At(e.startPlace)];
    DrawingPoint const end = places[At(e.endPlace)];
    if (!e.isArc) {
        e.start = start;
        e.end = end;
        return false;
    }
    if (LiesOnPlaces(e, places, rounding)) {
        e.start = start;
        e.end = end;
        e.sweep = e.IsLoop() ? std::copysign(kTwoPi, e.sweep)
                             : NearestTurn(AngleBetween(start - e.center, end - e.center), e.sweep);
        return false;
    }
    double const rise = SagittaOf(e);
    DrawingPoint const middle = PointAt(e, 0.5);
    e.start = start;
    e.end = end;
    if (std::fabs(e.sweep) > kPi || e.IsLoop())
        FitThroughMiddle(e, middle);
    else if (std::fabs(rise) > rounding)
        FitWithRise(e, rise);
    else
        e.isArc = false;
    return true;
}

DrawingPiece PieceOf(Edge const &e, std::vector<DrawingCurve> const &curves, bool reversed) {
    DrawingPiece piece;
    piece.curve = curves[At(e.curve)].id;
    piece.type = !e.isArc ? DrawingCurveType::kLine : e.IsLoop() ? DrawingCurveType::kCircle : DrawingCurveType::kArc;
    piece.reversed = reversed;
    piece.from = e.from;
    piece.to = e.to;
    piece.start = reversed ? e.end : e.start;
    piece.end = reversed ? e.start : e.end;
    piece.center = e.center;
    piece.radius = e.radius;
    piece.clockwise = e.isArc && (e.sweep < 0.0) != reversed;
    return piece;
}

} // namespace zvi::lib::drawing
