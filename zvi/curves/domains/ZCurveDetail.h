#pragma once

#include "zvi/core/MArray.h"
#include "zvi/curves/DomainRecords.h"

#include <cstddef>
#include <cstdint>
#include <vector>

namespace zvi::lib::curves {

/// Square cells about points, numbered along a Z-shaped curve (Morton, 1966).
class ZCurve {
public:
    /// About vertices, of which there are some; their coordinates are finite.
    ZCurve(std::vector<int> const &vtexes, MArray<DM_VTEX> const &coordinates);

    std::size_t CellCount() const { return std::size_t{1} << (2 * m_bits); }
    std::uint32_t CellOf(DM_VTEX const &at) const;

private:
    std::uint32_t Step(double cells) const;

    DM_VTEX m_low;
    DM_VTEX m_cellsPerUnit;
    int m_bits; ///< of a cell's number along either axis
};

/// Sorts vertices by their cells, those of one cell in their order.
void SortAlongZCurve(std::vector<int> &vtexes, MArray<DM_VTEX> const &coordinates);

} // namespace zvi::lib::curves
