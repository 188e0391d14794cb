#pragma once

#include "zvi/core/internal/GrowingMemory.h"
#include "zvi/spatial/tree/CodeDetail.h"

#include <bit>
#include <cassert>
#include <cstddef>
#include <new>

namespace zvi::lib::spatial {

template <typename Space>
struct Family;

/// Memory for the objects that a tree owns, for the families of its nodes, and for the arrays of their pools. What is
/// given back is taken again for the same use; the rest goes with the tree. Everything but the objects begins at a
/// cache line. Where there is no tree the general allocator does the same.
template <typename Space>
class Memory {
public:
    using Object = typename Space::Object;

    /// Null when there is no room, as for all that is taken here.
    void *TakeObject() noexcept { return Take(m_objectMemory, m_freeObjects, sizeof(Object)); }
    void GiveBackObject(void *object) noexcept { GiveBack(object, m_freeObjects); }

    static void *TakeFamily(Memory *memory) noexcept {
        return memory ? Take(memory->m_treeMemory, memory->m_freeFamilies, Family<Space>::kBytes)
                      : ::operator new (Family<Space>::kBytes, std::align_val_t{kCacheLine}, std::nothrow);
    }
    static void GiveBackFamily(Memory *memory, void *family) noexcept {
        if (memory)
            GiveBack(family, memory->m_freeFamilies);
        else
            ::operator delete (family, std::align_val_t{kCacheLine});
    }

    /// For `capacity` objects, a power of two below 2^32, with their codes.
    static void *TakeEntries(Memory *memory, std::size_t capacity) noexcept {
        return memory ? Take(memory->m_treeMemory, memory->m_freeEntries[std::countr_zero(capacity)], Bytes(capacity))
                      : ::operator new (Bytes(capacity), std::align_val_t{kCacheLine}, std::nothrow);
    }
    static void GiveBackEntries(Memory *memory, void *entries, std::size_t capacity) noexcept {
        if (memory)
            GiveBack(entries, memory->m_freeEntries[std::countr_zero(capacity)]);
        else
            ::operator delete (entries, std::align_val_t{kCacheLine});
    }

    static constexpr std::size_t kCacheLine = 64;

private:
    struct Free {
        Free *next;
    };

    static std::size_t Bytes(std::size_t capacity) {
        assert(std::has_single_bit(capacity));
        return capacity * (sizeof(Code<Space::kDimension>) + sizeof(Object *));
    }

    static void *Take(core::GrowingMemory &memory, Free *&free, std::size_t bytes) noexcept {
        if (!free)
            return memory.Take(bytes);
        Free *const taken = free;
        free = taken->next;
        return taken;
    }

    static void GiveBack(void *piece, Free *&free) noexcept { free = ::new (piece) Free{free}; }

    core::GrowingMemory m_objectMemory{kCacheLine};
    core::GrowingMemory m_treeMemory{kCacheLine};
    Free *m_freeObjects = nullptr;
    Free *m_freeFamilies = nullptr;
    /// By the power of two that the capacity is.
    Free *m_freeEntries[32] = {};
};

} // namespace zvi::lib::spatial
