#pragma once

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <functional>
#include <initializer_list>
#include <limits>
#include <memory>
#include <new>
#include <stdexcept>
#include <type_traits>
#include <utility>

namespace zvi {

/// Growable contiguous array: three pointers (first element, past the last element, past the block) and nothing else.
///
/// Appending grows the block by a half, so single appends to an empty array give the capacities 1, 2, 3, 4, 6, 9, 13,
/// 19, 28, ... The capacity shrinks only by destruction or by an assignment that needs a larger block. Trivially
/// copyable elements move as one block of bytes; others are moved (copied when moving may throw) and destroyed one by
/// one in ascending order. A raised error leaves the array as it was. Growth invalidates pointers to the elements.
template <typename T>
class MArray {
public:
    using value_type = T;

    /// No elements, no allocation.
    MArray() = default;

    /// `count` zeroed elements and exactly that capacity; nothing is allocated for 0.
    /// Raises `std::length_error` above the type's maximum count.
    explicit MArray(std::size_t count) : MArray() {
        AdoptNewBlock(count);
        m_last = AppendZeroed(count);
    }

    MArray(std::initializer_list<T> values) : MArray() { CopyIn(values.begin(), values.size()); }

    /// Copies the elements; the capacity is exactly the size of `other`.
    MArray(MArray const &other) : MArray() { CopyIn(other.m_first, other.Size()); }

    /// Takes over the block of `other`, which is left empty and without one.
    MArray(MArray &&other) noexcept
        : m_first(std::exchange(other.m_first, nullptr)), m_last(std::exchange(other.m_last, nullptr)),
          m_limit(std::exchange(other.m_limit, nullptr)) {}

    ~MArray() { Release(); }

    /// Copies the elements into the present block when they fit its capacity; otherwise takes a block of exactly the
    /// size of `other`. An empty source keeps the block. Assignment to itself does nothing.
    MArray &operator=(MArray const &other) {
        if (this != &other)
            AssignFrom(other.m_first, other.Size());
        return *this;
    }

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

    void Swap(MArray &other) noexcept {
        std::swap(m_first, other.m_first);
        std::swap(m_last, other.m_last);
        std::swap(m_limit, other.m_limit);
    }

    std::size_t Size() const { return static_cast<std::size_t>(m_last - m_first); }
    std::size_t Capacity() const { return static_cast<std::size_t>(m_limit - m_first); }
    bool Empty() const { return m_first == m_last; }

    /// The first element; null for an array that never allocated.
    T *Data() { return m_first; }
    T const *Data() const { return m_first; }

    T *begin() { return m_first; }
    T *end() { return m_last; }
    T const *begin() const { return m_first; }
    T const *end() const { return m_last; }

    /// The element at `index`, unchecked.
    T &operator[](std::size_t index) { return m_first[index]; }
    T const &operator[](std::size_t index) const { return m_first[index]; }

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
        } else if (count > size) {
            Reserve(count - size);
            m_last = AppendZeroed(count - size);
        }
    }

    /// Ensures room for `more` elements beyond the present ones, growing by the rule of the appends.
    void Reserve(std::size_t more) {
        if (static_cast<std::size_t>(m_limit - m_last) < more)
            Grow(more);
    }

    /// Destroys the elements and keeps the block.
    void Clear() {
        std::destroy(m_first, m_last);
        m_last = m_first;
    }

    /// Moves the elements behind `index` one place down. Raises `std::out_of_range` when there is no such element.
    void RemoveAt(std::size_t index) {
        CheckIndex(index);
        if constexpr (std::is_trivially_copyable_v<T>) {
            std::size_t const behind = Size() - index - 1;
            std::memmove(static_cast<void *>(m_first + index), m_first + index + 1, behind * sizeof(T));
        } else {
            std::move(m_first + index + 1, m_last, m_first + index);
            std::destroy_at(m_last - 1);
        }
        --m_last;
    }

    /// The largest count that fits the address space: the greatest whole number not above (2^64 - 1) / sizeof(T).
    static constexpr std::size_t MaxCount() { return std::numeric_limits<std::size_t>::max() / sizeof(T); }

    friend bool operator==(MArray const &left, MArray const &right) requires requires(T const &a, T const &b) {
        a == b;
    }
    { return std::equal(left.m_first, left.m_last, right.m_first, right.m_last); }

