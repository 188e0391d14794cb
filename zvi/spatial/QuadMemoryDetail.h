#pragma once

#include "zvi/core/internal/GrowingMemory.h"
#include "zvi/spatial/MQuadNode.h"
#include "zvi/spatial/QuadFamilyDetail.h"

#include <bit>
#include <cstddef>
#include <cstdint>
#include <new>

namespace zvi::lib::spatial {

/// Memory for the objects that a tree owns, for its nodes, four at a time, and for the arrays of their pools. What is
/// given back is taken again for the same use; the rest goes with the tree. Everything begins at a cache line.
class QuadMemory {
public:
    MQuadObj *Make() { return ::new (Take(m_objectMemory, m_freeObjects, sizeof(MQuadObj))) MQuadObj; }

    void Destroy(MQuadObj *object) {
        object->~MQuadObj();
        GiveBack(object, m_freeObjects);
    }

    void *TakeFamily() { return Take(m_treeMemory, m_freeFamilies, kFamilySize); }
    void GiveBackFamily(void *family) { GiveBack(family, m_freeFamilies); }

    /// For `capacity` objects with their codes; see `MQuadObjPool`.
    void *TakeEntries(std::uint32_t capacity) {
        return Take(m_treeMemory, m_freeEntries[std::countr_zero(capacity)], EntryBytes(capacity));
    }
    void GiveBackEntries(void *entries, std::uint32_t capacity) {
        GiveBack(entries, m_freeEntries[std::countr_zero(capacity)]);
    }

    static std::size_t EntryBytes(std::uint32_t capacity) { return capacity * (sizeof(QuadCode) + sizeof(MQuadObj *)); }

private:
    static constexpr std::size_t kCacheLine = 64;

    static_assert(sizeof(MQuadObj) % kCacheLine == 0);

    struct Free {
        Free *next;
    };

    static void *Take(core::GrowingMemory &memory, Free *&free, std::size_t bytes) {
        if (free) {
            Free *const taken = free;
            free = taken->next;
            return taken;
        }
        void *const piece = memory.Take(bytes);
        if (!piece)
            throw std::bad_alloc();
        return piece;
    }

    static void GiveBack(void *piece, Free *&free) { free = ::new (piece) Free{free}; }

    core::GrowingMemory m_objectMemory{kCacheLine};
    core::GrowingMemory m_treeMemory{kCacheLine};
    Free *m_freeObjects = nullptr;
    Free *m_freeFamilies = nullptr;
    /// By the power of two that the capacity is.
    Free *m_freeEntries[32] = {};
};

} // namespace zvi::lib::spatial
