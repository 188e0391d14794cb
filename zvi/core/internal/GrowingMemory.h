#pragma once

#include "zvi/Export.h"

#include <bit>
#include <cassert>
#include <cstddef>

namespace zvi::lib::core {

/// Memory for many small pieces that are given back all at once. It comes from blocks, each as large as all before it
/// together up to 32 MiB, so that what is taken first costs no more than itself, and much of it few allocations; blocks
/// of 2 MiB and more ask the machine for large pages. Pieces taken one after the other lie one behind the other.
class ZVI_API GrowingMemory {
public:
    /// Alignment of the first piece, a power of two; that of the others follows from the sizes that are taken.
    explicit GrowingMemory(std::size_t alignment) : m_alignment(alignment) { assert(std::has_single_bit(alignment)); }
    ~GrowingMemory() { ReleaseAll(); }

    GrowingMemory(GrowingMemory const &) = delete;
    GrowingMemory &operator=(GrowingMemory const &) = delete;

    /// A piece of `bytes`, contents undefined; null, and nothing has changed, when the memory cannot be had.
    void *Take(std::size_t bytes) noexcept {
        if (static_cast<std::size_t>(m_limit - m_next) < bytes && !AddBlock(bytes)) [[unlikely]]
            return nullptr;
        std::byte *const piece = m_next;
        m_next += bytes;
        return piece;
    }

    /// Gives back all blocks; pieces still in use are gone.
    void ReleaseAll() noexcept;

private:
    struct Block;

    bool AddBlock(std::size_t bytes) noexcept;

    std::byte *m_next = nullptr;
    std::byte *m_limit = nullptr;
    Block *m_newest = nullptr;
    /// Bytes of all blocks.
    std::size_t m_total = 0;
    std::size_t m_alignment;
};

} // namespace zvi::lib::core
