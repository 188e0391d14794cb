#include "zvi/spatial/triangles/TriangleGridDetail.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <memory>
#include <new>

namespace zvi::lib::spatial {

namespace {

/// The part by which the longest extent is enlarged, and that of the margin.
constexpr double kSlack = 0.01;

/// Numbers of cells are kept in 32 bits with a sign.
constexpr std::uint32_t kMostCells = std::numeric_limits<std::int32_t>::max();

bool AreFinite(FloatPoint const &places, float tol) {
    // A sum of finite numbers seldom is not.
    return std::isfinite(places[0] + places[1] + places[2] + tol) ||
           (std::isfinite(places[0]) && std::isfinite(places[1]) && std::isfinite(places[2]) && std::isfinite(tol));
}

/// The cells of an axis that corners at these places reach with `tol`; false if there are none.
inline bool FindReach(base::CellBlock const &block, std::size_t axis, FloatPoint const &places, float tol, int &low,
                      int &high) {
    // A step never falls when its coordinate grows, so those of the outermost corners are the outermost steps.
    constexpr float kInfinity = std::numeric_limits<float>::infinity();
    float last = -kInfinity;
    float first = kInfinity;
    for (float const place : places) {
        last = std::max(last, place);
        first = std::min(first, place);
    }
    int const lowest = block.Step(axis, static_cast<double>(first - tol));
    int const highest = block.Step(axis, static_cast<double>(last + tol));
    int const count = block.counts[axis];
    if (highest < 0 || lowest >= count)
        return false;
    low = std::max(lowest, 0);
    high = std::min(highest, count - 1);
    return true;
}

} // namespace

TriangleGrid *TriangleGrid::Make(float const *box, long divisions, float minCell) {
    std::unique_ptr<TriangleGrid> grid(new (std::nothrow) TriangleGrid);
    return grid && grid->Lay({box[0], box[1], box[2]}, {box[3], box[4], box[5]}, divisions, double{minCell})
               ? grid.release()
               : nullptr;
}

bool TriangleGrid::Lay(std::array<double, 3> const &low, std::array<double, 3> const &high, long divisions,
                       double minCell) {
    if (!m_block.Lay({high[0] - low[0], high[1] - low[1], high[2] - low[2]}, divisions, kSlack, minCell, kMostCells))
        return false;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        double const length = m_block.counts[axis] * m_block.cellSize;
        m_block.origin[axis] = (low[axis] + high[axis]) * 0.5 - length * 0.5;
        m_farCorner[axis] = m_block.origin[axis] + length;
    }
    return m_heads.Make(m_block.total);
}

bool TriangleGrid::Reach(std::size_t axis, std::array<float const *, 3> const &corners, float tol, int &low,
                         int &high) const {
    return FindReach(m_block, axis, {corners[0][axis], corners[1][axis], corners[2][axis]}, tol, low, high);
}

int TriangleGrid::Insert(std::array<float const *, 3> const &corners, float tol, TriangleNode const &node) {
    TriangleCells cells{};
    for (std::size_t axis = 0; axis < 3; ++axis) {
        FloatPoint const places = {corners[0][axis], corners[1][axis], corners[2][axis]};
        if (!AreFinite(places, tol) || !FindReach(m_block, axis, places, tol, cells.low[axis], cells.high[axis]))
            return 0;
    }
    FindTouched(cells, corners, tol);
    return Store(node);
}

void TriangleGrid::FindTouched(TriangleCells const &cells, std::array<float const *, 3> const &corners, float tol) {
    double const cell = m_block.cellSize;
    Cube const cube(static_cast<float>(cell / 2 + static_cast<double>(tol)));
    std::array<FloatPoint, 3> seen{}; // the corners from the centre of a cell
    auto const look = [&](std::size_t axis, int step) {
        auto const center = static_cast<float>(m_block.origin[axis] + (step + 0.5) * cell);
        for (std::size_t corner = 0; corner < 3; ++corner)
            seen[corner][axis] = corners[corner][axis] - center;
    };
    m_touched.clear();
    for (int i = cells.low[0]; i <= cells.high[0]; ++i) {
        look(0, i);
        for (int j = cells.low[1]; j <= cells.high[1]; ++j) {
            look(1, j);
            for (int k = cells.low[2]; k <= cells.high[2]; ++k) {
                look(2, k);
                if (TouchesCube(seen, cube))
                    m_touched.push_back(m_block.Number(i, j, k));
            }
        }
    }
}

int TriangleGrid::Store(TriangleNode const &node) {
    auto const count = static_cast<std::int32_t>(m_touched.size());
    if (count == 0 || m_itemCount > std::numeric_limits<std::int32_t>::max() - count)
        return 0;
    void *const memory = m_nodes.Take(m_touched.size() * sizeof(TriangleNode));
    if (!memory)
        throw std::bad_alloc();
    auto *nodes = static_cast<TriangleNode *>(memory);
    for (std::uint32_t const cell : m_touched) {
        TriangleNode *&head = m_heads[cell];
        bool const isMixed = head && (head->isMixed || head->group != node.group);
        head = ::new (static_cast<void *>(nodes++)) TriangleNode{node.item, node.group, isMixed, head};
    }
    m_itemCount += count;
    return count;
}

void TriangleGrid::RemoveAll() {
    for (std::uint32_t cell = 0; m_itemCount != 0; ++cell) {
        for (TriangleNode const *node = m_heads[cell]; node; node = node->next)
            --m_itemCount;
        if (m_heads[cell])
            m_heads[cell] = nullptr;
    }
    m_nodes.ReleaseAll();
}

bool TriangleGrid::IsConsistent() const {
    std::uint64_t product = 1;
    for (std::size_t axis = 0; axis < 3; ++axis) {
        int const count = m_block.counts[axis];
        if (count <= 0 || count % 2 == 0 || !(m_farCorner[axis] > m_block.origin[axis]))
            return false;
        product *= static_cast<std::uint64_t>(count);
    }
    if (product != m_block.total || m_heads.Count() != m_block.total)
        return false;
    std::int64_t met = 0;
    for (std::uint32_t cell = 0; cell < m_block.total; ++cell) {
        for (TriangleNode const *node = m_heads[cell]; node; node = node->next) {
            bool const isMixed = node->next && (node->next->isMixed || node->next->group != node->group);
            if (++met > m_itemCount || node->isMixed != isMixed)
                return false;
        }
    }
    return met == m_itemCount;
}

} // namespace zvi::lib::spatial
