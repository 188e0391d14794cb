#pragma once

// The elementary functions as a list, and where their arguments are drawn from.

#include "zvi/math/elementary/Elementary.h"

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>
#include <vector>

namespace zvi::lib::test {

/// A function of one argument, or of two, and arguments of our use and beyond it.
struct Elementary {
    struct Range {
        double from, to;
    };

    char const *name;
    double (*ours)(double, double);
    std::vector<Range> first;
    std::vector<Range> second = {};
};

inline std::vector<Elementary> Elementaries() {
    constexpr double kHuge = 1e308;
    return {
        {"Sin", [](double x, double) { return Sin(x); }, {{-10, 10}, {-1e-3, 1e-3}, {-2e5, 2e5}, {-kHuge, kHuge}}},
        {"Cos", [](double x, double) { return Cos(x); }, {{-10, 10}, {-1e-3, 1e-3}, {-2e5, 2e5}, {-kHuge, kHuge}}},
        {"Tan", [](double x, double) { return Tan(x); }, {{-10, 10}, {-1e-3, 1e-3}, {-2e5, 2e5}, {-kHuge, kHuge}}},
        {"Asin", [](double x, double) { return Asin(x); }, {{-1, 1}, {-1e-3, 1e-3}, {0.999, 1}}},
        {"Acos", [](double x, double) { return Acos(x); }, {{-1, 1}, {-1e-3, 1e-3}, {0.999, 1}, {-1, -0.999}}},
        {"Atan", [](double x, double) { return Atan(x); }, {{-10, 10}, {-1, 1}, {-1e-3, 1e-3}, {-1e9, 1e9}}},
        {"Atan2",
         [](double y, double x) { return Atan2(y, x); },
         {{-100, 100}, {-1e-3, 1e-3}, {-kHuge, kHuge}, {-1e-300, 1e-300}},
         {{-100, 100}, {-1e3, 1e3}, {-kHuge, kHuge}, {-1e-300, 1e-300}}},
        {"Exp", [](double x, double) { return Exp(x); }, {{-10, 10}, {-1e-3, 1e-3}, {-750, 710}, {-746, -708}}},
        {"Log", [](double x, double) { return Log(x); }, {{0, 1000}, {0.99, 1.01}, {0, kHuge}, {0, 1e-307}}},
        {"Log10", [](double x, double) { return Log10(x); }, {{0, 1000}, {0.99, 1.01}, {0, kHuge}, {0, 1e-307}}},
        {"Pow",
         [](double x, double y) { return Pow(x, y); },
         {{0, 100}, {0.5, 2}, {0.999, 1.001}, {0, 1e300}, {0, 1e-307}},
         {{-10, 10}, {-1000, 1000}, {-7e5, 7e5}, {-1, 1}, {-1.05, 1.05}}},
        {"Sinh", [](double x, double) { return Sinh(x); }, {{-10, 10}, {-0.4, 0.4}, {-1e-3, 1e-3}, {-711, 711}}},
        {"Cosh", [](double x, double) { return Cosh(x); }, {{-10, 10}, {-0.4, 0.4}, {-1e-3, 1e-3}, {-711, 711}}},
        {"Hypot",
         [](double x, double y) { return Hypot(x, y); },
         {{-100, 100}, {-1, 1}, {-kHuge, kHuge}, {-1e-300, 1e-300}},
         {{-100, 100}, {-1e6, 1e6}, {-kHuge, kHuge}, {-1e-300, 1e-300}}},
    };
}

/// Draws from a range evenly, or, one time in three, with evenly spread exponents.
class ArgumentSource {
public:
    explicit ArgumentSource(std::uint64_t seed) : m_random(seed) {}

    double Next(Elementary::Range range) {
        double const share = Unit(), even = range.from * (1.0 - share) + range.to * share;
        if (m_random() % 3 != 0)
            return even;
        int const exponents = std::fabs(even) > 1e300 ? 2040 : 60;
        double const spread = std::ldexp(even, -static_cast<int>(m_random() % static_cast<unsigned>(exponents)));
        return std::fmin(std::fmax(spread, range.from), range.to);
    }

private:
    double Unit() { return static_cast<double>(m_random() >> 11) * 0x1p-53; }

    std::mt19937_64 m_random;
};

inline bool IsSame(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) || (std::isnan(a) && std::isnan(b));
}

} // namespace zvi::lib::test
