#pragma once

#include "zvi/spatial/MOcTree.h"
#include "zvi/spatial/tree/TypeWordDetail.h"

#include <array>

namespace zvi::lib::spatial {

/// What is particular about the tree of space.
struct OcSpace {
    static constexpr int kDimension = 3;
    /// Status of an object in use. Only such objects are trusted.
    static constexpr std::uint32_t kLiveStatus = 1;

    using PublicBox = MOcMBR3D;
    using Object = MOcObj;
    using Pool = MOcObjPool;
    using Node = MOcNode;
    using Info = MOcNodeInfo;
    using Tree = MOcTree;
    using Key = std::uint64_t;

    static std::uint32_t StatusOf(Object const &object) { return object.m_type.GetStatus(); }

    static std::array<double, kDimension> InitialSizeOf(Info const &info) {
        return {info.sizeX, info.sizeY, info.sizeZ};
    }

    /// A flag tells an unused root, whatever its size.
    static bool IsFresh(Node const &node) { return node.m_firstInsert != 0 && !node.m_parent; }
    static void MarkUsed(Node &node) { node.m_firstInsert = 0; }
};

} // namespace zvi::lib::spatial
