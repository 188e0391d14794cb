#pragma once

// The elementary functions as a list, and where their arguments are drawn from.

#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <array>
#include <bit>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
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
    char const *hard;  // arguments whose results are middles of two doubles, or among the nearest to one
    double unit = 1.0; // whose multiples are borders of tables, or quarter turns
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
        {"Sin",
         OfOne<Sin>,
         {angles},
         "0x1.cc595e47a3818p+2 -0x1.8f7b9cdb81282p+330 0x1.e0000000001c2p-20 0x1.598bae9e632f6p-7"
         " 0x1.fe767739d0f6dp-2 0x1.6ac5b262ca1ffp+849 -0x1.13526aa514f9ap+22",
         kQuarterTurn},
        {"Cos",
         OfOne<Cos>,
         {angles},
         "-0x1.74fd615c852cep+2 0x1.184daeb02fcd4p+3 0x1.8000000000009p-23 0x1.6ac5b262ca1ffp+849",
         kQuarterTurn},
        {"Tan", OfOne<Tan>, {angles}, "-0x1.e09235f2a0ab8p+1 -0x1.9d3a6b0d6d345p-3 0x1.dfffffffff1fp-22", kQuarterTurn},
        {"Asin",
         OfOne<Asin>,
         {{{-1, 1}, {-1e-3, 1e-3}, {0.999, 1}, {-0.1, 0.1}}},
         "0x1.f70c44a681b7ep-13 0x1.fffa985243eb1p-1 0x1.c373ff4aad79bp-14"},
        {"Acos",
         OfOne<Acos>,
         {{{-1, 1}, {-1e-3, 1e-3}, {0.999, 1}, {-1, -0.999}}},
         "-0x1.ffaa6a189ece6p-1 -0x1.ff964159dc0b9p-1 0x1.53ea6c7255e88p-4"},
        {"Atan",
         OfOne<Atan>,
         {{{-10, 10}, {-1, 1}, {-1e-3, 1e-3}, {-1e9, 1e9}}},
         "0x1.ad45d25f34c5bp-12 -0x1.d1e3124f1ac8p-3 0x1.62ff6a1682c25p-1"},
        {"Atan2",
         OfTwo<Atan2>,
         {first, second},
         "0x1.f212ec10c401bp-999 -0x1.041f875e1956ep-998, 0x1.b0940b4b7fae2p-11 -0x1.57fd1f35d4717p-28,"
         "5e-324 2, 1.5e-323 2, -0x1.fffffffffffffp-8 0x1.ffffffffffffep+0"},
        {"Exp",
         OfOne<Exp>,
         {{{-10, 10}, {-1e-3, 1e-3}, {-750, 710}, {-746, -708}}},
         "-0x1.2effffb97ba92p-46 -0x1.a76fa9896477p-9 0x1p-53 -0x1p-54 0x1.e4596526bf94dp-10"},
        {"Log", OfOne<Log>, {sizes}, "0x1.53b84db57eb65p-1022 0x1.fd59ff4ab20fp-1 0x1.62a88613629b6p+678"},
        {"Log10", OfOne<Log10>, {sizes}, "0x1.cd6e58e3d04c9p+8 0x1.13044be6c048fp-1020 1e22 1e-5"},
        {"Pow",
         OfTwo<Pow>,
         {{{0, 100}, {0.5, 2}, {0.999, 1.001}, {0, 1e300}, {0, 1e-307}},
          {{-10, 10}, {-1000, 1000}, {-7e5, 7e5}, {-1, 1}, {-1.05, 1.05}}},
         "0.5 -0x1.3eb1121d152f3p-16, 0x1.47e49a704944ap+994 0x1.4643edaa93244p-1,"
         "94906267 2, 208065 3, 2 -1074, -2 -1075"},
        {"Sinh", OfOne<Sinh>, {hyperbolic}, "0x1.5f3a15a33331ep-2 0x1.df2adc02d5152p-11 0x1.dfffffffffe3ep-20"},
        {"Cosh", OfOne<Cosh>, {hyperbolic}, "0x1.127d03a63660ap+2 -0x1.a56669cd7202p-14 0x1.7fffffffffff7p-23"},
        {"Hypot",
         OfTwo<Hypot>,
         {first, second},
         "-0x1.8345779a4f8d6p+6 0x1.f55ec8624c6fcp+5, 0x1.3325574788078p+5 -0x1.bc1c90f8ffc48p+3,"
         "-3e-320 4e-320, 6500000180000001 7200000080000000"},
        {"Hypot3",
         [](Arguments const &a) { return Hypot(a[0], a[1], a[2]); },
         {first, second, first},
         "2 3 6, 6500000180000001 7200000080000000 1e-300"},
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

/// The numbers of a text, with blanks or commas between them.
inline std::vector<double> NumbersOf(char const *text) {
    std::vector<double> numbers;
    for (char *end = nullptr; *text != '\0'; text = end + std::strspn(end, ", "))
        numbers.push_back(std::strtod(text, &end));
    return numbers;
}

/// Calls `visit` with every combination of zeros, infinities, NaN and other ends of what a function takes, with its
/// hard arguments, and with some that are drawn.
template <typename Visit>
void VisitArguments(Elementary const &of, std::uint64_t seed, std::uint64_t drawn, Visit visit) {
    std::vector<double> const ends = NumbersOf(
        "nan inf 0x1.fffffffffffffp1023 0x1p53 711 710.48 709.79 6 3 2 1.5 1 0x1.5555555555555p-2 5e-324 0 -0 -5e-324"
        " -0.5 -1 -2 -3 -8 -745.13 -745.14 -1075 -0x1p53 -0x1.fffffffffffffp1023 -inf");
    for (double const x : ends)
        for (double const y : ends)
            for (double const z : {0.0, -2.0, ends[0], ends[1]})
                visit(Arguments{x, y, z});
    std::vector<double> const hard = NumbersOf(of.hard);
    for (std::size_t i = 0; i < hard.size(); i += of.ranges.size()) {
        Arguments arguments{};
        std::copy_n(&hard[i], of.ranges.size(), arguments.begin());
        visit(arguments);
    }
    ArgumentSource source(seed);
    for (std::uint64_t i = 0; i < drawn; ++i)
        visit(source.Next(of, i));
}

inline bool IsSame(double a, double b) {
    return std::bit_cast<std::uint64_t>(a) == std::bit_cast<std::uint64_t>(b) || (std::isnan(a) && std::isnan(b));
}

} // namespace zvi::lib::test