private:
    /// Blocks of such elements come from the C allocator, which can often extend them in place.
    static constexpr bool IsPlain() {
        return std::is_trivially_copyable_v<T> && alignof(T) <= alignof(std::max_align_t);
    }

    [[noreturn, gnu::noinline]] static void RaiseTooLong() { throw std::length_error("vector<T> too long"); }
    [[noreturn, gnu::noinline]] static void RaiseOutOfRange() {
        throw std::out_of_range("invalid vector<T> subscript");
    }

    void CheckIndex(std::size_t index) const {
        if (index >= Size())
            RaiseOutOfRange();
    }

    static std::size_t BytesOf(std::size_t count) {
        if (count > static_cast<std::size_t>(std::numeric_limits<std::ptrdiff_t>::max()) / sizeof(T))
            throw std::bad_alloc();
        return count * sizeof(T);
    }

    static T *Allocate(std::size_t count) {
        std::size_t const bytes = BytesOf(count);
        if constexpr (IsPlain()) {
            void *const block = std::malloc(bytes);
            if (block == nullptr)
                throw std::bad_alloc();
            return static_cast<T *>(block);
        } else {
            return static_cast<T *>(::operator new(bytes, std::align_val_t(alignof(T))));
        }
    }

    static void Deallocate(T *block) {
        if constexpr (IsPlain())
            std::free(block);
        else
            ::operator delete(block, std::align_val_t(alignof(T)));
    }

    void AdoptNewBlock(std::size_t capacity) {
        if (capacity == 0)
            return;
        if (capacity > MaxCount())
            RaiseTooLong();
        m_first = Allocate(capacity);
        m_last = m_first;
        m_limit = m_first + capacity;
    }

    void CopyIn(T const *source, std::size_t count) {
        AdoptNewBlock(count);
        m_last = CopyConstruct(source, count, m_first);
    }

    void Release() {
        std::destroy(m_first, m_last);
        Deallocate(m_first);
        m_first = m_last = m_limit = nullptr;
    }

    static T *CopyConstruct(T const *source, std::size_t count, T *target) {
        if constexpr (std::is_trivially_copyable_v<T>) {
            if (count != 0)
                std::memcpy(static_cast<void *>(target), source, BytesOf(count));
            return target + count;
        } else {
            return std::uninitialized_copy_n(source, count, target);
        }
    }

    static void CopyOver(T const *source, std::size_t count, T *target) {
        if constexpr (std::is_trivially_copyable_v<T>) {
            if (count != 0)
                std::memmove(static_cast<void *>(target), source, count * sizeof(T));
        } else {
            std::copy_n(source, count, target);
        }
    }

    T *AppendZeroed(std::size_t count) {
        if constexpr (std::is_trivially_copyable_v<T>) {
            if (count != 0)
                std::memset(static_cast<void *>(m_last), 0, BytesOf(count));
            return m_last + count;
        } else {
            return std::uninitialized_value_construct_n(m_last, count);
        }
    }

    void AssignFrom(T const *source, std::size_t count) {
        std::size_t const size = Size();
        if (count == 0) {
            Clear();
        } else if (count <= size) {
            CopyOver(source, count, m_first);
            std::destroy(m_first + count, m_last);
            m_last = m_first + count;
        } else if (count <= Capacity()) {
            CopyOver(source, size, m_first);
            m_last = CopyConstruct(source + size, count - size, m_last);
        } else {
            MArray fresh;
            fresh.CopyIn(source, count);
            Swap(fresh);
        }
    }

    std::size_t GrownCapacity(std::size_t more) const {
        std::size_t const size = Size();
        std::size_t const capacity = Capacity();
        if (MaxCount() - size < more)
            RaiseTooLong();
        std::size_t const half = capacity / 2;
        std::size_t const grown = MaxCount() - half < capacity ? 0 : capacity + half;
        return std::max(grown, size + more);
    }

    [[gnu::noinline]] void Grow(std::size_t more) {
        std::size_t const capacity = GrownCapacity(more);
        std::size_t const size = Size();
        m_first = MoveToBlock(capacity);
        m_last = m_first + size;
        m_limit = m_first + capacity;
    }

    T *MoveToBlock(std::size_t capacity) {
        if constexpr (IsPlain()) {
            void *const block = std::realloc(static_cast<void *>(m_first), BytesOf(capacity));
            if (block == nullptr)
                throw std::bad_alloc();
            return static_cast<T *>(block);
        } else {
            T *const block = Allocate(capacity);
            try {
                MoveOrCopyTo(block);
            } catch (...) {
                Deallocate(block);
                throw;
            }
            std::destroy(m_first, m_last);
            Deallocate(m_first);
            return block;
        }
    }

    void MoveOrCopyTo(T *block) {
        if constexpr (std::is_nothrow_move_constructible_v<T> || !std::is_copy_constructible_v<T>)
            std::uninitialized_move(m_first, m_last, block);
        else
            std::uninitialized_copy(m_first, m_last, block);
    }

    /// A small plain value is read before the array grows: then it can be an element, and it need not have an address.
    static constexpr bool IsReadFirst() {
        return std::is_trivially_copyable_v<T> && std::is_copy_constructible_v<T> && sizeof(T) <= kReadFirstSize;
    }

    /// Bytes up to which a copy of a value costs no more than a reference to it.
    static constexpr std::size_t kReadFirstSize = 64;

    template <typename Value>
    void Append(Value &&value) {
        if constexpr (IsReadFirst()) {
            T const read = value;
            if (m_last == m_limit)
                Grow(1);
            std::construct_at(m_last, read);
        } else if (m_last == m_limit) {
            ConstructGrowing(std::forward<Value>(value));
        } else {
            std::construct_at(m_last, std::forward<Value>(value));
        }
        ++m_last;
    }

    /// The value may live in the block that growth is about to leave, so it is found again by its index.
    template <typename Value>
    [[gnu::noinline]] void ConstructGrowing(Value &&value) {
        T const *const address = std::addressof(value);
        if (!std::less<T const *>()(address, m_first) && std::less<T const *>()(address, m_last)) {
            std::ptrdiff_t const index = address - m_first;
            Grow(1);
            std::construct_at(m_last, static_cast<Value &&>(m_first[index]));
        } else {
            Grow(1);
            std::construct_at(m_last, std::forward<Value>(value));
        }
    }

    T *m_first = nullptr;
    T *m_last = nullptr;
    T *m_limit = nullptr;
};

} // namespace zvi
