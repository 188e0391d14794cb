#pragma once

#include "zvi/base/CellBlock.h"
#include "zvi/core/MFixedSizeMemMgr.h"
#include "zvi/spatial/ICalcDist.h"
#include "zvi/spatial/points/CellHeadsDetail.h"
#include "zvi/spatial/tree/PrefetchDetail.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <limits>
#include <memory>
#include <new>

namespace zvi::lib::spatial {

/// Bytes of a chunk of the pools of chain nodes: a bulk insertion seldom reaches the general allocator.
inline constexpr long kNodeChunkSize = 0xfa000;

/// Cells from `low` to `high` along x, y and z, both included; none where one of them is above the other.
struct CellRange {
    std::array<int, 3> low;
    std::array<int, 3> high;
};

/// A grid of cells with a chain of nodes each, the latest first: what both indexes of points have in common. A `Node`
/// has `value` and `next`.
template <typename Node>
class PointGrid {
public:
    /// Null where no such grid can be.
    template <typename Grid>
    static Grid *Make(double const *minimum, double const *maximum, int division) {
        std::unique_ptr<Grid> grid(new (std::nothrow) Grid);
        return grid && grid->Lay(minimum, maximum, division) ? grid.release() : nullptr;
    }

    base::CellBlock const &Block() const { return m_block; }

    std::uint32_t CellOf(double const *point) const {
        return m_block.Number(m_block.Step(0, point[0]), m_block.Step(1, point[1]), m_block.Step(2, point[2]));
    }

    /// Puts the node that `make` gives in front of the chain of the cell: 1; 0 where there is no such cell.
    template <typename Make>
    int Push(std::uint32_t cell, Make make) {
        if (cell >= m_block.total)
            return 0;
        Node node = make();
        Node *&head = m_heads[cell];
        node.next = head;
        head = ::new (m_pool.Alloc()) Node(node);
        ++m_count;
        return 1;
    }

    /// The link to the first node of the point's cell, null where there is no such cell.
    Node **Chain(double const *point) {
        std::uint32_t const cell = CellOf(point);
        return cell < m_block.total ? &m_heads[cell] : nullptr;
    }

    /// Takes the node behind the link, which there is, out of its chain.
    void Remove(Node **link) {
        assert(*link);
        Node *const node = *link;
        *link = node->next;
        m_pool.Free(node);
        --m_count;
    }

    void RemoveAll() {
        for (std::uint32_t cell = 0; m_count != 0; ++cell) {
            while (m_heads[cell])
                Remove(&m_heads[cell]);
        }
    }

    /// The cells that the cube of half edge `tol` around the point meets.
    template <typename Coordinate>
    CellRange CellsAround(Coordinate const *point, double tol) const {
        CellRange range{};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            double const center = point[axis];
            range.low[axis] = std::max(m_block.Step(axis, center - tol), 0);
            range.high[axis] = std::min(m_block.Step(axis, center + tol), m_block.counts[axis] - 1);
        }
        return range;
    }

    /// Calls `visit(node)` for the nodes of the cells, z outermost and x innermost, until one gives true.
    template <typename Visit>
    void Walk(CellRange const &range, Visit visit) const {
        if (range.high[0] < range.low[0] || range.high[1] < range.low[1])
            return;
        std::size_t const width = static_cast<std::size_t>(range.high[0] - range.low[0]) + 1;
        auto const rowAt = [&](int j, int k) { return m_heads.At(m_block.Number(range.low[0], j, k)); };
        auto const fetch = [&](int j, int k) {
            Node const *const *const row = rowAt(j, k);
            for (std::size_t i = 0; i < width; ++i)
                Prefetch(row[i]);
        };
        for (int k = range.low[2]; k <= range.high[2]; ++k) {
            fetch(range.low[1], k);
            for (int j = range.low[1]; j <= range.high[1]; ++j) {
                if (j < range.high[1])
                    fetch(j + 1, k);
                Node const *const *const row = rowAt(j, k);
                for (std::size_t i = 0; i < width; ++i) {
                    for (Node const *node = row[i]; node; node = node->next) {
                        if (visit(*node))
                            return;
                    }
                }
            }
        }
    }

