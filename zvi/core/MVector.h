#pragma once

#include <cassert>
#include <concepts>
#include <cstddef>

namespace zvi {

/// A vector of `N` numbers with the memory image of `N` adjacent `T` and nothing else, so that `Data()` (or the address
/// of element 0) serves wherever a bare array of coordinates is asked for. All arithmetic is element by element.
template <typename T, std::size_t N>
class MVector {
    static_assert(N > 0);

public:
    /// All elements zero.
    constexpr MVector() = default;

    /// Exactly `N` values, in order.
    template <typename... Values>
    requires(sizeof...(Values) == N && (std::convertible_to<Values, T> && ...)) constexpr explicit(N == 1)
        MVector(Values... values)
        : m_values{static_cast<T>(values)...} {}

    /// Copies the `N` values from `values` on.
    static constexpr MVector FromArray(T const *values) {
        MVector result;
        for (std::size_t i = 0; i < N; ++i)
            result.m_values[i] = values[i];
        return result;
    }

    /// The count of numbers, `N`.
    static constexpr std::size_t Size() { return N; }

    /// The element at `index`, which must be below `N`; unchecked but for an assertion.
    constexpr T &operator[](std::size_t index) {
        assert(index < N);
        return m_values[index];
    }
    constexpr T const &operator[](std::size_t index) const {
        assert(index < N);
        return m_values[index];
    }

    /// The first of the adjacent numbers.
    constexpr T *Data() { return m_values; }
    constexpr T const *Data() const { return m_values; }
    /// Walks over the numbers.
    constexpr T *begin() { return m_values; }
    constexpr T const *begin() const { return m_values; }
    constexpr T *end() { return m_values + N; }
    constexpr T const *end() const { return m_values + N; }

    /// Adds element by element.
    constexpr MVector &operator+=(MVector const &other) {
        for (std::size_t i = 0; i < N; ++i)
            m_values[i] = static_cast<T>(m_values[i] + other.m_values[i]);
        return *this;
    }

    /// Subtracts element by element.
    constexpr MVector &operator-=(MVector const &other) {
        for (std::size_t i = 0; i < N; ++i)
            m_values[i] = static_cast<T>(m_values[i] - other.m_values[i]);
        return *this;
    }

    /// Each element times `factor`.
    constexpr MVector &operator*=(T factor) {
        for (T &value : m_values)
            value = static_cast<T>(value * factor);
        return *this;
    }

    /// Each element divided by `divisor`; a zero divisor is not guarded.
    constexpr MVector &operator/=(T divisor) {
        for (T &value : m_values)
            value = static_cast<T>(value / divisor);
        return *this;
    }

    /// The sum; the others are the difference, and product and quotient with a number.
    friend constexpr MVector operator+(MVector left, MVector const &right) { return left += right; }
    friend constexpr MVector operator-(MVector left, MVector const &right) { return left -= right; }
    friend constexpr MVector operator*(MVector vector, T factor) { return vector *= factor; }
    friend constexpr MVector operator*(T factor, MVector vector) { return vector *= factor; }
    friend constexpr MVector operator/(MVector vector, T divisor) { return vector /= divisor; }

    /// Each element with the other sign.
    constexpr MVector operator-() const {
        MVector result;
        for (std::size_t i = 0; i < N; ++i)
            result.m_values[i] = static_cast<T>(-m_values[i]);
        return result;
    }

    /// Exact comparison, element by element.
    friend constexpr bool operator==(MVector const &, MVector const &) = default;

private:
    T m_values[N]{};
};

} // namespace zvi
