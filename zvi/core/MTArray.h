#pragma once

#include <cstddef>
#include <cstdint>

namespace zvi {

/// A view of `Size()` adjacent elements that somebody else owns. Array-reading operations accept it when the caller's
/// storage is not an `MArray`. A count of 0 is legal with any pointer; a negative count holds nothing to walk over.
template <typename T>
class MTArray {
public:
    /// Views nothing.
    MTArray() = default;

    /// Views the `count` elements from `data` on. The view is valid as long as they are.
    MTArray(T *data, std::int32_t count) : m_data(data), m_count(count) {}

    /// The count as it was given.
    std::int32_t Size() const { return m_count; }
    /// Whether there is nothing to walk over.
    bool Empty() const { return m_count <= 0; }
    /// The address as it was given.
    T *Data() const { return m_data; }

    /// The element at `index`, unchecked.
    T &operator[](std::ptrdiff_t index) const { return m_data[index]; }

    /// Walks over the elements.
    T *begin() const { return m_data; }
    T *end() const { return Empty() ? m_data : m_data + m_count; }

private:
    T *m_data = nullptr;
    std::int32_t m_count = 0;
};

} // namespace zvi
