#include "zvi/drawing/ContractionDetail.h"

#include <algorithm>

namespace zvi::lib::drawing {

namespace {

/// What is no longer than nothing comes first, whether rounding tells its ends apart or not, and then the connectors.
enum ShortEdgeKind { kNothing, kConnector, kCurve };

std::vector<Measured> ShortEdges(PlanarMap const &map, double tolerance, double same, Landmarks const &landmarks,
                                 base::Workers const &workers) {
    return workers.Collect<Measured>(Index(map.EdgeCount()), [&](std::size_t i, std::vector<Measured> &edges) {
        int const e = static_cast<int>(i);
        if (!map.IsInMap(e))
            return;
        Stretch const &s = map.Edge(e).stretch;
        double const length =
            std::max(LengthOf(map.Border(HalfEdge::Along(e))), LengthOf(map.Border(HalfEdge::Against(e))));
        if (length < tolerance || s.IsConnector()) {
            DrawingPoint const middle = PointAt(s, 0.5);
            ShortEdgeKind const kind = length < same ? kNothing : s.IsConnector() ? kConnector : kCurve;
            edges.push_back({kind, kind == kConnector ? s.radius : length, landmarks.Rank(middle), middle, e});
        }
    });
}

} // namespace

void ContractShortEdges(PlanarMap &map, double tolerance, double snap, Landmarks const &landmarks,
                        std::vector<DroppedEdge> &dropped, base::Workers const &workers) {
    double const same = SameDistance(tolerance, snap, landmarks);
    std::vector<Measured> edges = ShortEdges(map, tolerance, same, landmarks, workers);
    SortShortestFirst(edges, same);
    for (Measured const &edge : edges) {
        HalfEdge const h = HalfEdge::Along(edge.number);
        bool const isLoop = map.Origin(h) == map.Target(h);
        bool const mayJoin = !isLoop && map.Places().Fit(map.Origin(h), map.Target(h), tolerance);
        // Where others bound what it bounded, an edge may be long itself.
        Stretch const &s = map.Edge(edge.number).stretch;
        bool const isShort = s.IsConnector() || LengthOf(s) < tolerance;
        EdgeState const state = isShort ? EdgeState::kContracted : EdgeState::kDuplicate;
        if (mayJoin)
            map.Contract(edge.number, state);
        else if (isLoop || s.IsConnector())
            map.Remove(edge.number, state);
        if (map.Edge(edge.number).state == EdgeState::kDuplicate)
            dropped.push_back({edge.number});
    }
}

} // namespace zvi::lib::drawing
