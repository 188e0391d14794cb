#pragma once

#include "zvi/spatial/MQuadNode.h"

#include <cstddef>

namespace zvi::lib::spatial {

/// Stands in front of the four children of a node and tells of each what a descent asks of it. A descent then reads
/// one cache line of each family instead of one of each node, and a whole tree's families fit a fast cache.
struct alignas(64) QuadFamily {
    /// The first child of each of the four, null in a leaf.
    MQuadNode *children[MQuadNode::kChildCount] = {};
    /// Whether the quadrants of each are not those of its region.
    bool isQuartered[MQuadNode::kChildCount] = {};

    static QuadFamily &Of(MQuadNode *first) { return *(reinterpret_cast<QuadFamily *>(first) - 1); }
    static QuadFamily const &Of(MQuadNode const *first) { return *(reinterpret_cast<QuadFamily const *>(first) - 1); }

    MQuadNode *Nodes() { return reinterpret_cast<MQuadNode *>(this + 1); }
};

/// Bytes of a family with its nodes.
inline constexpr std::size_t kFamilySize = sizeof(QuadFamily) + MQuadNode::kChildCount * sizeof(MQuadNode);

} // namespace zvi::lib::spatial
