#include "zvi/drawing/DrawingGapsDetail.h"

#include "zvi/drawing/BoxIndexDetail.h"
#include "zvi/drawing/DrawingMeetingsDetail.h"

#include <algorithm>

namespace zvi::lib::drawing {

namespace {

/// A near miss is a distance of up to this many join tolerances.
constexpr double kNearMiss = 100.0;

/// The tolerance that closes a gap exceeds its distance by this share, because only ends nearer than it are joined.
constexpr double kAboveDistance = 0x1p-20;

/// The nearest curve to a loose end.
struct Nearest {
    int edge = -1;
    double distance = 0.0;
};

/// Distance from the loose end of `own` to `other`. An edge of its own curve counts only where an arc of more than a
/// half turn nearly closes, and then the distance is that between its ends.
double MissOf(DrawingPoint at, Edge const &own, Edge const &other) {
    if (own.curve != other.curve)
        return DistanceTo(other, at);
    return other.isArc && std::fabs(other.sweep) > kPi ? Distance(other.start, other.end) : HUGE_VAL;
}

Nearest NearestTo(DrawingPoint at, Edge const &own, std::vector<Edge> const &edges, std::vector<int> const &candidates,
                  double reach) {
    Nearest nearest{-1, reach};
    for (int const i : candidates) {
        double const d = MissOf(at, own, edges[At(i)]);
        if (d < nearest.distance || (d == nearest.distance && (nearest.edge < 0 || i < nearest.edge)))
            nearest = {i, d};
    }
    return nearest;
}

std::vector<int> LooseEnds(Network const &network, Spokes const &spokes) {
    std::vector<int> loose;
    for (std::size_t p = 0; p < network.places.size(); ++p)
        if (spokes.Degree(static_cast<int>(p)) == 1)
            loose.push_back(static_cast<int>(p));
    return loose;
}

} // namespace

std::vector<DrawingGap> FindGaps(Network const &network, Spokes const &spokes, std::vector<Edge> const &uncut,
                                 std::vector<DrawingCurve> const &curves, double joinTolerance) {
    std::vector<DrawingGap> gaps;
    double const reach = kNearMiss * joinTolerance;
    std::vector<int> const loose = LooseEnds(network, spokes);
    if (loose.empty() || !(reach > 0.0) || !std::isfinite(reach))
        return gaps;
    std::vector<Box> boxes;
    boxes.reserve(uncut.size());
    for (Edge const &e : uncut)
        boxes.push_back(BoxOf(e));
    BoxIndex index(boxes);
    auto const idOf = [&](Edge const &e) { return curves[At(e.curve)].id; };
    std::vector<int> found;
    for (int const place : loose) {
        Edge const &own = network.edges[At(EdgeOfHalf(*spokes.Begin(place)))];
        DrawingPoint const at = network.places[At(place)];
        index.Find({at.x - reach, at.y - reach, at.x + reach, at.y + reach}, found);
        Nearest const nearest = NearestTo(at, own, uncut, found, reach);
        if (nearest.edge >= 0)
            gaps.push_back({at,
                            nearest.distance,
                            {idOf(own), idOf(uncut[At(nearest.edge)])},
                            nearest.distance * (1.0 + kAboveDistance)});
    }
    return gaps;
}

} // namespace zvi::lib::drawing
