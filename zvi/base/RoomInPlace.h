#pragma once

#include <algorithm>
#include <cassert>
#include <cstddef>
#include <memory>
#include <type_traits>

namespace zvi::lib::base {

/// Room for a number of plain values: within the object itself while `inPlace` are enough, else in memory of its own.
/// What nobody has stored is undefined. For short texts and stacks, most of which then need no memory at all.
template <typename T, std::size_t inPlace>
class RoomInPlace {
    static_assert(std::is_trivially_copyable_v<T>);

public:
    explicit RoomInPlace(std::size_t capacity = inPlace) { Grow(capacity, 0); }
    RoomInPlace(RoomInPlace const &) = delete;
    RoomInPlace &operator=(RoomInPlace const &) = delete;

    /// Makes room for `capacity` values. The first `used` ones of those that there is room for, which are all that are
    /// kept, may move. When the memory cannot be had, nothing changes.
    void Grow(std::size_t capacity, std::size_t used) {
        assert(used <= m_capacity);
        if (capacity <= m_capacity)
            return;
        auto spill = std::make_unique_for_overwrite<T[]>(capacity);
        std::copy_n(m_values, used, spill.get());
        m_spill = std::move(spill);
        m_values = m_spill.get();
        m_capacity = capacity;
    }

    std::size_t Capacity() const { return m_capacity; }
    T *Data() { return m_values; }
    T const *Data() const { return m_values; }
    /// The value at a place below the capacity.
    T &operator[](std::size_t i) {
        assert(i < m_capacity);
        return m_values[i];
    }
    T const &operator[](std::size_t i) const {
        assert(i < m_capacity);
        return m_values[i];
    }

private:
    std::size_t m_capacity = inPlace;
    T *m_values = m_inPlace;
    std::unique_ptr<T[]> m_spill;
    T m_inPlace[inPlace];
};

} // namespace zvi::lib::base
