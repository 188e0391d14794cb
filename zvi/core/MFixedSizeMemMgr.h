#pragma once

#include "zvi/Export.h"

#include <cstdint>
#include <cstring>

namespace zvi {

/// Pool of items of one size: items come from chunks and go back to a free list, so that a bulk insertion almost never
/// reaches the general allocator. Items are packed at their size without padding; a free item holds the address of the
/// next free one in its first 8 bytes. Chunks are given back only by `FreeAllMem` and by the destructor.
class ZVI_API MFixedSizeMemMgr {
public:
    /// `itemSize` in bytes, at least 8 (a smaller one is taken as 8); `chunkSize` in bytes. A chunk gives
    /// (chunkSize - 8) / itemSize items; one that is too small for a single item is allocated large enough for it.
    MFixedSizeMemMgr(int itemSize, long chunkSize);
    /// As `FreeAllMem`.
    ~MFixedSizeMemMgr();

    MFixedSizeMemMgr(MFixedSizeMemMgr const &) = delete;
    MFixedSizeMemMgr &operator=(MFixedSizeMemMgr const &) = delete;

    /// An item of uninitialised memory: the one freed last, else the lowest unused one of the newest chunk.
    /// Raises `std::bad_alloc` when a new chunk cannot be had.
    void *Alloc() {
        if (!m_freeHead) [[unlikely]]
            MakeNewChunk();
        void *const item = m_freeHead;
        std::memcpy(&m_freeHead, item, sizeof m_freeHead);
        return item;
    }

    /// Gives `item` back for the next `Alloc`. It must come from this pool and be in use; that is not checked.
    void Free(void *item) {
        std::memcpy(item, &m_freeHead, sizeof m_freeHead);
        m_freeHead = item;
    }

    /// Gives back all chunks. Items still in use are gone.
    void FreeAllMem();

    /// Whether every free item is an item of a chunk, and free only once. Walks the whole pool.
    bool IsConsistent() const;

protected:
    /// Takes a chunk from the general allocator and makes its items the free list.
    void MakeNewChunk();

private:
    void *m_freeHead = nullptr;
    void *m_chunkHead = nullptr;
    std::int32_t m_itemSize;
    std::int32_t m_chunkSize;
};

} // namespace zvi
