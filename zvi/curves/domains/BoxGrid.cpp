#include "zvi/curves/domains/BoxGridDetail.h"

#include <algorithm>
#include <bit>
#include <cmath>
#include <cstdint>

namespace zvi::lib::curves {

namespace {

/// Cells are at least 2 to this power wide, in drawing units; smaller boxes share a cell.
constexpr int kSmallestCell = -60;

/// Exponent of the cell size for an extent: the second power of two above it, so that most boxes lie in one cell.
int CellExponent(double extent) {
    constexpr int kExponentBias = 1023;
    constexpr int kMantissaBits = 52;
    int const exponent = static_cast<int>(std::bit_cast<std::uint64_t>(extent) >> kMantissaBits) - kExponentBias;
    return extent > 0.0 ? std::max(exponent + 2, kSmallestCell) : kSmallestCell;
}

} // namespace

void BoxGrid::Insert(T_REGION2D const &box, int number) {
    VisitCells(box, [&](std::uint32_t cell) {
        m_entries.push_back({box, number});
        m_cells.Add(cell, static_cast<int>(m_entries.size()) - 1);
    });
}

void BoxGrid::Remove(T_REGION2D const &box, int number) {
    VisitCells(box, [&](std::uint32_t cell) { m_cells.Remove(cell, EntryIn(cell, number)); });
}

/// The entry of a cell that bears the number, which one does.
int BoxGrid::EntryIn(std::uint32_t cell, int number) const {
    int found = -1;
    m_cells.ForEach(cell, [&](int entry) { found = m_entries[Index(entry)].number == number ? entry : found; });
    return found;
}

template <typename Visit>
void BoxGrid::VisitCells(T_REGION2D const &box, Visit visit) {
    Level const &level = LevelOf(box);
    double const lastColumn = base::Floor(box.MaxX * level.perWidth);
    double const lastRow = base::Floor(box.MaxY * level.perHeight);
    for (double column = base::Floor(box.MinX * level.perWidth);;) {
        for (double row = base::Floor(box.MinY * level.perHeight);;) {
            visit(base::CellKey(column, row, level.step));
            if (row == lastRow)
                break;
            row = row + 1 < lastRow ? row + 1 : lastRow;
        }
        if (column == lastColumn)
            break;
        column = column + 1 < lastColumn ? column + 1 : lastColumn;
    }
}

void BoxGrid::Find(T_POINT2D const &p, std::vector<int> &numbers) const {
    for (Level const &level : m_levels) {
        double const column = base::Floor(p.x * level.perWidth);
        double const row = base::Floor(p.y * level.perHeight);
        m_cells.ForEach(base::CellKey(column, row, level.step), [&](int entry) {
            if (Holds(m_entries[Index(entry)].box, p))
                numbers.push_back(m_entries[Index(entry)].number);
        });
    }
}

BoxGrid::Level const &BoxGrid::LevelOf(T_REGION2D const &box) {
    int const width = CellExponent(box.MaxX - box.MinX);
    int const height = CellExponent(box.MaxY - box.MinY);
    for (std::size_t i = m_levels.size(); i-- > 0;) {
        if (m_levels[i].width == width && m_levels[i].height == height)
            return m_levels[i];
    }
    m_levels.push_back(
        {width, height, std::ldexp(1.0, -width), std::ldexp(1.0, -height), static_cast<double>(m_levels.size())});
    return m_levels.back();
}

} // namespace zvi::lib::curves
