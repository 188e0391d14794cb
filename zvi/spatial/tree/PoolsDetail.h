#pragma once

#include "zvi/spatial/tree/RemovalDetail.h"

#include <memory>
#include <utility>

namespace zvi::lib::spatial {

/// What the public pools do.
template <typename Space>
struct Pools {
    using Object = typename Space::Object;
    using Pool = typename Space::Pool;
    using Of = Access<Space>;

    /// For a child the stock is that of its family; others, with null, get one of their own.
    static void Open(Pool &pool, Memory<Space> *memory, Stock<Space> *stock) {
        pool.m_ownsStock = !stock;
        pool.m_stock = stock ? stock : new Stock<Space>;
        pool.m_memory = memory;
    }

    static void Close(Pool &pool) noexcept {
        pool.m_stock->Release(pool.m_memory);
        if (pool.m_ownsStock)
            delete pool.m_stock;
    }

    /// The same objects, none of which is trusted in two places, in an array from `memory`.
    static void Assign(Pool &pool, Pool const &other, Memory<Space> *memory) {
        Stock<Space> const &source = *other.m_stock;
        Stock<Space> objects;
        if (source.Count() != 0)
            objects.Reserve(memory, source.Count());
        for (std::size_t i = 0; i < source.End(); ++i) {
            if (source.At(i))
                objects.Put(source.At(i), kUntrustedCode);
        }
        pool.m_stock->Swap(objects);
        objects.Release(pool.m_memory);
        pool.m_memory = memory;
        MeetUntrusted(pool);
    }

    static int Count(Pool const &pool) { return static_cast<int>(pool.m_stock->Count()); }

    static Object *At(Pool const &pool, int index) {
        pool.m_stock->Compact();
        return index >= 0 && index < Count(pool) ? pool.m_stock->At(static_cast<std::size_t>(index)) : nullptr;
    }

    static void Add(Pool &pool, Object *object) {
        if (!object)
            return;
        pool.m_stock->Reserve(pool.m_memory, 1);
        pool.m_stock->Append(object, kUntrustedCode);
        MeetUntrusted(pool);
    }

    static void RemoveAt(Pool &pool, int index) {
        if (At(pool, index))
            Removal<Space>::TakeOut(*pool.m_stock, static_cast<std::size_t>(index));
    }

    static int FindFromLast(Pool const &pool, Object const *object) {
        pool.m_stock->Compact();
        std::size_t const place = object ? pool.m_stock->FindLast(object) : Stock<Space>::kNowhere;
        return place == Stock<Space>::kNowhere ? -1 : static_cast<int>(place);
    }

private:
    static void MeetUntrusted(Pool &pool) {
        if (pool.m_node && Of::FamilyOf(*pool.m_node))
            Of::FamilyOf(*pool.m_node)->bands.HoldEverything();
    }
};

} // namespace zvi::lib::spatial
