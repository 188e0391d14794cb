#pragma once

#include "zvi/core/internal/ArrayBlock.h"

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <cstdint>
#include <cstring>
#include <initializer_list>
#include <limits>
#include <memory>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace zvi {

/// Growable contiguous array: three pointers (first element, past the last element, past the block) and nothing else.
///
/// Appending grows the block by a half, so single appends to an empty array give the capacities 1, 2, 3, 4, 6, 9, 13,
/// 19, 28, ... The capacity shrinks only by destruction or by an assignment that needs a larger block. Trivially
/// copyable elements move as one block of bytes; others are moved (copied when moving may throw) and destroyed one by
/// one in ascending order. Growth invalidates pointers to the elements.
///
/// A raised error, of an element's copy too, leaves the array as it was, capacity included; only elements that cannot
/// be copied and whose move raises an error may be lost.
template <typename T>
class MArray {
public:
    /// The type of the elements.
    using value_type = T;

    /// No elements, no allocation.
    MArray() = default;

    /// `count` zeroed elements and exactly that capacity; nothing is allocated for 0.
    /// Raises `std::length_error` above the type's maximum count.
    explicit MArray(std::size_t count) : MArray() {
        AdoptNewBlock(count);
        m_last = Block::FillTo(count, m_first);
    }

    /// Copies the values; the capacity is exactly their number.
    MArray(std::initializer_list<T> values) : MArray() { CopyIn(values.begin(), values.size()); }

    /// Copies the elements; the capacity is exactly the size of `other`.
    MArray(MArray const &other) : MArray() { CopyIn(other.m_first, other.Size()); }

    /// Takes over the block of `other`, which is left empty and without one.
    MArray(MArray &&other) noexcept
        : m_first(std::exchange(other.m_first, nullptr)), m_last(std::exchange(other.m_last, nullptr)),
          m_limit(std::exchange(other.m_limit, nullptr)) {}

    /// Destroys the elements and frees the block.
    ~MArray() { Release(); }

    /// Copies the elements into the present block when they fit its capacity; otherwise takes a block of exactly the
    /// size of `other`. An empty source keeps the block. Assignment to itself does nothing.
    MArray &operator=(MArray const &other) {
        if (this != &other)
            AssignFrom(other.m_first, other.Size());
        return *this;
    }

    /// The same for a list of values.
    MArray &operator=(std::initializer_list<T> values) {
        AssignFrom(values.begin(), values.size());
        return *this;
    }

    /// Takes over the block of `other`, which is left empty and without one.
    MArray &operator=(MArray &&other) noexcept {
        if (this != &other) {
            MArray taken(std::move(other));
            Swap(taken);
        }
        return *this;
    }

    /// Exchanges the blocks of two arrays.
    void Swap(MArray &other) noexcept {
        std::swap(m_first, other.m_first);
        std::swap(m_last, other.m_last);
        std::swap(m_limit, other.m_limit);
    }

    /// Number of elements.
    std::size_t Size() const { return static_cast<std::size_t>(m_last - m_first); }
    /// Number of elements for which the block has room.
    std::size_t Capacity() const { return static_cast<std::size_t>(m_limit - m_first); }
    /// Whether there is no element.
    bool Empty() const { return m_first == m_last; }

    /// The first element; null for an array that never allocated.
    T *Data() { return m_first; }
    T const *Data() const { return m_first; }

    /// Walks from the first element to the last.
    T *begin() { return m_first; }
    T *end() { return m_last; }
    T const *begin() const { return m_first; }
    T const *end() const { return m_last; }

    /// The element at `index`, which must exist; unchecked but for an assertion.
    T &operator[](std::size_t index) {
        assert(index < Size());
        return m_first[index];
    }
    T const &operator[](std::size_t index) const {
        assert(index < Size());
        return m_first[index];
    }

    /// The element at `index`; raises `std::out_of_range` when there is none.
    T &At(std::size_t index) {
        CheckIndex(index);
        return m_first[index];
    }
    T const &At(std::size_t index) const {
        CheckIndex(index);
        return m_first[index];
    }

    /// Appends `value`, which may be an element of this same array.
    void PushBack(T const &value) { Append(value); }

