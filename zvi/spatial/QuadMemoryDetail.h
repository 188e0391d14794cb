#pragma once

#include "zvi/spatial/MQuadNode.h"

#include <cstddef>
#include <memory>
#include <new>
#include <vector>

namespace zvi::lib {

/// Slots of one size from blocks, each slot at the begin of a cache line. Slots that are close in time are close in
/// memory, which keeps the pages that a tree touches few.
template <std::size_t slotSize, std::size_t slotsPerBlock>
class QuadSlotMemory {
public:
    void *Take() {
        if (m_firstFree == nullptr)
            AddBlock();
        Slot *const slot = m_firstFree;
        m_firstFree = slot->nextFree;
        return slot;
    }

    void GiveBack(void *slot) { m_firstFree = ::new (slot) Slot{m_firstFree}; }

private:
    static constexpr std::size_t kCacheLine = 64;

    union alignas(kCacheLine) Slot {
        Slot *nextFree;
        std::byte content[slotSize];
    };

    void AddBlock() {
        m_blocks.push_back(std::make_unique_for_overwrite<Slot[]>(slotsPerBlock));
        Slot *const slots = m_blocks.back().get();
        // Threaded from the last to the first, so that the lowest address is handed out first.
        for (std::size_t i = slotsPerBlock; i-- > 0;) {
            slots[i].nextFree = m_firstFree;
            m_firstFree = &slots[i];
        }
    }

    std::vector<std::unique_ptr<Slot[]>> m_blocks;
    Slot *m_firstFree = nullptr;
};

/// Memory for the objects that a tree owns and for its nodes, four at a time.
class QuadMemory {
public:
    MQuadObj *Make() { return ::new (m_objects.Take()) MQuadObj; }

    void Destroy(MQuadObj *object) {
        object->~MQuadObj();
        m_objects.GiveBack(object);
    }

    void *TakeNodes() { return m_nodes.Take(); }
    void GiveBackNodes(void *nodes) { m_nodes.GiveBack(nodes); }

private:
    QuadSlotMemory<sizeof(MQuadObj), 256> m_objects;
    QuadSlotMemory<MQuadNode::kChildCount * sizeof(MQuadNode), 16> m_nodes;
};

} // namespace zvi::lib
