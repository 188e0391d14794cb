#pragma once

// The network as a graph of half-edges: half-edge 2e leaves the start of edge e along it, half-edge 2e + 1 leaves its
// end against it.

#include "zvi/drawing/NetworkDetail.h"

#include <vector>

namespace zvi::lib::drawing {

inline int TwinOf(int halfEdge) {
    return halfEdge ^ 1;
}
inline int EdgeOfHalf(int halfEdge) {
    return halfEdge >> 1;
}
inline int OriginOf(Network const &network, int halfEdge) {
    Edge const &e = network.edges[At(halfEdge >> 1)];
    return (halfEdge & 1) == 0 ? e.startPlace : e.endPlace;
}

/// For each place the half-edges that leave it, in the order of the edges until SortByDirection has run.
struct Spokes {
    std::vector<int> begins; ///< where those of each place begin; one entry more than there are places
    std::vector<int> halfEdges;

    int const *Begin(int place) const { return halfEdges.data() + begins[At(place)]; }
    int const *End(int place) const { return halfEdges.data() + begins[At(place) + 1]; }
    int Degree(int place) const { return static_cast<int>(End(place) - Begin(place)); }
};

/// The spokes of the edges for which `use` is not negative; without it, of all.
Spokes MakeSpokes(Network const &network, std::vector<int> const *use = nullptr);

/// What becomes of an edge that is no part of a block.
inline constexpr int kDangleEdge = -1;
inline constexpr int kBridgeEdge = -2;

/// The edges by their blocks: sets of edges any two of which lie on a common simple loop.
struct Blocks {
    std::vector<int> blockOfEdge;        ///< kDangleEdge, kBridgeEdge or the number of the block
    std::vector<std::vector<int>> edges; ///< of each block, ascending
};

/// Takes away the edges that hang on one end, again and again, then those that alone join two parts, and splits the
/// rest at the places where it would fall apart. A loop is a block of its own.
/// Method: depth-first search with low points (Hopcroft and Tarjan 1973), without recursion.
Blocks FindBlocks(Network const &network, Spokes const &spokes);

} // namespace zvi::lib::drawing