    /// Appends `value` by moving it; it may be an element of this same array.
    void PushBack(T &&value) { Append(std::move(value)); }

    /// Sets the size to `count`. New cells hold zero bytes (value-initialised elements where the type owns memory);
    /// a smaller size keeps the block. Raises `std::length_error` above the type's maximum count.
    void Resize(std::size_t count) {
        std::size_t const size = Size();
        if (count < size) {
            std::destroy(m_first + count, m_last);
            m_last = m_first + count;
        } else if (count <= Capacity()) {
            m_last = Block::FillTo(count - size, m_last);
        } else {
            Grow(count - size, [=](T *end) { return Block::FillTo(count - size, end); });
        }
    }

    /// Ensures room for `more` elements beyond the present ones, growing by the rule of the appends.
    void Reserve(std::size_t more) {
        if (static_cast<std::size_t>(m_limit - m_last) < more)
            Grow(more, [](T *end) { return end; });
    }

    /// Destroys the elements and keeps the block.
    void Clear() {
        std::destroy(m_first, m_last);
        m_last = m_first;
    }

    /// Moves the elements behind `index` one place down. Raises `std::out_of_range` when there is no such element.
    void RemoveAt(std::size_t index) {
        CheckIndex(index);
        if constexpr (Block::kIsTrivial) {
            std::size_t const behind = Size() - index - 1;
            std::memmove(static_cast<void *>(m_first + index), m_first + index + 1, behind * sizeof(T));
            --m_last;
        } else if constexpr (std::is_nothrow_move_assignable_v<T>) {
            std::move(m_first + index + 1, m_last, m_first + index);
            std::destroy_at(--m_last);
        } else {
            MArray rest;
            rest.AdoptNewBlock(Capacity());
            rest.m_last = Block::MoveTo(m_first, m_first + index, rest.m_first);
            rest.m_last = Block::MoveTo(m_first + index + 1, m_last, rest.m_last);
            Swap(rest);
        }
    }

    /// Whether the three pointers bound whole elements in the right order, so that the array can be walked.
    bool IsConsistent() const {
        if (!m_first)
            return !m_last && !m_limit;
        auto const bytesTo = [this](T const *place) {
            return reinterpret_cast<std::uintptr_t>(place) - reinterpret_cast<std::uintptr_t>(m_first);
        };
        return bytesTo(m_last) <= bytesTo(m_limit) && bytesTo(m_last) % sizeof(T) == 0 &&
               bytesTo(m_limit) % sizeof(T) == 0;
    }

    /// The largest count that fits the address space: the greatest whole number not above (2^64 - 1) / sizeof(T).
    static constexpr std::size_t MaxCount() { return (std::numeric_limits<std::size_t>::max)() / sizeof(T); }

    /// Whether the elements are equal, one by one.
    friend bool operator==(MArray const &left, MArray const &right) requires requires(T const &a, T const &b) {
        a == b;
    }
    { return std::equal(left.m_first, left.m_last, right.m_first, right.m_last); }

private:
    using Block = lib::core::ArrayBlock<T>;

    /// Bytes up to which a copy of a value costs no more than a reference to it.
    static constexpr std::size_t kReadFirstSize = 64;

    /// A small plain value is read before the array grows: then it can be an element, and it need not have an address.
    static constexpr bool kIsReadFirst =
        Block::kIsTrivial && std::is_copy_constructible_v<T> && sizeof(T) <= kReadFirstSize;

    [[noreturn, gnu::noinline]] static void RaiseTooLong() { throw std::length_error("vector<T> too long"); }
    [[noreturn, gnu::noinline]] static void RaiseOutOfRange() {
        throw std::out_of_range("invalid vector<T> subscript");
    }

    void CheckIndex(std::size_t index) const {
        if (index >= Size())
            RaiseOutOfRange();
    }

    /// Takes a block; the array has none yet.
    void AdoptNewBlock(std::size_t capacity) {
        assert(!m_first);
        if (capacity == 0)
            return;
        if (capacity > MaxCount())
            RaiseTooLong();
        m_first = Block::Allocate(capacity);
        m_last = m_first;
        m_limit = m_first + capacity;
    }

