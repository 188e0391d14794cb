#pragma once

#include "zvi/drawing/NetworkDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// Pairs of edges, each once, that come nearer to one another than `reach` elsewhere than at a shared end; some that
/// do not are among them.
std::vector<EdgePair> CandidatePairs(Network const &network, double reach);

/// The pairs of connectors with what they may meet. The connectors are the edges from `first` on, shorter than `reach`;
/// each begins at a place of an edge, or inside one, which `owners` names. `pairs` are the candidate pairs of the edges
/// before them: what comes near a connector comes near its owner.
std::vector<EdgePair> ConnectorPairs(Network const &network, int first, std::vector<int> const &owners,
                                     std::vector<EdgePair> const &pairs, double reach);

} // namespace zvi::lib::drawing
