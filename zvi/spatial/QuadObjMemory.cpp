#include "zvi/spatial/QuadObjMemoryDetail.h"

#include <new>

namespace zvi::lib {

MQuadObj *QuadObjMemory::Make() {
    if (m_firstFree == nullptr)
        AddBlock();
    Slot *const slot = m_firstFree;
    m_firstFree = slot->nextFree;
    return ::new (static_cast<void *>(slot)) MQuadObj;
}

void QuadObjMemory::Destroy(MQuadObj *object) {
    object->~MQuadObj();
    m_firstFree = ::new (static_cast<void *>(object)) Slot{m_firstFree};
}

void QuadObjMemory::AddBlock() {
    m_blocks.push_back(std::make_unique_for_overwrite<Slot[]>(kSlotsPerBlock));
    Slot *const slots = m_blocks.back().get();
    // Threaded from the last to the first, so that the lowest address is handed out first.
    for (std::size_t i = kSlotsPerBlock; i-- > 0;) {
        slots[i].nextFree = m_firstFree;
        m_firstFree = &slots[i];
    }
}

} // namespace zvi::lib
