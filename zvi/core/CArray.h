#pragma once

#include "zvi/core/MArray.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <stdexcept>
#include <utility>

/// Growable array with `int` indices, for the interfaces of applications. An index outside the array raises
/// `std::out_of_range`, except at `operator[]`, which is unchecked. Copies are deep.
template <typename T>
class CArray {
public:
    using value_type = T;

    CArray() = default;
    CArray(std::initializer_list<T> values) : m_elements(values) {}

    int GetSize() const { return static_cast<int>(m_elements.Size()); }
    int GetCount() const { return GetSize(); }
    bool IsEmpty() const { return m_elements.Empty(); }

    /// Sets the size; new elements are zero, or as their type constructs them.
    void SetSize(int count) { m_elements.Resize(IndexOf(count)); }

    /// Appends `value` and gives its index.
    int Add(T const &value) {
        m_elements.PushBack(value);
        return GetSize() - 1;
    }
    int Add(T &&value) {
        m_elements.PushBack(std::move(value));
        return GetSize() - 1;
    }

    /// Appends all elements of `other`, which may be this array, and gives the index of the first of them.
    int Append(CArray const &other) {
        int const first = GetSize();
        std::size_t const count = other.m_elements.Size();
        m_elements.Reserve(count);
        for (std::size_t i = 0; i < count; ++i)
            m_elements.PushBack(other.m_elements[i]);
        return first;
    }

    T &GetAt(int index) { return m_elements.At(IndexOf(index)); }
    T const &GetAt(int index) const { return m_elements.At(IndexOf(index)); }
    void SetAt(int index, T value) { m_elements.At(IndexOf(index)) = std::move(value); }
    T &operator[](std::ptrdiff_t index) { return m_elements.Data()[index]; }
    T const &operator[](std::ptrdiff_t index) const { return m_elements.Data()[index]; }

    /// The first element; null for an array that never held one.
    T *GetData() { return m_elements.Data(); }
    T const *GetData() const { return m_elements.Data(); }

    /// Puts `count` copies of `value` in front of the element at `index`; an index behind the end lengthens the array.
    void InsertAt(int index, T value, int count = 1) {
        std::size_t const at = IndexOf(index);
        std::size_t const added = IndexOf(count);
        std::size_t const size = m_elements.Size();
        m_elements.Resize(std::max(at, size) + added);
        if (at < size)
            std::move_backward(m_elements.begin() + at, m_elements.begin() + size, m_elements.end());
        std::fill_n(m_elements.begin() + at, added, value);
    }

    /// Takes `count` elements out from `index` on.
    void RemoveAt(int index, int count = 1) {
        std::size_t const at = IndexOf(index);
        std::size_t const removed = IndexOf(count);
        if (at > m_elements.Size() || removed > m_elements.Size() - at)
            throw std::out_of_range("array range outside the array");
        std::move(m_elements.begin() + at + removed, m_elements.end(), m_elements.begin() + at);
        m_elements.Resize(m_elements.Size() - removed);
    }

    /// Drops all elements and the memory they took.
    void RemoveAll() { m_elements = zvi::MArray<T>(); }

    T *begin() { return m_elements.begin(); }
    T *end() { return m_elements.end(); }
    T const *begin() const { return m_elements.begin(); }
    T const *end() const { return m_elements.end(); }

    friend bool operator==(CArray const &, CArray const &) = default;

private:
    static std::size_t IndexOf(int index) {
        if (index < 0)
            throw std::out_of_range("negative array index");
        return static_cast<std::size_t>(index);
    }

    zvi::MArray<T> m_elements;
};
