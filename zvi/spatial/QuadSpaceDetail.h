#pragma once

#include "zvi/spatial/MQuadTree.h"
#include "zvi/spatial/tree/TypeWordDetail.h"

#include <array>

namespace zvi::lib::spatial {

/// What is particular about the tree of the plane.
struct QuadSpace {
    static constexpr int kDimension = 2;
    /// Status of an object in use. Only such objects are trusted.
    static constexpr std::uint32_t kLiveStatus = 1;

    using PublicBox = MQuadMBR2D;
    using Object = MQuadObj;
    using Pool = MQuadObjPool;
    using Node = MQuadNode;
    using Info = MQuadNodeInfo;
    using Tree = MQuadTree;
    using Key = unsigned int;

    static std::uint32_t StatusOf(Object const &object) { return spatial::StatusOf(object.m_typeAndStatus); }

    static std::array<double, kDimension> InitialSizeOf(Info const &info) { return {info.width, info.height}; }

    /// A root without a size takes any object as its first one.
    static bool IsFresh(Node const &node) {
        MQuadMBR2D const &region = node.m_region;
        return region.minX == region.maxX && region.minY == region.maxY;
    }
    static void MarkUsed(Node &) {}
};

} // namespace zvi::lib::spatial
