#pragma once

#include "zvi/drawing/CandidatePairsDetail.h"
#include "zvi/drawing/NetworkDetail.h"
#include "zvi/drawing/ShortestFirstDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// Adds a connector, a short line that belongs to no curve, across each gap nearer than `tolerance`:
/// - from a loose end to the nearest ends and curves, each curve at the foot of the end;
/// - between corners, where several ends have met already, and from a corner to a curve nearer than a tenth of it;
/// - between curves that nearly touch, inside both.
/// Near gaps are closed before wide ones and those of loose ends first; the landmarks settle ties. Places that
/// hang together by connectors are nearer to one another than the tolerance, all of them, so that a chain of gaps does
/// not close into one place. Without `split` only ends are connected. `pairs` are the candidate pairs.
/// Returns for each connector an edge that ends, or passes, where it begins.
std::vector<int> AddConnectors(Network &network, CandidatePairs const &pairs, double tolerance, bool split,
                               Landmarks const &landmarks, base::Workers const &workers);

} // namespace zvi::lib::drawing
