#include "zvi/core/internal/GrowingMemory.h"

#include "zvi/host/internal/LargeMemory.h"

#include <algorithm>
#include <limits>
#include <new>

namespace zvi::lib::core {

namespace {

/// Bytes beyond which blocks no longer grow.
constexpr std::size_t kLargestBlock = 16 * host::kLargePage;

/// A block of large pages, as all blocks of at least one of them are.
bool IsLarge(std::size_t bytes) {
    return bytes >= host::kLargePage;
}

void *Allocate(std::size_t bytes, std::size_t alignment) noexcept {
    return IsLarge(bytes) ? host::AllocateLarge(bytes)
                          : ::operator new (bytes, std::align_val_t{alignment}, std::nothrow);
}

} // namespace

/// Stands at the begin of its block.
struct GrowingMemory::Block {
    Block *previous;
    std::size_t bytes;
};

bool GrowingMemory::AddBlock(std::size_t bytes) noexcept {
    std::size_t const headerSize = std::max(sizeof(Block), m_alignment);
    if (bytes > std::numeric_limits<std::ptrdiff_t>::max() - headerSize - host::kLargePage)
        return false;
    std::size_t size = std::max(headerSize + bytes, std::min(m_total, kLargestBlock));
    if (IsLarge(size))
        size = (size + host::kLargePage - 1) / host::kLargePage * host::kLargePage;
    void *const memory = Allocate(size, m_alignment);
    if (!memory)
        return false;
    m_newest = ::new (memory) Block{m_newest, size};
    m_next = static_cast<std::byte *>(memory) + headerSize;
    m_limit = static_cast<std::byte *>(memory) + size;
    m_total += size;
    return true;
}

void GrowingMemory::ReleaseAll() noexcept {
    while (m_newest) {
        Block *const block = m_newest;
        m_newest = block->previous;
        if (IsLarge(block->bytes))
            host::ReleaseLarge(block);
        else
            ::operator delete (block, std::align_val_t{m_alignment});
    }
    m_next = m_limit = nullptr;
    m_total = 0;
}

} // namespace zvi::lib::core
