#include "zvi/drawing/ReadCurvesDetail.h"

#include "zvi/base/KeySort.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace zvi::lib::drawing {

namespace {

/// Coordinates beyond this size cannot be squared, and radii below its inverse vanish when they are.
constexpr double kLargestSize = 1e150;

/// An arc's ends may miss its circle by this share of the radius, or by the join tolerance.
constexpr double kOffCircle = 1e-6;

/// What is no longer than this share of the tolerance joins nothing, whether rounding leaves it a length or not.
constexpr double kNoLengthInTolerances = 1e-6;

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

double LargestCoordinate(std::vector<Stretch> const &stretches, base::Workers const &workers) {
    std::vector<double> largest(workers.PartsOf(stretches.size()), 0.0);
    workers.ForEachPart(stretches.size(), [&](std::size_t part, std::size_t begin, std::size_t end) {
        double most = 0.0;
        for (std::size_t i = begin; i < end; ++i) {
            Box const box = BoxOf(stretches[i]);
            most = std::max({most, std::fabs(box.minX), std::fabs(box.minY), std::fabs(box.maxX), std::fabs(box.maxY)});
        }
        largest[part] = most;
    });
    return *std::max_element(largest.begin(), largest.end());
}

void MeetWrittenEnds(Stretch &s, double rounding) {
    if (!s.isArc || s.IsFullTurn())
        return;
    FitToEnds(s, s.start, s.end, rounding + s.radius * kRounding);
    if (s.isArc && std::fabs(SagittaOf(s)) <= rounding && std::fabs(s.sweep) < kPi)
        s.isArc = false;
}

/// Puts stretches into the order of the things that `stretchOf` tells theirs of.
template <typename Thing, typename StretchOf>
void PutInOrder(std::vector<Stretch> &stretches, std::vector<Thing> const &order, base::Workers const &workers,
                StretchOf stretchOf) {
    std::vector<Stretch> sorted(stretches.size());
    workers.ForEach(sorted.size(), [&](std::size_t i) { sorted[i] = stretches[stretchOf(order[i])]; });
    stretches = std::move(sorted);
}

/// Orders stretches by their numbers alone, but for those that are the same.
void SortByNumbers(std::vector<Stretch> &stretches, base::Workers const &workers) {
    std::vector<base::Keyed> order(stretches.size());
    for (std::size_t i = 0; i < order.size(); ++i)
        order[i] = {base::OrderedBits(stretches[i].start.y), i};
    base::SortByKeys(order);
    for (base::Keyed &keyed : order)
        keyed.key = base::OrderedBits(stretches[keyed.of].start.x);
    base::SortByKeys(order);
    auto const rest = [&](base::Keyed const &keyed) {
        Stretch const &s = stretches[keyed.of];
        return std::tuple(s.end.x, s.end.y, s.center.x, s.center.y, s.sweep, s.curve);
    };
    for (auto first = order.begin(); first != order.end();) {
        auto const last = std::find_if(first + 1, order.end(), [&](base::Keyed const &keyed) {
            return !(stretches[keyed.of].start == stretches[first->of].start);
        });
        std::sort(first, last, [&](base::Keyed const &a, base::Keyed const &b) { return rest(a) < rest(b); });
        first = last;
    }
    PutInOrder(stretches, order, workers, [](base::Keyed const &keyed) { return keyed.of; });
}

/// Orders stretches along the direction that moves with the drawing, and by their lengths those side by side.
void SortByLandmarks(std::vector<Stretch> &stretches, Landmarks const &landmarks, double same,
                     base::Workers const &workers) {
    std::vector<Measured> order(stretches.size());
    workers.ForEach(order.size(), [&](std::size_t i) {
        Stretch const &s = stretches[i];
        DrawingPoint const middle = s.IsFullTurn() ? s.center : PointAt(s, 0.5);
        order[i] = {
            0,      landmarks.Rank(middle), StepsOf(LengthOf(s), same),
            middle, static_cast<int>(i),    StepsOf(std::fabs(landmarks.Rank(s.start) - landmarks.Rank(s.end)), same)};
    });
    SortShortestFirst(order, same);
    PutInOrder(stretches, order, workers, [](Measured const &of) { return Index(of.number); });
    workers.ForEach(stretches.size(), [&](std::size_t i) { stretches[i].order = static_cast<int>(i) + 1; });
}

} // namespace

UsableCurves ReadCurves(std::vector<DrawingCurve> const &curves, double joinTolerance, base::Workers const &workers) {
    UsableCurves usable;
    usable.tolerance = joinTolerance > 0.0 ? joinTolerance : 0.0;
    usable.stretches.reserve(curves.size());
    for (std::size_t i = 0; i < curves.size(); ++i) {
        DrawingCurve const &c = curves[i];
        if (!IsSupported(c, usable.tolerance)) {
            usable.leftovers.push_back({PieceAsWritten(c), LeftoverReason::kUnsupported});
            continue;
        }
        Stretch const s = StretchOf(c, static_cast<int>(i));
        if (LengthOf(s) <= kNoLengthInTolerances * usable.tolerance)
            usable.leftovers.push_back({PieceAsWritten(c), LeftoverReason::kZeroLength});
        else
            usable.stretches.push_back(s);
    }
    usable.rounding = LargestCoordinate(usable.stretches, workers) * kRounding;
    workers.ForEach(usable.stretches.size(),
                    [&](std::size_t i) { MeetWrittenEnds(usable.stretches[i], usable.rounding); });
    SortByNumbers(usable.stretches, workers);
    usable.landmarks = LandmarksOf(usable.stretches, workers);
    SortByLandmarks(usable.stretches, usable.landmarks,
                    SameDistance(usable.tolerance, kSnapInRoundings * usable.rounding, usable.landmarks), workers);
    return usable;
}

} // namespace zvi::lib::drawing
