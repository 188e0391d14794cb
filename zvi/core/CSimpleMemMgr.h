#pragma once

#include "zvi/Export.h"

#include <cstddef>
#include <cstdint>
#include <new>

namespace zvi {

/// The interface of `MFixedSizeMemMgr` straight onto the general allocator, so that the owner of a pool can choose
/// either. It keeps nothing but the item size; whoever allocates an item frees it.
class ZVI_API CSimpleMemMgr {
public:
    /// `itemSize` in bytes, a negative one is taken as 0; the chunk size is of no use here and is not kept.
    CSimpleMemMgr(int itemSize, [[maybe_unused]] long chunkSize) : m_itemSize(itemSize < 0 ? 0 : itemSize) {}

    /// An item of uninitialised memory. Raises `std::bad_alloc` when it cannot be had.
    void *Alloc() { return ::operator new(static_cast<std::size_t>(m_itemSize)); }

    /// Gives `item` back to the general allocator; null is ignored.
    void Free(void *item) { ::operator delete(item); }

private:
    std::int32_t m_itemSize;
};

} // namespace zvi
