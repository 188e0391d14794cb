#pragma once

#include "zvi/host/internal/LargeMemory.h"

#include <cstddef>
#include <limits>
#include <new>
#include <vector>

namespace zvi::lib::drawing {

/// Takes memory as any allocator does, but on large pages when there is much of it.
template <typename Thing>
class LargeAllocator {
public:
    using value_type = Thing;

    LargeAllocator() = default;
    template <typename Other>
    LargeAllocator(LargeAllocator<Other> const &) noexcept {}

    Thing *allocate(std::size_t count) {
        if (count > std::numeric_limits<std::size_t>::max() / sizeof(Thing))
            throw std::bad_array_new_length();
        std::size_t const bytes = count * sizeof(Thing);
        void *const memory = IsLarge(count) ? host::AllocateLarge(bytes) : ::operator new(bytes);
        if (!memory)
            throw std::bad_alloc();
        return static_cast<Thing *>(memory);
    }
    void deallocate(Thing *things, std::size_t count) noexcept {
        if (IsLarge(count))
            host::ReleaseLarge(things);
        else
            ::operator delete(things);
    }

    template <typename Other>
    bool operator==(LargeAllocator<Other> const &) const noexcept {
        return true;
    }

private:
    /// With less the page would be left unused for the most part.
    static bool IsLarge(std::size_t count) { return count * sizeof(Thing) > host::kLargePage; }
};

/// A vector of what is looked at here and there, whatever the order of the input: on large pages, where the places of
/// addresses are found soon.
template <typename Thing>
using LargeVector = std::vector<Thing, LargeAllocator<Thing>>;

} // namespace zvi::lib::drawing
