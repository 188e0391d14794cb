#include "zvi/curves/domains/ZCurveDetail.h"

#include "zvi/base/Buckets.h"
#include "zvi/base/Index.h"

#include <algorithm>
#include <bit>
#include <cassert>
#include <utility>

namespace zvi::lib::curves {

using base::Index;

namespace {

/// So many nodes, and up to four times as many, are in a cell on average: their half-edges fill a page of memory or so.
constexpr std::size_t kNodesPerCell = 16;

/// Cells have at most so many bits along an axis.
constexpr int kMostBits = 12;

/// Moves the low 16 bits apart so that a free bit stands above each.
std::uint32_t SpreadBits(std::uint32_t value) {
    value = (value | (value << 8)) & 0x00FF00FFu;
    value = (value | (value << 4)) & 0x0F0F0F0Fu;
    value = (value | (value << 2)) & 0x33333333u;
    return (value | (value << 1)) & 0x55555555u;
}

} // namespace

ZCurve::ZCurve(std::vector<int> const &vtexes, MArray<DM_VTEX> const &coordinates) {
    assert(!vtexes.empty());
    int const cellBits = static_cast<int>(std::bit_width(vtexes.size() / kNodesPerCell)) - 1;
    m_bits = std::clamp(cellBits / 2, 0, kMostBits);
    DM_VTEX high = m_low = coordinates[Index(vtexes.front())];
    for (int const vtex : vtexes) {
        DM_VTEX const &at = coordinates[Index(vtex)];
        m_low = {std::min(m_low.x, at.x), std::min(m_low.y, at.y)};
        high = {std::max(high.x, at.x), std::max(high.y, at.y)};
    }
    double const perSide = static_cast<double>(1 << m_bits);
    m_cellsPerUnit = {perSide / (high.x - m_low.x), perSide / (high.y - m_low.y)};
}

std::uint32_t ZCurve::CellOf(DM_VTEX const &at) const {
    return SpreadBits(Step((at.x - m_low.x) * m_cellsPerUnit.x)) |
           (SpreadBits(Step((at.y - m_low.y) * m_cellsPerUnit.y)) << 1);
}

std::uint32_t ZCurve::Step(double cells) const {
    std::uint32_t const last = (std::uint32_t{1} << m_bits) - 1;
    return cells < static_cast<double>(last) ? static_cast<std::uint32_t>(std::max(cells, 0.0)) : last;
}

void SortAlongZCurve(std::vector<int> &vtexes, MArray<DM_VTEX> const &coordinates) {
    ZCurve const curve(vtexes, coordinates);
    std::vector<std::uint32_t> cells;
    cells.reserve(vtexes.size());
    for (int const vtex : vtexes)
        cells.push_back(curve.CellOf(coordinates[Index(vtex)]));
    std::vector<std::size_t> begins(curve.CellCount() + 1);
    std::vector<int> sorted(vtexes.size());
    base::SortIntoBuckets<std::size_t>(
        vtexes.size(), begins, [&](std::size_t i) { return cells[i]; },
        [&](std::size_t place, std::size_t i) { sorted[place] = vtexes[i]; });
    vtexes = std::move(sorted);
}

} // namespace zvi::lib::curves
