#include "zvi/drawing/GapsDetail.h"

#include "zvi/drawing/BoxIndexDetail.h"

namespace zvi::lib::drawing {

namespace {

/// A near miss is a distance of up to this many join tolerances.
constexpr double kNearMiss = 100.0;

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
};

/// Distance from the loose end of the curve `own` to `other`. The curve itself counts only where an arc of more than a
/// half turn nearly closes, and then the distance is that between its ends.
double MissOf(LooseEnd const &end, Stretch const &other) {
    if (end.curve != other.curve)
        return DistanceTo(other, end.at);
    return std::fabs(other.sweep) > kPi && !other.IsFullTurn() ? Distance(other.start, other.end) : HUGE_VAL;
}

Nearest NearestTo(LooseEnd const &end, std::vector<Stretch> const &stretches, std::vector<int> const &candidates,
                  double reach) {
    Nearest nearest{-1, reach};
    for (int const i : candidates) {
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
            loose.push_back({only[place].IsReversed() ? s.end : s.start, s.curve});
        }
    return loose;
}

} // namespace

std::vector<DrawingGap> FindGaps(DividedDrawing const &drawing, std::vector<DrawingCurve> const &curves) {
    std::vector<DrawingGap> gaps;
    double const reach = kNearMiss * drawing.curves.tolerance;
    std::vector<LooseEnd> const loose = LooseEnds(drawing.map);
    if (loose.empty() || !(reach > 0.0) || !std::isfinite(reach))
        return gaps;
    std::vector<Stretch> const &stretches = drawing.curves.stretches;
    std::vector<Box> boxes;
    boxes.reserve(stretches.size());
    for (Stretch const &s : stretches)
        boxes.push_back(BoxOf(s));
    BoxIndex index(boxes);
    std::vector<int> found;
    for (LooseEnd const &end : loose) {
        index.Find(Grown({end.at.x, end.at.y, end.at.x, end.at.y}, reach), found);
        Nearest const nearest = NearestTo(end, stretches, found, reach);
        if (nearest.stretch >= 0)
            gaps.push_back({end.at,
                            nearest.distance,
                            {curves[Index(end.curve)].id, curves[Index(stretches[Index(nearest.stretch)].curve)].id},
                            nearest.distance * (1.0 + kAboveDistance)});
    }
    return gaps;
}

} // namespace zvi::lib::drawing
