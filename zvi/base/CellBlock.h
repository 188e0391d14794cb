#pragma once

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <cstdint>
#include <limits>

namespace zvi::lib::base {

/// A division between 0 and 1 of a block of cells, cut to a whole number towards 0: the step of a coordinate that was
/// divided by the width of a cell. What is beyond the range of `int` gives its end; what is not a number lies below
/// everything, so that no range of cells reaches it.
inline int CellStep(double quotient) {
    constexpr double kLow = std::numeric_limits<int>::min();
    constexpr double kHigh = std::numeric_limits<int>::max();
    if (quotient > kLow && quotient < kHigh) [[likely]]
        return static_cast<int>(quotient);
    return quotient > 0.0 ? std::numeric_limits<int>::max() : std::numeric_limits<int>::min();
}

/// A block of cubic cells around a box, an odd number of them along each axis, which are numbered with x running
/// fastest and z slowest: the bounded sister of `CellGrid`, whose cells lie in a table. A block without cells is one
/// that could not be laid.
struct CellBlock {
    std::array<int, 3> counts{}; ///< cells along x, y and z
    std::uint32_t total = 0;     ///< all cells
    double cellSize = 0.0;       ///< edge of a cell
    std::array<double, 3> origin{};

    /// Sets everything but the origin for a box of these extents: the longest one, enlarged by the part `slack`, is
    /// divided by `division` (made odd), but cells are not smaller than `leastCell`; each axis then has room
    /// for its extent and a margin of `slack` times the enlarged length. False, and no cells, where no block of at most
    /// `mostCells` comes out of it: for extents without end, inside out or all 0, for a
    /// division below 0, for cells that are too many.
    bool Lay(std::array<double, 3> const &extents, std::int64_t division, double slack, double leastCell,
             std::uint32_t mostCells) {
        assert(slack >= 0.0);
        double const longest = std::max({extents[0], extents[1], extents[2]});
        double const enlarged = longest + longest * slack;
        double const cell = enlarged / static_cast<double>(division % 2 == 0 ? division + 1 : division);
        cellSize = leastCell > cell ? leastCell : cell;
        double const margin = enlarged * slack;
        std::uint64_t product = 1;
        for (std::size_t axis = 0; axis < 3 && product != 0; ++axis) {
            counts[axis] = OddCount((extents[axis] + margin) / cellSize);
            product *= static_cast<std::uint64_t>(counts[axis]);
            product = product > mostCells ? 0 : product;
        }
        total = static_cast<std::uint32_t>(cellSize > 0.0 && std::isfinite(margin) ? product : 0);
        if (total == 0)
            *this = {};
        return total != 0;
    }

    /// Step of a coordinate along an axis (0 to 2), which may lie outside the block; the block has cells.
    int Step(std::size_t axis, double coordinate) const {
        assert(axis < origin.size() && total != 0);
        return CellStep((coordinate - origin[axis]) / cellSize);
    }

    /// Number of the cell with these steps; `total` where that is no cell. The number alone is tested, so that a step
    /// beyond the end of a row is in the next row.
    std::uint32_t Number(int i, int j, int k) const {
        if (IsBelow(i, counts[0]) && IsBelow(j, counts[1]) && IsBelow(k, counts[2])) [[likely]]
            return static_cast<std::uint32_t>(NumberOf(i, j, k));
        // A row so far away that no i comes back from it would not fit into 64 bits.
        std::int64_t const row = std::int64_t{counts[1]} * k + j;
        std::int64_t const farthest = (std::int64_t{1} << 33) / std::max(counts[0], 1);
        if (row < -farthest || row > farthest)
            return total;
        std::int64_t const number = NumberOf(i, j, k);
        return number >= 0 && number < total ? static_cast<std::uint32_t>(number) : total;
    }

private:
    static bool IsBelow(int step, int count) { return static_cast<unsigned>(step) < static_cast<unsigned>(count); }

    std::int64_t NumberOf(int i, int j, int k) const {
        return (std::int64_t{counts[1]} * k + j) * std::int64_t{counts[0]} + i;
    }

    /// 0 where there is no such count.
    static int OddCount(double cells) {
        double const count = std::ceil(cells);
        if (!(count >= 0.0 && count < std::numeric_limits<int>::max()))
            return 0;
        int const whole = static_cast<int>(count);
        return whole % 2 == 0 ? whole + 1 : whole;
    }
};

} // namespace zvi::lib::base
