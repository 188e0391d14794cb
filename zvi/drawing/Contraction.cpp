#include "zvi/drawing/ContractionDetail.h"

#include <algorithm>

namespace zvi::lib::drawing {

namespace {

/// Connectors come first.
enum ShortEdgeKind { kConnector, kCurve };

std::vector<Measured> ShortEdges(PlanarMap const &map, double tolerance, Landmarks const &landmarks,
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
            edges.push_back({s.IsConnector() ? kConnector : kCurve, length, landmarks.Rank(middle), middle, e});
        }
    });
}

} // namespace

void ContractShortEdges(PlanarMap &map, double tolerance, double snap, Landmarks const &landmarks,
                        std::vector<DroppedEdge> &dropped, base::Workers const &workers) {
    std::vector<Measured> edges = ShortEdges(map, tolerance, landmarks, workers);
    SortShortestFirst(edges, SameDistance(tolerance, snap, landmarks));
    for (Measured const &edge : edges) {
        HalfEdge const h = HalfEdge::Along(edge.number);
        bool const isLoop = map.Origin(h) == map.Target(h);
        bool const mayJoin = !isLoop && map.Places().Fit(map.Origin(h), map.Target(h), tolerance);
        // Where others bound what it bounded, an edge may be long itself.
        bool const isShort = edge.kind == kConnector || LengthOf(map.Edge(edge.number).stretch) < tolerance;
        EdgeState const state = isShort ? EdgeState::kContracted : EdgeState::kDuplicate;
        if (mayJoin)
            map.Contract(edge.number, state);
        else if (isLoop || edge.kind == kConnector)
            map.Remove(edge.number, state);
        if (map.Edge(edge.number).state == EdgeState::kDuplicate)
            dropped.push_back({edge.number});
    }
}

} // namespace zvi::lib::drawing