    void CopyIn(T const *source, std::size_t count) {
        AdoptNewBlock(count);
        m_last = Block::CopyTo(source, count, m_first);
    }

    void Release() {
        std::destroy(m_first, m_last);
        Block::Deallocate(m_first);
        m_first = m_last = m_limit = nullptr;
    }

    void AssignFrom(T const *source, std::size_t count) {
        if (count == 0) {
            Clear();
        } else if (count > Capacity()) {
            MArray fresh;
            fresh.CopyIn(source, count);
            Swap(fresh);
        } else if constexpr (Block::kIsTrivial) {
            m_last = Block::CopyTo(source, count, m_first);
        } else {
            AssignByWay(source, count);
        }
    }

    /// Copies aside first, where an error does no harm, and then moves the copies into the present block, which has
    /// room for them; elements whose move may fail stay aside, in a new block of the same capacity.
    void AssignByWay(T const *source, std::size_t count) {
        assert(count <= Capacity());
        MArray copies;
        copies.AdoptNewBlock(Capacity());
        copies.m_last = Block::CopyTo(source, count, copies.m_first);
        if constexpr (std::is_nothrow_move_assignable_v<T> && std::is_nothrow_move_constructible_v<T>) {
            T *const middle = copies.m_first + (std::min)(Size(), count);
            T *const end = std::move(copies.m_first, middle, m_first);
            std::destroy(end, m_last);
            m_last = Block::MoveTo(middle, copies.m_last, end);
        } else {
            Swap(copies);
        }
    }

    std::size_t GrownCapacity(std::size_t more) const {
        std::size_t const size = Size();
        std::size_t const capacity = Capacity();
        if (MaxCount() - size < more)
            RaiseTooLong();
        std::size_t const half = capacity / 2;
        std::size_t const grown = MaxCount() - half < capacity ? 0 : capacity + half;
        return (std::max)(grown, size + more);
    }

    /// Makes room for `more` elements. `fill(end)` constructs as many of them as it likes, and gives the place behind
    /// them. The old block lives until then, unless it is an extensible one: what is read may lie in it, or in memory
    /// that an element owns.
    template <typename Fill>
    [[gnu::noinline]] void Grow(std::size_t more, Fill fill) {
        std::size_t const capacity = GrownCapacity(more);
        std::size_t const size = Size();
        if constexpr (Block::kIsExtensible) {
            m_first = Block::Extend(m_first, capacity);
            m_last = fill(m_first + size);
            m_limit = m_first + capacity;
        } else {
            MArray grown;
            grown.AdoptNewBlock(capacity);
            T *const added = grown.m_first + size;
            T *const end = fill(added);
            try {
                Block::MoveTo(m_first, m_last, grown.m_first);
            } catch (...) {
                std::destroy(added, end);
                throw;
            }
            grown.m_last = end;
            Swap(grown);
        }
    }

    template <typename Value>
    void Append(Value &&value) {
        if constexpr (kIsReadFirst) {
            T const read = value;
            if (m_last == m_limit)
                Grow(1, [](T *end) { return end; });
            std::construct_at(m_last, read);
            ++m_last;
        } else if (m_last == m_limit) {
            AppendGrowing(std::forward<Value>(value));
        } else {
            std::construct_at(m_last, std::forward<Value>(value));
            ++m_last;
        }
    }

    /// A value whose move may fail is copied, so that an error leaves it where it is.
    template <typename Value>
    [[gnu::noinline]] void AppendGrowing(Value &&value) {
        if constexpr (Block::kIsExtensible) {
            T read(std::forward<Value>(value));
            Grow(1, [&read](T *end) { return std::construct_at(end, std::move(read)) + 1; });
        } else if constexpr (Block::kIsMoved) {
            Grow(1, [&value](T *end) { return std::construct_at(end, std::forward<Value>(value)) + 1; });
        } else {
            Grow(1, [&value](T *end) { return std::construct_at(end, std::as_const(value)) + 1; });
        }
    }

    T *m_first = nullptr;
    T *m_last = nullptr;
    T *m_limit = nullptr;
};

} // namespace zvi
