#pragma once

#include "zvi/core/internal/HashBins.h"

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <exception>

namespace zvi::lib::spatial {

/// The first entry of each cell of a block, all null at first. A very large table takes memory only where it is
/// written to, so nobody reads or clears more of it than he must.
template <typename Entry>
class CellHeads {
public:
    CellHeads() = default;
    ~CellHeads() { Release(); }
    CellHeads(CellHeads const &) = delete;
    CellHeads &operator=(CellHeads const &) = delete;

    /// Makes the table anew; false, and no table, when the memory cannot be had.
    bool Make(std::uint32_t count) noexcept {
        Release();
        m_count = count;
        if (IsSparse()) {
            m_heads = static_cast<Entry **>(std::calloc(count, sizeof(Entry *)));
        } else {
            try {
                m_heads = static_cast<Entry **>(core::AllocateBins(count));
            } catch (std::exception const &) {
                m_heads = nullptr;
            }
        }
        return m_heads;
    }

    /// The first entry of a cell of the table.
    Entry *&operator[](std::uint32_t cell) {
        assert(cell < Count());
        return m_heads[cell];
    }
    Entry *operator[](std::uint32_t cell) const {
        assert(cell < Count());
        return m_heads[cell];
    }
    /// The head of the cell, to be read on from there through its row.
    Entry *const *At(std::uint32_t cell) const {
        assert(cell < Count());
        return m_heads + cell;
    }
    std::uint32_t Count() const { return m_heads ? m_count : 0; }

private:
    /// Entries from which on a table comes straight from the system, whose pages are zero until they are written to.
    static constexpr std::uint32_t kSparse = std::uint32_t{1} << 26;

    bool IsSparse() const { return m_count >= kSparse; }

    void Release() noexcept {
        if (IsSparse())
            std::free(m_heads);
        else
            core::ReleaseBins(m_heads, m_count);
        m_heads = nullptr;
    }

    Entry **m_heads = nullptr;
    std::uint32_t m_count = 0;
};

} // namespace zvi::lib::spatial
