#include "zvi/drawing/ReadCurvesDetail.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace zvi::lib::drawing {

namespace {

/// Coordinates beyond this size cannot be squared, and radii below its inverse vanish when they are.
constexpr double kLargestSize = 1e150;

/// An arc's ends may miss its circle by this share of the radius, or by the join tolerance.
constexpr double kOffCircle = 1e-6;

bool IsUsable(double v) {
    return std::fabs(v) <= kLargestSize;
}
bool IsUsable(DrawingPoint p) {
    return IsUsable(p.x) && IsUsable(p.y);
}

bool EndsLieOnCircle(DrawingCurve const &c, double tolerance) {
    double const allowed = std::max(tolerance, c.radius * kOffCircle);
    return std::fabs(Distance(c.start, c.center) - c.radius) <= allowed &&
           std::fabs(Distance(c.end, c.center) - c.radius) <= allowed;
}

bool IsSupported(DrawingCurve const &c, double tolerance) {
    if (c.type == DrawingCurveType::kLine)
        return IsUsable(c.start) && IsUsable(c.end);
    if (!IsUsable(c.center) || !IsUsable(c.radius) || c.radius < 1.0 / kLargestSize)
        return false;
    return c.type == DrawingCurveType::kCircle ||
           (IsUsable(c.start) && IsUsable(c.end) && EndsLieOnCircle(c, tolerance));
}

/// The curve as it is written.
Stretch StretchOf(DrawingCurve const &c, int index) {
    Stretch s;
    s.curve = index;
    s.start = c.start;
    s.end = c.end;
    if (c.type == DrawingCurveType::kLine)
        return s;
    s.isArc = true;
    s.center = c.center;
    s.radius = c.radius;
    if (c.type == DrawingCurveType::kCircle) {
        s.start = s.end = {c.center.x + c.radius, c.center.y};
        s.sweep = kTwoPi;
        return s;
    }
    s.sweep = c.clockwise ? -1.0 : 1.0;
    s.sweep *= c.start == c.end ? 0.0 : TurnTo(s, c.end);
    return s;
}

/// A curve that bounds nothing, as written, whole.
DrawingPiece PieceAsWritten(DrawingCurve const &c) {
    DrawingPiece piece;
    piece.curve = c.id;
    piece.type = c.type;
    piece.start = c.start;
    piece.end = c.end;
    piece.center = c.center;
    piece.radius = c.radius;
    piece.clockwise = c.clockwise;
    return piece;
}

double LargestCoordinate(std::vector<Stretch> const &stretches) {
    double largest = 0.0;
    for (Stretch const &s : stretches) {
        Box const box = BoxOf(s);
        largest =
            std::max({largest, std::fabs(box.minX), std::fabs(box.minY), std::fabs(box.maxX), std::fabs(box.maxY)});
    }
    return largest;
}

void MeetWrittenEnds(Stretch &s, double rounding) {
    if (!s.isArc || s.IsFullTurn())
        return;
    FitToEnds(s, s.start, s.end, rounding + s.radius * kRounding);
    if (s.isArc && std::fabs(SagittaOf(s)) <= rounding && std::fabs(s.sweep) < kPi)
        s.isArc = false;
}

/// Orders stretches by their numbers alone, but for those that are the same.
void SortByNumbers(std::vector<Stretch> &stretches) {
    struct Begin {
        DrawingPoint at;
        std::size_t of = 0;
    };
    std::vector<Begin> order;
    order.reserve(stretches.size());
    for (Stretch const &s : stretches)
        order.push_back({s.start, order.size()});
    auto const rest = [&](std::size_t of) {
        Stretch const &s = stretches[of];
        return std::tuple(s.end.x, s.end.y, s.center.x, s.center.y, s.sweep, s.curve);
    };
    std::sort(order.begin(), order.end(), [&](Begin const &a, Begin const &b) {
        return a.at == b.at ? rest(a.of) < rest(b.of) : ComesFirst(a.at, b.at);
    });
    std::vector<Stretch> sorted;
    sorted.reserve(stretches.size());
    for (Begin const &begin : order)
        sorted.push_back(stretches[begin.of]);
    stretches = std::move(sorted);
}

/// Orders stretches along the direction that moves with the drawing, and by their lengths those side by side.
void SortByLandmarks(std::vector<Stretch> &stretches, Landmarks const &landmarks, double same) {
    std::vector<Measured> order;
    order.reserve(stretches.size());
    for (std::size_t i = 0; i < stretches.size(); ++i) {
        Stretch const &s = stretches[i];
        DrawingPoint const middle = s.IsFullTurn() ? s.center : PointAt(s, 0.5);
        order.push_back({0, landmarks.Rank(middle), StepsOf(LengthOf(s), same), middle, static_cast<int>(i),
                         StepsOf(std::fabs(landmarks.Rank(s.start) - landmarks.Rank(s.end)), same)});
    }
    SortShortestFirst(order, same);
    std::vector<Stretch> sorted;
    sorted.reserve(stretches.size());
    for (Measured const &of : order) {
        sorted.push_back(stretches[Index(of.number)]);
        sorted.back().order = static_cast<int>(sorted.size());
    }
    stretches = std::move(sorted);
}

} // namespace

UsableCurves ReadCurves(std::vector<DrawingCurve> const &curves, double joinTolerance) {
    UsableCurves usable;
    usable.tolerance = joinTolerance > 0.0 ? joinTolerance : 0.0;
    usable.stretches.reserve(curves.size());
    for (std::size_t i = 0; i < curves.size(); ++i) {
        DrawingCurve const &c = curves[i];
        if (!IsSupported(c, usable.tolerance))
            usable.leftovers.push_back({PieceAsWritten(c), LeftoverReason::kUnsupported});
        else if (c.type != DrawingCurveType::kCircle && c.start == c.end)
            usable.leftovers.push_back({PieceAsWritten(c), LeftoverReason::kZeroLength});
        else
            usable.stretches.push_back(StretchOf(c, static_cast<int>(i)));
    }
    usable.rounding = LargestCoordinate(usable.stretches) * kRounding;
    for (Stretch &s : usable.stretches)
        MeetWrittenEnds(s, usable.rounding);
    SortByNumbers(usable.stretches);
    usable.landmarks = LandmarksOf(usable.stretches);
    SortByLandmarks(usable.stretches, usable.landmarks,
                    SameDistance(usable.tolerance, kSnapInRoundings * usable.rounding, usable.landmarks));
    return usable;
}

} // namespace zvi::lib::drawing
