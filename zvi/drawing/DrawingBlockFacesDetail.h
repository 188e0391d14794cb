#pragma once

#include "zvi/drawing/DrawingGraphDetail.h"

namespace zvi::lib::drawing {

/// The spokes of one block at one place, counter-clockwise, within an array that is shared by all blocks.
struct Corner {
    int place = 0;
    int begin = 0;
    int count = 0;
};

/// A block with what is needed to find its faces.
struct BlockView {
    Network const *network = nullptr;
    std::vector<int> const *edges = nullptr;         ///< of the block
    std::vector<Corner> const *corners = nullptr;    ///< of the block
    std::vector<int> const *spokes = nullptr;        ///< what the corners refer to
    std::vector<double> const *directions = nullptr; ///< of each half-edge, as SortByDirection gives them
};

using Loops = std::vector<std::vector<int>>;

/// A half-edge of the block that has the outside on its right: it passes the leftmost point of the block, in a turned
/// frame, downward.
int OuterHalfEdge(BlockView const &block);

/// The inner faces of a block by the domain maker, as loops of half-edges.
/// The domain maker orders edges by their chords, takes edges at less than about a twelfth of a degree for one, drops
/// one of two chords between the same vertices and starts at the leftmost vertex. So a place at which the chords do
/// not lie clearly apart in the order of the true curves gets a star of mid points in that order, the curve that bounds
/// the outside is led past a point to the left of everything, and a place with very many spokes becomes a chain of
/// places. `scratch` has an entry for each half-edge of the network; its contents do not matter.
Loops FacesByDomainMaker(BlockView const &block, std::vector<int> &scratch);

} // namespace zvi::lib::drawing
