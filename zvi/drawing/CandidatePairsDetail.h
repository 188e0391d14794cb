#pragma once

#include "zvi/drawing/NetworkDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// Pairs of edges, each once, that come nearer to one another than `reach` elsewhere than at a shared end; some that
/// do not are among them.
std::vector<EdgePair> CandidatePairs(Network const &network, double reach);

/// The same for the pairs that have one of the edges from `first` on, which are short.
std::vector<EdgePair> CandidatePairsOfLatest(Network const &network, int first);

} // namespace zvi::lib::drawing
