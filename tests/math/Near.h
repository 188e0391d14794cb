#pragma once

#include "tests/Rows.h"

#include <cmath>
#include <ostream>
#include <random>

namespace zvi::lib::test {

/// A point or vector that stands where an operation reads or writes adjacent doubles.
template <std::size_t N>
struct Coordinates {
    double values[N];

    operator double *() { return values; }
    operator double const *() const { return values; }
    friend bool operator==(Coordinates const &, Coordinates const &) = default;
    friend Coordinates operator*(double factor, Coordinates v) {
        for (double &value : v.values)
            value *= factor;
        return v;
    }
    friend Coordinates operator+(Coordinates a, Coordinates const &b) {
        for (std::size_t i = 0; i < N; ++i)
            a.values[i] += b.values[i];
        return a;
    }
    friend Coordinates operator-(Coordinates const &a, Coordinates const &b) { return a + -1.0 * b; }
    friend double Dot(Coordinates const &a, Coordinates const &b) {
        double sum = 0.0;
        for (std::size_t i = 0; i < N; ++i)
            sum += a.values[i] * b.values[i];
        return sum;
    }
    friend double Length(Coordinates const &v) { return std::sqrt(Dot(v, v)); }
    friend std::ostream &operator<<(std::ostream &out, Coordinates const &v) {
        for (double const value : v.values)
            out << value << ' ';
        return out;
    }
};

/// A point of a table is written as its coordinates.
template <std::size_t N>
void ReadCell(std::istream &words, Coordinates<N> &point) {
    for (double &value : point.values)
        ReadCell(words, value);
}

using Xy = Coordinates<2>;
using Xyz = Coordinates<3>;

inline Xyz Cross(Xyz const &a, Xyz const &b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

/// Expects the coordinates from `actual` on to be those of `expected` within `tol`.
template <std::size_t N>
void ExpectNear(double const *actual, Coordinates<N> const &expected, double tol = 1e-12) {
    for (std::size_t i = 0; i < N; ++i)
        EXPECT_NEAR(actual[i], expected[i], tol) << "coordinate " << i;
}

/// Numbers evenly spread from `low` to `high`, the same ones in every run.
class Random {
public:
    Random(unsigned int seed, double low, double high) : m_engine(seed), m_spread(low, high) {}

    double operator()() { return m_spread(m_engine); }
    Xy Plan() { return {(*this)(), (*this)()}; }
    Xyz Space() { return {(*this)(), (*this)(), (*this)()}; }

private:
    std::mt19937_64 m_engine;
    std::uniform_real_distribution<double> m_spread;
};

} // namespace zvi::lib::test
