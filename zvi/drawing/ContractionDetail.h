#pragma once

#include "zvi/drawing/PlanarMapDetail.h"
#include "zvi/drawing/ShortestFirstDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// An edge that was dropped, and what bounds what it bounded: the edge `original` and its later parts up to, and
/// without, the edge `stop`. Both are -1 when an empty face was dropped with the edge, or when its ends became one
/// place.
struct DroppedEdge {
    int edge = 0;
    int original = -1;
    int stop = -1;
};

/// Contracts what is no longer than nothing, the connectors, and then the edges shorter than `tolerance`, the shortest
/// first; of lengths that are the same the landmarks settle the order. Places that are as far apart as the tolerance
/// never become one: an edge that would bring them together stays, and a connector falls away. How short an edge is its
/// borders say; one that is long itself is dropped.
void ContractShortEdges(PlanarMap &map, double tolerance, double snap, Landmarks const &landmarks,
                        std::vector<DroppedEdge> &dropped, base::Workers const &workers);

} // namespace zvi::lib::drawing
