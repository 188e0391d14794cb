#include "zvi/core/MFixedSizeMemMgr.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>
#include <vector>

namespace zvi {

namespace {

/// Bytes of a link: at the head of a chunk to the chunk before it, in a free item to the next free item.
constexpr std::int32_t kLinkSize = 8;
static_assert(sizeof(void *) == kLinkSize);

void StoreLink(std::byte *place, void *target) {
    std::memcpy(place, &target, sizeof target);
}

void *LoadLink(void const *place) {
    void *target = nullptr;
    std::memcpy(&target, place, sizeof target);
    return target;
}

std::int32_t ClampTo32Bits(long value) {
    return static_cast<std::int32_t>(
        std::clamp<long>(value, std::numeric_limits<std::int32_t>::min(), std::numeric_limits<std::int32_t>::max()));
}

/// At least one, for which a chunk is made large enough.
std::int64_t ItemsPerChunk(std::int64_t chunkSize, std::int64_t itemSize) {
    return std::max<std::int64_t>((chunkSize - kLinkSize) / itemSize, 1);
}

} // namespace

MFixedSizeMemMgr::MFixedSizeMemMgr(int itemSize, long chunkSize)
    : m_itemSize(std::max(itemSize, kLinkSize)), m_chunkSize(ClampTo32Bits(chunkSize)) {}

MFixedSizeMemMgr::~MFixedSizeMemMgr() {
    FreeAllMem();
}

void MFixedSizeMemMgr::MakeNewChunk() {
    auto const bytes =
        static_cast<std::size_t>(std::max<std::int64_t>(m_chunkSize, std::int64_t{kLinkSize} + m_itemSize));
    auto *const chunk = static_cast<std::byte *>(::operator new(bytes));
    StoreLink(chunk, m_chunkHead);
    m_chunkHead = chunk;

    std::byte *item = chunk + kLinkSize;
    m_freeHead = item;
    for (std::int64_t i = 1; i < ItemsPerChunk(m_chunkSize, m_itemSize); ++i) {
        StoreLink(item, item + m_itemSize);
        item += m_itemSize;
    }
    StoreLink(item, nullptr);
}

void MFixedSizeMemMgr::FreeAllMem() {
    while (m_chunkHead) {
        void *const chunk = m_chunkHead;
        m_chunkHead = LoadLink(chunk);
        ::operator delete(chunk);
    }
    m_freeHead = nullptr;
}

bool MFixedSizeMemMgr::IsConsistent() const {
    auto const addressOf = [](void const *place) { return reinterpret_cast<std::uintptr_t>(place); };
    std::vector<std::uintptr_t> items;
    for (void const *chunk = m_chunkHead; chunk; chunk = LoadLink(chunk))
        for (std::int64_t i = 0; i < ItemsPerChunk(m_chunkSize, m_itemSize); ++i)
            items.push_back(addressOf(chunk) + static_cast<std::uintptr_t>(kLinkSize + i * m_itemSize));
    std::ranges::sort(items);
    std::vector<std::uintptr_t> free;
    for (void const *item = m_freeHead; item; item = LoadLink(item)) {
        if (free.size() == items.size() || !std::ranges::binary_search(items, addressOf(item)))
            return false;
        free.push_back(addressOf(item));
    }
    std::ranges::sort(free);
    return std::ranges::adjacent_find(free) == free.end();
}

} // namespace zvi
