#include "zvi/drawing/GapsDetail.h"

#include "zvi/drawing/StretchIndexDetail.h"
#include "zvi/drawing/SuggestedJoinTolerance.h"

#include <algorithm>
#include <tuple>
#include <utility>

namespace zvi::lib::drawing {

namespace {

/// A near miss is a distance of up to this share of the drawing's size.
constexpr double kNearMiss = 0.01;

/// The search begins with windows of this share of it, and makes them wider by this factor.
constexpr double kFirstWindow = 1e-4;
constexpr double kWiden = 8.0;

/// The tolerance that closes a gap exceeds its distance by this share, because only ends nearer than it are joined.
constexpr double kAboveDistance = 0x1p-20;

/// The curve nearest to a loose end, as an index.
struct Nearest {
    int stretch = -1;
    double distance = 0.0;
};

/// An edge that ends where no other does.
struct LooseEnd {
    DrawingPoint at;
    int curve = 0;
    double length = 0.0; ///< of the edge
};

/// Distance from the loose end of the curve `own` to `other`. The curve itself counts only where an arc of more than a
/// half turn nearly closes, and then the distance is that between its ends.
double MissOf(LooseEnd const &end, Stretch const &other) {
    if (end.curve != other.curve)
        return DistanceTo(other, end.at);
    return std::fabs(other.sweep) > kPi && !other.IsFullTurn() ? Distance(other.start, other.end) : HUGE_VAL;
}

/// Whether all of the line on which a segment lies is clearly farther from `p` than `distance`.
bool PassesBeyond(Stretch const &s, DrawingPoint p, double distance) {
    constexpr double kClearly = 1.001;
    DrawingPoint const chord = s.end - s.start;
    double const cross = Cross(chord, p - s.start);
    return !s.isArc && cross * cross > kClearly * distance * distance * Dot(chord, chord);
}

Nearest NearestTo(LooseEnd const &end, std::vector<Stretch> const &stretches, std::vector<int> const &candidates,
                  double reach) {
    Nearest nearest{-1, reach};
    for (int const i : candidates) {
        if (PassesBeyond(stretches[Index(i)], end.at, nearest.distance))
            continue;
        double const d = MissOf(end, stretches[Index(i)]);
        if (d < nearest.distance || (d == nearest.distance && (nearest.stretch < 0 || i < nearest.stretch)))
            nearest = {i, d};
    }
    return nearest;
}

std::vector<LooseEnd> LooseEnds(PlanarMap const &map) {
    std::vector<int> endCounts(Index(map.Places().Count()), 0);
    std::vector<HalfEdge> only(endCounts.size());
    for (int e = 0; e < map.EdgeCount(); ++e)
        if (EdgeState const state = map.Edge(e).state; state == EdgeState::kInMap || state == EdgeState::kSetAside)
            for (HalfEdge const h : {HalfEdge::Along(e), HalfEdge::Against(e)}) {
                ++endCounts[Index(map.Origin(h))];
                only[Index(map.Origin(h))] = h;
            }
    std::vector<LooseEnd> loose;
    for (std::size_t place = 0; place < endCounts.size(); ++place)
        if (endCounts[place] == 1) {
            Stretch const &s = map.Edge(only[place]).stretch;
            loose.push_back({only[place].IsReversed() ? s.end : s.start, s.curve, LengthOf(s)});
        }
    return loose;
}

/// The nearest curve that the end could be joined to: a gap as long as the edge itself would only make that vanish, and
/// one below the tolerance was left open on purpose.
Nearest NearestTo(LooseEnd const &end, std::vector<Stretch> const &stretches, StretchIndex const &index,
                  StretchIndex::Search &search, double size, double tolerance) {
    std::vector<int> found;
    double const reach = std::min(kNearMiss * size, end.length);
    for (double window = kFirstWindow * size;; window *= kWiden) {
        double const width = std::min(window, reach);
        index.Find(Grown({end.at.x, end.at.y, end.at.x, end.at.y}, width), found, search);
        Nearest const nearest = NearestTo(end, stretches, found, width);
        if (nearest.stretch >= 0)
            return nearest.distance < tolerance ? Nearest{} : nearest;
        if (!(window < reach))
            return nearest;
    }
}

/// Nearest first; of two ends that miss each other, one.
void SortOnce(std::vector<DrawingGap> &gaps) {
    auto const pair = [](DrawingGap const &gap) { return std::minmax(gap.curves[0], gap.curves[1]); };
    auto const key = [&pair](DrawingGap const &gap) {
        return std::tuple(gap.distance, std::pair<unsigned, unsigned>(pair(gap)), gap.at.x, gap.at.y);
    };
    std::sort(gaps.begin(), gaps.end(), [&key](DrawingGap const &a, DrawingGap const &b) { return key(a) < key(b); });
    auto const same = [&pair](DrawingGap const &a, DrawingGap const &b) {
        return a.distance == b.distance && pair(a) == pair(b) && Distance(a.at, b.at) <= a.distance;
    };
    gaps.erase(std::unique(gaps.begin(), gaps.end(), same), gaps.end());
}

} // namespace

std::vector<DrawingGap> FindGaps(DividedDrawing const &drawing, std::vector<DrawingCurve> const &curves,
                                 base::Workers const &workers) {
    std::vector<DrawingGap> gaps;
    std::vector<LooseEnd> const loose = LooseEnds(drawing.map);
    double const size = loose.empty() ? 0.0 : DrawingSize(curves);
    if (!(size > 0.0) || !std::isfinite(size))
        return gaps;
    std::vector<Stretch> const &stretches = drawing.curves.stretches;
    std::vector<Stretch const *> all;
    all.reserve(stretches.size());
    for (Stretch const &s : stretches)
        all.push_back(&s);
    StretchIndex const index(all, drawing.curves.rounding, workers);
    std::vector<Nearest> nearest(loose.size());
    workers.ForEachPart(loose.size(), [&](std::size_t, std::size_t begin, std::size_t end) {
        StretchIndex::Search search;
        for (std::size_t i = begin; i < end; ++i)
            nearest[i] = NearestTo(loose[i], stretches, index, search, size, drawing.curves.tolerance);
    });
    for (std::size_t i = 0; i < loose.size(); ++i)
        if (auto const [stretch, distance] = nearest[i]; stretch >= 0)
            gaps.push_back({loose[i].at,
                            distance,
                            {curves[Index(loose[i].curve)].id, curves[Index(stretches[Index(stretch)].curve)].id},
                            distance * (1.0 + kAboveDistance)});
    SortOnce(gaps);
    return gaps;
}

} // namespace zvi::lib::drawing
