#pragma once

#include "zvi/drawing/DrawingFacesDetail.h"

namespace zvi::lib::drawing {

/// For each face that is the outside of a block, the face of another block that the block lies in, or -1 when it lies
/// in none; -1 for the other faces.
/// Blocks that share a place are nested by the order of their spokes there, without measuring. Of blocks that share
/// none the leftmost point decides, in a frame turned so that no edge is parallel to an axis: the curve next to its
/// left bounds the face it lies in.
std::vector<int> NestOutsides(Network const &network, Blocks const &blocks, Spokes const &spokes, Faces const &faces);

} // namespace zvi::lib::drawing
