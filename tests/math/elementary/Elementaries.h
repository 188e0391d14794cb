#pragma once

// The elementary functions as a list, and where their arguments are drawn from.

#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <numbers>
#include <random>
#include <vector>

namespace zvi::lib::test {

using Arguments = std::array<double, 3>;

/// A function, and for each of its arguments ranges of our use and beyond it, which are taken in turn.
struct Elementary {
    struct Range {
        double from, to;
    };

    char const *name;
    double (*ours)(Arguments const &);
    std::vector<std::vector<Range>> ranges;
    double unit = 1.0; // its multiples are hard: middles of two doubles, borders of tables, quarter turns
};

template <double (*Function)(double)>
double OfOne(Arguments const &a) {
    return Function(a[0]);
}

template <double (*Function)(double, double)>
double OfTwo(Arguments const &a) {
    return Function(a[0], a[1]);
}

inline std::vector<Elementary> Elementaries() {
    constexpr double kHuge = 1e308, kQuarterTurn = std::numbers::pi / 2;
    std::vector<Elementary::Range> const angles = {{-10, 10}, {-1e-3, 1e-3}, {-2e5, 2e5}, {-kHuge, kHuge}};
    std::vector<Elementary::Range> const sizes = {{0, 1000}, {0.99, 1.01}, {0.5, 2}, {0, kHuge}, {0, 1e-307}};
    std::vector<Elementary::Range> const hyperbolic = {{-10, 10}, {-0.4, 0.4}, {-1e-3, 1e-3}, {-711, 711}};
    std::vector<Elementary::Range> const first = {{-100, 100}, {-1, 1}, {-kHuge, kHuge}, {-1e-300, 1e-300}};
    std::vector<Elementary::Range> const second = {{-100, 100}, {-1e6, 1e6}, {-kHuge, kHuge}, {-1e-300, 1e-300}};
    return {
        {"Sin", OfOne<Sin>, {angles}, kQuarterTurn},
        {"Cos", OfOne<Cos>, {angles}, kQuarterTurn},
        {"Tan", OfOne<Tan>, {angles}, kQuarterTurn},
        {"Asin", OfOne<Asin>, {{{-1, 1}, {-1e-3, 1e-3}, {0.999, 1}, {-0.01, 0.01}}}},
        {"Acos", OfOne<Acos>, {{{-1, 1}, {-1e-3, 1e-3}, {0.999, 1}, {-1, -0.999}}}},
        {"Atan", OfOne<Atan>, {{{-10, 10}, {-1, 1}, {-1e-3, 1e-3}, {-1e9, 1e9}}}},
        {"Atan2", OfTwo<Atan2>, {first, second}},
        {"Exp", OfOne<Exp>, {{{-10, 10}, {-1e-3, 1e-3}, {-750, 710}, {-746, -708}}}},
        {"Log", OfOne<Log>, {sizes}},
        {"Log10", OfOne<Log10>, {sizes}},
        {"Pow",
         OfTwo<Pow>,
         {{{0, 100}, {0.5, 2}, {0.999, 1.001}, {0, 1e300}, {0, 1e-307}},
          {{-10, 10}, {-1000, 1000}, {-7e5, 7e5}, {-1, 1}, {-1.05, 1.05}}}},
        {"Sinh", OfOne<Sinh>, {hyperbolic}},
        {"Cosh", OfOne<Cosh>, {hyperbolic}},
        {"Hypot", OfTwo<Hypot>, {first, second}},
        {"Hypot3", [](Arguments const &a) { return Hypot(a[0], a[1], a[2]); }, {first, second, first}},
    };
}

/// Draws from a range evenly, with evenly spread exponents, or a few places beside short multiples of the unit.
class ArgumentSource {
public:
    explicit ArgumentSource(std::uint64_t seed) : m_random(seed) {}

    /// The next arguments; `index` chooses the ranges.
    Arguments Next(Elementary const &of, std::size_t index) {
        Arguments next{};
        for (std::size_t i = 0; i < of.ranges.size(); ++i)
            next[i] = Drawn(of.ranges[i][index % of.ranges[i].size()], of.unit);
        return next;
    }

private:
    double Drawn(Elementary::Range range, double unit) {
        double const share = Unit();
        double x = range.from * (1.0 - share) + range.to * share;
        std::uint64_t const way = m_random() % 6;
        if (way <= 2)
            x = std::ldexp(x, -static_cast<int>(m_random() % (std::fabs(x) > 1e300 ? 2040 : 60)));
        if (way == 2 || way == 3)
            x = Nudged(x, unit);
        return std::clamp(x, range.from, range.to);
    }

    double Nudged(double x, double unit) {
        int const lost = 26 + static_cast<int>(m_random() % 27);
        auto const multiple = std::bit_cast<double>(std::bit_cast<std::uint64_t>(x / unit) >> lost << lost);
        return std::bit_cast<double>(std::bit_cast<std::uint64_t>(multiple * unit) + m_random() % 5 - 2);
    }

    double Unit() { return static_cast<double>(m_random() >> 11) * 0x1p-53; }

    std::mt19937_64 m_random;
};

inline bool IsSame(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) || (std::isnan(a) && std::isnan(b));
}

} // namespace zvi::lib::test