    /// Calls `use(value, distance)` for the nodes of the cells that `picks(node)` likes, in the order of `Walk`, with
    /// the squared distance of the point. Distances are asked for in batches: where the points lie scattered in memory,
    /// what is fetched for one need not wait until another is judged.
    template <typename Coordinate, typename Picks, typename Use>
    void Measure(CellRange const &range, Coordinate const *point, ICalcDist const &calc, Picks picks, Use use) const {
        constexpr std::size_t kBatch = 32;
        std::array<std::uint64_t, kBatch> values;
        std::size_t count = 0;
        auto const flush = [&] {
            std::array<double, kBatch> distances;
            for (std::size_t i = 0; i < count; ++i)
                distances[i] = calc.CalcDist(point, values[i]);
            for (std::size_t i = 0; i < count; ++i)
                use(values[i], distances[i]);
            count = 0;
        };
        Walk(range, [&](Node const &node) {
            if (picks(node))
                values[count++] = node.value;
            if (count == kBatch)
                flush();
            return false;
        });
        flush();
    }

    /// The value of the smallest distance below `best` among those that `Measure` looks at, the first one of equal
    /// ones; 0 for none.
    template <typename Picks>
    std::uint64_t Nearest(CellRange const &range, double const *point, ICalcDist const &calc, Picks picks,
                          double best) const {
        std::uint64_t nearest = 0;
        Measure(range, point, calc, picks, [&](std::uint64_t value, double distance) {
            if (distance < best) {
                best = distance;
                nearest = value;
            }
        });
        return nearest;
    }

    /// The cells from the lowest to the highest corner of a triangle, as `GetBoxIndexByTriangle` gives them.
    CellRange CellsOfTriangle(std::array<float const *, 3> const &corners) const {
        CellRange range{};
        for (std::size_t axis = 0; axis < 3; ++axis) {
            int const last = m_block.counts[axis] - 1;
            range.low[axis] = last;
            for (float const *const corner : corners) {
                int const step = m_block.Step(axis, static_cast<double>(corner[axis]));
                range.low[axis] = std::min(range.low[axis], step);
                range.high[axis] = std::max(range.high[axis], step);
            }
            range.low[axis] = std::max(range.low[axis], 0);
            range.high[axis] = std::min(range.high[axis], last);
        }
        return range;
    }

    bool IsConsistent() const {
        std::array<int, 3> const &counts = m_block.counts;
        bool const isOdd = std::ranges::all_of(counts, [](int count) { return count > 0 && count % 2 == 1; });
        if (!isOdd || m_heads.Count() != m_block.total ||
            std::uint64_t{m_block.total} !=
                std::uint64_t(counts[0]) * std::uint64_t(counts[1]) * std::uint64_t(counts[2]))
            return false;
        std::uint64_t met = 0;
        for (std::uint32_t cell = 0; cell < m_block.total; ++cell) {
            for (Node const *node = m_heads[cell]; node; node = node->next) {
                if (++met > m_count)
                    return false;
            }
        }
        return met == m_count && m_pool.IsConsistent();
    }

protected:
    PointGrid() = default;

    bool Lay(double const *minimum, double const *maximum, int division) {
        /// The part by which the longest extent is enlarged, and that of the margin.
        constexpr double kSlack = 0.001;
        if (!m_block.Lay({maximum[0] - minimum[0], maximum[1] - minimum[1], maximum[2] - minimum[2]}, division, kSlack,
                         0.0, std::numeric_limits<std::uint32_t>::max()))
            return false;
        double const cell = m_block.cellSize;
        for (std::size_t axis = 0; axis < 3; ++axis) {
            int const before = m_block.counts[axis] / 2; // the middle cell lies on the middle of the box
            m_block.origin[axis] = (minimum[axis] + maximum[axis]) * 0.5 - (before * cell + cell * 0.5);
        }
        return m_heads.Make(m_block.total);
    }

private:
    CellHeads<Node> m_heads;
    base::CellBlock m_block;
    std::uint64_t m_count = 0; ///< nodes in the chains
    MFixedSizeMemMgr m_pool{sizeof(Node), kNodeChunkSize};
};

/// Fills `low` and `high` with the cells of a triangle; without a grid there are none.
template <typename Grid>
void CopyCellsOfTriangle(Grid const *grid, std::array<float const *, 3> const &corners, int *low, int *high) {
    CellRange const range = grid ? grid->CellsOfTriangle(corners) : CellRange{{0, 0, 0}, {-1, -1, -1}};
    std::ranges::copy(range.low, low);
    std::ranges::copy(range.high, high);
}

} // namespace zvi::lib::spatial
