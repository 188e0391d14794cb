#pragma once

#include <cassert>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <limits>
#include <memory>
#include <new>
#include <type_traits>

namespace zvi::lib::core {

/// The memory of an `MArray<T>` and the ways in which elements come into it. Trivially copyable elements go as one
/// block of bytes. Each operation that raises an error leaves what it was given as it was, and nothing behind.
template <typename T>
struct ArrayBlock {
    static constexpr bool kIsTrivial = std::is_trivially_copyable_v<T>;

    /// Such blocks come from the C allocator, which can often extend them in place.
    static constexpr bool kIsExtensible = kIsTrivial && alignof(T) <= alignof(std::max_align_t);

    /// Whether elements reach another block by moves, which cannot fail or have no alternative; else by copies.
    static constexpr bool kIsMoved = std::is_nothrow_move_constructible_v<T> || !std::is_copy_constructible_v<T>;

    /// Bytes of `count` elements; raises `std::bad_alloc` when no block can be so large.
    static std::size_t BytesOf(std::size_t count) {
        if (count > static_cast<std::size_t>((std::numeric_limits<std::ptrdiff_t>::max)()) / sizeof(T))
            throw std::bad_alloc();
        return count * sizeof(T);
    }

    /// Raises `std::bad_alloc`.
    static T *Allocate(std::size_t count) {
        std::size_t const bytes = BytesOf(count);
        if constexpr (!kIsExtensible)
            return static_cast<T *>(::operator new(bytes, std::align_val_t(alignof(T))));
        else if (void *const block = std::malloc(bytes))
            return static_cast<T *>(block);
        else
            throw std::bad_alloc();
    }

    static void Deallocate(T *block) {
        if constexpr (kIsExtensible)
            std::free(block);
        else
            ::operator delete(block, std::align_val_t(alignof(T)));
    }

    /// Makes `block`, which may move, room for `count` elements, which is not 0; for extensible blocks alone.
    static T *Extend(T *block, std::size_t count) {
        static_assert(kIsExtensible);
        assert(count != 0);
        void *const extended = std::realloc(static_cast<void *>(block), BytesOf(count));
        if (!extended)
            throw std::bad_alloc();
        return static_cast<T *>(extended);
    }

    /// Constructs copies in unused memory, and gives the place behind them.
    static T *CopyTo(T const *source, std::size_t count, T *unused) {
        if constexpr (kIsTrivial) {
            if (count != 0)
                std::memcpy(static_cast<void *>(unused), source, BytesOf(count));
            return unused + count;
        } else {
            return std::uninitialized_copy_n(source, count, unused);
        }
    }

    /// Constructs elements of zero bytes (or as their type constructs them), and gives the place behind them.
    static T *FillTo(std::size_t count, T *unused) {
        if constexpr (kIsTrivial) {
            if (count != 0)
                std::memset(static_cast<void *>(unused), 0, BytesOf(count));
            return unused + count;
        } else {
            return std::uninitialized_value_construct_n(unused, count);
        }
    }

    /// Constructs the elements from `first` on in unused memory, and gives the place behind them; the old ones stay,
    /// moved from or not.
    static T *MoveTo(T *first, T *last, T *unused) {
        if constexpr (kIsMoved)
            return std::uninitialized_move(first, last, unused);
        else
            return std::uninitialized_copy(first, last, unused);
    }
};

} // namespace zvi::lib::core
