#pragma once

#include "zvi/core/MArray.h"

#include <algorithm>
#include <cstddef>
#include <initializer_list>
#include <stdexcept>
#include <utility>

/// Growable array with `int` indices, for the interfaces of applications. An index outside the array raises
/// `std::out_of_range`, except at `operator[]`, which is unchecked. Copies are deep. A raised error leaves the
/// array as it was, unless it comes from the move of an element.
template <typename T>
class CArray {
public:
    /// The type of the elements.
    using value_type = T;

    /// No elements, no allocation.
    CArray() = default;
    /// Copies the values.
    CArray(std::initializer_list<T> values) : m_elements(values) {}

    /// Number of elements.
    int GetSize() const { return static_cast<int>(m_elements.Size()); }
    /// Number of elements, as `GetSize`.
    int GetCount() const { return GetSize(); }
    /// Whether there is no element.
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
        std::size_t const count = other.m_elements.Size();
        int const first = GetSize();
        m_elements.Reserve(count);
        OrCutBack([&] {
            for (std::size_t i = 0; i < count; ++i)
                m_elements.PushBack(other.m_elements[i]);
        });
        return first;
    }

    /// The element at `index`.
    T &GetAt(int index) { return m_elements.At(IndexOf(index)); }
    T const &GetAt(int index) const { return m_elements.At(IndexOf(index)); }
    /// Replaces the element at `index`.
    void SetAt(int index, T value) { m_elements.At(IndexOf(index)) = std::move(value); }
    /// The element at `index`, which must exist; unchecked but for an assertion.
    T &operator[](std::ptrdiff_t index) { return m_elements[static_cast<std::size_t>(index)]; }
    T const &operator[](std::ptrdiff_t index) const { return m_elements[static_cast<std::size_t>(index)]; }

    /// The first element; null for an array that never held one.
    T *GetData() { return m_elements.Data(); }
    T const *GetData() const { return m_elements.Data(); }

    /// Puts `count` copies of `value` in front of the element at `index`; an index behind the end lengthens the array,
    /// also for a count of 0.
    void InsertAt(int index, T value, int count = 1) {
        std::size_t const at = IndexOf(index);
        std::size_t const added = IndexOf(count);
        std::size_t const size = m_elements.Size();
        OrCutBack([&] {
            m_elements.Reserve((std::max)(at, size) - size + added);
            m_elements.Resize((std::max)(at, size));
            for (std::size_t i = 0; i < added; ++i)
                m_elements.PushBack(value);
        });
        if (at < size)
            std::rotate(m_elements.begin() + at, m_elements.begin() + size, m_elements.end());
    }

    /// Takes `count` elements out from `index` on.
    void RemoveAt(int index, int count = 1) {
        std::size_t const at = IndexOf(index);
        std::size_t const removed = IndexOf(count);
        if (at > m_elements.Size() || removed > m_elements.Size() - at)
            throw std::out_of_range("array range outside the array");
        if (removed == 0)
            return;
        std::move(m_elements.begin() + at + removed, m_elements.end(), m_elements.begin() + at);
        m_elements.Resize(m_elements.Size() - removed);
    }

    /// Drops all elements and the memory they took.
    void RemoveAll() { m_elements = zvi::MArray<T>(); }

    /// Walks from the first element to the last.
    T *begin() { return m_elements.begin(); }
    T *end() { return m_elements.end(); }
    T const *begin() const { return m_elements.begin(); }
    T const *end() const { return m_elements.end(); }

    /// Whether the elements are equal, one by one.
    friend bool operator==(CArray const &, CArray const &) = default;

    /// See `MArray::IsConsistent`.
    bool IsConsistent() const { return m_elements.IsConsistent(); }

private:
    /// Appends by `append`; when that raises an error, the array is cut back to its size.
    template <typename Append>
    void OrCutBack(Append append) {
        std::size_t const size = m_elements.Size();
        try {
            append();
        } catch (...) {
            while (m_elements.Size() > size)
                m_elements.RemoveAt(m_elements.Size() - 1);
            throw;
        }
    }

    static std::size_t IndexOf(int index) {
        if (index < 0)
            throw std::out_of_range("negative array index");
        return static_cast<std::size_t>(index);
    }

    zvi::MArray<T> m_elements;
};
