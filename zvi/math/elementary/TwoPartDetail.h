#pragma once

// Numbers held as the sum of two doubles, and the rounding test. All of it needs round-to-nearest and no contraction;
// fused multiply-add is not used, so that every processor gives the same bits.
// T. J. Dekker, "A floating-point technique for extending the available precision", Numerische Mathematik 18 (1971);
// D. E. Knuth, "The Art of Computer Programming" 2, section 4.2.2.

#include "zvi/math/elementary/TablesDetail.h"

#include <bit>
#include <cassert>
#include <cmath>
#include <cstdint>

namespace zvi::lib::math {

/// a + b in two parts, exactly; requires |a| >= |b|, a = 0, or a and b multiples of one number that both are less than
/// 2^53 times of.
inline TwoPart QuickSum(double a, double b) {
    double const sum = a + b;
    return {sum, b - (sum - a)};
}

/// a + b in two parts, exactly.
inline TwoPart Sum(double a, double b) {
    double const sum = a + b;
    double const fromB = sum - a;
    return {sum, (a - (sum - fromB)) + (b - fromB)};
}

/// a, |a| below 2^990, in two parts of 26 bits each.
inline TwoPart Split(double a) {
    assert(std::fabs(a) < 0x1p990);
    constexpr double kSplitter = 0x1p27 + 1.0;
    double const scaled = kSplitter * a;
    double const head = scaled - (scaled - a);
    return {head, a - head};
}

inline std::uint64_t BitsOf(double x) {
    return std::bit_cast<std::uint64_t>(x);
}
inline double FromBits(std::uint64_t bits) {
    return std::bit_cast<double>(bits);
}

/// As Split, of any number and quicker; the tail has up to 27 bits, and the sign of the head.
inline TwoPart CutInTwo(double a) {
    constexpr std::uint64_t kCutOff = (std::uint64_t{1} << 27) - 1;
    double const head = FromBits(BitsOf(a) & ~kCutOff);
    return {head, a - head};
}

/// The multiple of 2^-Bits next to a, |a| below 2^(51 - Bits).
template <int Bits>
double OnGrid(double a) {
    constexpr double kShift = 1.5 * static_cast<double>(std::uint64_t{1} << (52 - Bits));
    assert(std::fabs(a) < kShift / 3.0);
    return (a + kShift) - kShift;
}

/// a * b in two parts, exactly unless that leaves the range of normal numbers.
inline TwoPart Product(double a, double b) {
    TwoPart const x = Split(a), y = Split(b);
    double const product = a * b;
    return {product, ((x.head * y.head - product) + x.head * y.tail + x.tail * y.head) + x.tail * y.tail};
}

/// The fast phase of a function: head + tail is its value, but for an error of at most `error`. The tail may be 2^-7 of
/// the head.
struct Approximation {
    double head, tail, error;
};

/// Whether every number that the approximation allows rounds to the same double, which `value` then is.
/// A. Ziv, "Fast evaluation of elementary mathematical functions with correctly rounded last bit", ACM Transactions on
/// Mathematical Software 17 (1991).
inline bool Rounds(Approximation const &a, double &value) {
    value = a.head + (a.tail - a.error);
    return value == a.head + (a.tail + a.error);
}

/// 2^exponent for a normal result.
inline double PowerOfTwo(int exponent) {
    assert(exponent >= -1022 && exponent <= 1023);
    return FromBits(static_cast<std::uint64_t>(exponent + 1023) << 52);
}

/// Added to a number below 2^51 and taken away again, it rounds to the nearest integer.
inline constexpr double kToInteger = 0x1.8p52;

/// The integer in the lowest bits of x + kToInteger.
inline int LowInteger(double shifted) {
    return static_cast<int>(static_cast<std::uint32_t>(BitsOf(shifted)));
}

} // namespace zvi::lib::math
