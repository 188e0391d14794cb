#pragma once

#include "zvi/drawing/PlanarMapDetail.h"
#include "zvi/drawing/ShortestFirstDetail.h"

namespace zvi::lib::drawing {

/// Contracts the connectors and then the edges shorter than `tolerance`, the shortest first; of lengths
/// that are the same the landmarks settle the order. Places that are as far apart as the tolerance never
/// become one: an edge that would bring them together stays, and a connector falls away.
void ContractShortEdges(PlanarMap &map, double tolerance, double snap, Landmarks const &landmarks);

} // namespace zvi::lib::drawing
