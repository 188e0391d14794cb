#pragma once

#include "zvi/base/HashMix.h"
#include "zvi/base/Index.h"
#include "zvi/base/Prefetch.h"

#include <cassert>
#include <cmath>
#include <concepts>
#include <cstddef>
#include <cstdint>
#include <vector>

namespace zvi::lib::base {

/// The largest whole number that is not above `value`, like `std::floor` but without a call: the step of a coordinate
/// that was divided by the width of a cell. What is not finite stays as it is.
inline double Floor(double value) {
    constexpr double kFirstWithoutFraction = 0x1p52;
    if (!(std::abs(value) < kFirstWithoutFraction))
        return value;
    auto const cut = static_cast<double>(static_cast<std::int64_t>(value));
    return cut > value ? cut - 1.0 : cut;
}

/// Key of the cell with these steps along the axes, of which there may be any number. Two cells seldom have the same
/// key, but they may: whoever looks into a cell tests what is found there.
template <std::same_as<double>... Steps>
constexpr std::uint32_t CellKey(Steps... steps) {
    std::uint64_t hash = 0;
    ((hash = Mix(hash, BitsOf(steps))), ...);
    // What tells small whole numbers apart are the topmost bits; once more, so that they reach all bits of the key.
    return HighHalf(Mix(hash, 0));
}

/// Numbers in the cells of a grid without bounds, of any dimension. Only cells that hold a number take room, so a
/// lookup costs the same however far things lie apart. The cells are found in a hash table with open addressing, their
/// numbers in chains.
///
/// A number is in one cell at a time, and numbers count from 0 without large gaps. When memory fails, the grid stays as
/// it was.
class CellGrid {
public:
    /// Puts a number that is in no cell into the cell with the key.
    void Add(std::uint32_t key, int number) {
        while (m_next.size() <= Index(number))
            m_next.push_back(kNone);
        if (2 * (m_taken + 1) > m_cells.size())
            Grow();
        Cell &cell = m_cells[SlotOf(key)];
        if (cell.first == kNeverTaken) {
            cell = {key, kNone};
            ++m_taken;
        }
        m_next[Index(number)] = cell.first;
        cell.first = number;
    }

    /// Takes out a number that is in the cell with the key.
    void Remove(std::uint32_t key, int number) {
        int *at = &m_cells[SlotOf(key)].first;
        while (*at != number) // `Index` asserts that the chain has it
            at = &m_next[Index(*at)];
        *at = m_next[Index(number)];
    }

    /// Has the cell with the key fetched before it is looked at.
    void Prefetch(std::uint32_t key) const {
        if (!m_cells.empty())
            base::Prefetch(m_cells[key & (m_cells.size() - 1)]);
    }

    /// Calls `visit(number)` for all in the cell with the key, the latest first.
    template <typename Visit>
    void ForEach(std::uint32_t key, Visit visit) const {
        if (m_cells.empty())
            return;
        for (int number = m_cells[SlotOf(key)].first; number >= 0; number = m_next[Index(number)])
            visit(number);
    }

private:
    static constexpr std::size_t kFewestCells = 32;
    static constexpr int kNone = -1;
    static constexpr int kNeverTaken = -2; ///< ends the search for a key

    struct Cell {
        std::uint32_t key = 0;
        int first = kNeverTaken; ///< `kNone` once all its numbers are gone
    };

    /// Of a key that is in the table, else a free one; there is a table.
    std::size_t SlotOf(std::uint32_t key) const {
        assert(!m_cells.empty());
        std::size_t const mask = m_cells.size() - 1;
        std::size_t slot = key & mask;
        while (m_cells[slot].first != kNeverTaken && m_cells[slot].key != key)
            slot = (slot + 1) & mask;
        return slot;
    }

    void Grow() {
        std::vector<Cell> cells(m_cells.empty() ? kFewestCells : 2 * m_cells.size());
        m_cells.swap(cells);
        m_taken = 0;
        for (Cell const &cell : cells) {
            if (cell.first < 0)
                continue;
            m_cells[SlotOf(cell.key)] = cell;
            ++m_taken;
        }
    }

    std::vector<Cell> m_cells; ///< the size is a power of two; at most half of them are taken
    std::vector<int> m_next;   ///< by number: the one before it in its cell
    std::size_t m_taken = 0;
};

} // namespace zvi::lib::base
