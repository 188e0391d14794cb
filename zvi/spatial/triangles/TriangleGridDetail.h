#pragma once

#include "zvi/base/CellBlock.h"
#include "zvi/core/internal/GrowingMemory.h"
#include "zvi/spatial/points/CellHeadsDetail.h"
#include "zvi/spatial/triangles/TriangleBoxDetail.h"

#include <array>
#include <cstdint>
#include <vector>

namespace zvi::lib::spatial {

/// A triangle in a cell.
struct TriangleNode {
    void *item;
    int group;
    bool isMixed; ///< whether the chain from here on has several groups
    TriangleNode *next;
};

/// Cells from `low` to `high` along x, y and z, both included.
struct TriangleCells {
    std::array<int, 3> low;
    std::array<int, 3> high;
};

/// The cells of a `CTriangleSpatialIndex` with a chain of triangles each, the latest first.
class TriangleGrid {
public:
    /// Null where no such grid can be.
    static TriangleGrid *Make(float const *box, long divisions, float minCell);

    std::uint32_t CellCount() const { return m_block.total; }
    /// The triangles of a cell below `CellCount`.
    TriangleNode const *Chain(std::uint32_t cell) const { return m_heads[cell]; }
    std::int32_t ItemCount() const { return m_itemCount; }

    /// Fills in the cells that the corners reach with `tol` along one axis; false if there are none.
    bool Reach(std::size_t axis, std::array<float const *, 3> const &corners, float tol, int &low, int &high) const;

    /// Stores the item in the cells that the triangle touches, and gives their number; 0 for what is not finite.
    int Insert(std::array<float const *, 3> const &corners, float tol, TriangleNode const &node);

    void RemoveAll();
    bool IsConsistent() const;

private:
    TriangleGrid() = default;
    bool Lay(std::array<double, 3> const &low, std::array<double, 3> const &high, long divisions, double minCell);
    void FindTouched(TriangleCells const &cells, std::array<float const *, 3> const &corners, float tol);
    int Store(TriangleNode const &node);

    CellHeads<TriangleNode> m_heads;
    base::CellBlock m_block;
    std::array<double, 3> m_farCorner{};
    std::int32_t m_itemCount = 0;
    core::GrowingMemory m_nodes{alignof(TriangleNode)};
    std::vector<std::uint32_t> m_touched; ///< cells of the triangle that is being stored
};

} // namespace zvi::lib::spatial
