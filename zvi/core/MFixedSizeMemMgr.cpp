#include "zvi/core/MFixedSizeMemMgr.h"

#include <algorithm>
#include <cstddef>
#include <limits>
#include <new>

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

} // namespace

MFixedSizeMemMgr::MFixedSizeMemMgr(int itemSize, long chunkSize)
    : m_itemSize(std::max(itemSize, kLinkSize)), m_chunkSize(ClampTo32Bits(chunkSize)) {}

MFixedSizeMemMgr::~MFixedSizeMemMgr() {
    FreeAllMem();
}

void MFixedSizeMemMgr::MakeNewChunk() {
    std::int64_t const itemSize = m_itemSize;
    auto const bytes = static_cast<std::size_t>(std::max(std::int64_t{m_chunkSize}, kLinkSize + itemSize));
    auto *const chunk = static_cast<std::byte *>(::operator new(bytes));
    StoreLink(chunk, m_chunkHead);
    m_chunkHead = chunk;

    std::byte *item = chunk + kLinkSize;
    m_freeHead = item;
    std::int64_t const links = (std::int64_t{m_chunkSize} - kLinkSize) / itemSize - 1;
    for (std::int64_t i = 0; i < links; ++i) {
        StoreLink(item, item + itemSize);
        item += itemSize;
    }
    StoreLink(item, nullptr);
}

void MFixedSizeMemMgr::FreeAllMem() {
    while (m_chunkHead != nullptr) {
        void *const chunk = m_chunkHead;
        m_chunkHead = LoadLink(chunk);
        ::operator delete(chunk);
    }
    m_freeHead = nullptr;
}

} // namespace zvi
