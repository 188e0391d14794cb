#include "zvi/curves/domains/BoxGridDetail.h"

#include "zvi/base/Index.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <cmath>

namespace zvi::lib::curves {

using base::Floor;
using base::Index;

namespace {

/// Cells are at least 2 to this power wide, in drawing units; smaller boxes share a cell.
constexpr int kSmallestCell = -60;

/// Exponent of the cell size for an extent, 0 or more: the second power of two above it, so that most boxes lie in one
/// cell.
int CellExponent(double extent) {
    assert(extent >= 0.0);
    constexpr int kExponentBias = 1023;
    constexpr int kMantissaBits = 52;
    int const exponent = static_cast<int>(std::bit_cast<std::uint64_t>(extent) >> kMantissaBits) - kExponentBias;
    return extent > 0.0 ? std::max(exponent + 2, kSmallestCell) : kSmallestCell;
}

std::uint32_t KeyOf(std::size_t level, double column, double row) {
    return base::CellKey(static_cast<double>(level), column, row);
}

} // namespace

void BoxGrid::Insert(T_REGION2D const &box, int number) {
    VisitCells(box, [&](std::uint32_t key) {
        m_entries.push_back({box, number});
        m_cells.Add(key, static_cast<int>(m_entries.size()) - 1);
    });
}

void BoxGrid::Remove(T_REGION2D const &box, int number) {
    VisitCells(box, [&](std::uint32_t key) {
        int found = -1;
        m_cells.ForEach(key, [&](int entry) { found = m_entries[Index(entry)].number == number ? entry : found; });
        assert(found >= 0);
        m_cells.Remove(key, found);
    });
}

void BoxGrid::Find(T_POINT2D const &p, std::vector<int> &numbers) const {
    if (m_entries.empty())
        return;
    for (std::size_t level = 0; level < m_levels.size(); ++level) {
        double const column = Floor(p.x * m_levels[level].perWidth);
        double const row = Floor(p.y * m_levels[level].perHeight);
        m_cells.ForEach(KeyOf(level, column, row), [&](int at) {
            Entry const &entry = m_entries[Index(at)];
            if (Holds(entry.box, p))
                numbers.push_back(entry.number);
        });
    }
}

/// Calls `visit` with the key of each cell that the box lies in.
template <typename Visit>
void BoxGrid::VisitCells(T_REGION2D const &box, Visit visit) {
    std::size_t const level = LevelOf(box);
    Level const &cells = m_levels[level];
    double const lastColumn = Floor(box.MaxX * cells.perWidth);
    double const lastRow = Floor(box.MaxY * cells.perHeight);
    for (double column = Floor(box.MinX * cells.perWidth);;) {
        for (double row = Floor(box.MinY * cells.perHeight);;) {
            visit(KeyOf(level, column, row));
            if (row == lastRow)
                break;
            row = row + 1 < lastRow ? row + 1 : lastRow;
        }
        if (column == lastColumn)
            break;
        column = column + 1 < lastColumn ? column + 1 : lastColumn;
    }
}

std::size_t BoxGrid::LevelOf(T_REGION2D const &box) {
    int const width = CellExponent(box.MaxX - box.MinX);
    int const height = CellExponent(box.MaxY - box.MinY);
    for (std::size_t level = m_levels.size(); level-- > 0;) {
        if (m_levels[level].width == width && m_levels[level].height == height)
            return level;
    }
    m_levels.push_back({width, height, std::ldexp(1.0, -width), std::ldexp(1.0, -height)});
    return m_levels.size() - 1;
}

} // namespace zvi::lib::curves
