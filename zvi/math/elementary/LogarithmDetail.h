#pragma once

#include "zvi/math/elementary/TwoPartDetail.h"

#include <cassert>

namespace zvi::lib::math {

/// The error of a logarithm; near 1, where no number of the table is added to the series, in parts of it.
inline constexpr double kLogarithmError = 0x1p-76;
inline constexpr double kLogarithmErrorNearOne = 0x1p-68;
/// The error of the quick phase, in parts of r^2 and of k log 2 - log c. Of what is beyond r, about r^2 / 2, the
/// roundings of r^2, of its factor (2^-54 each of three times, in about 1/2) and of the product are 5 2^-53, the
/// polynomial is wrong by 2^-54, and adding it and the rounding test round twice; the product of r and the tail of r,
/// left out, is less than 2^-53 r^2: 4.7 2^-53 r^2 in all. The tails of k log 2 and log c are less than (|k| + 1) 2^-43
/// and wrong by 2^-53 of that, rounded four times; k log 2 - log c is at least |k| / 3, or 2^-9.
inline constexpr double kQuickLogarithmError = 0x1.4p-51;
inline constexpr double kQuickLogarithmTailError = 0x1p-84;

/// Whether x is normal, above 0 and finite.
inline bool IsPositiveAndNormal(double x) {
    constexpr std::uint64_t kLeast = std::uint64_t{1} << 52, kEnd = std::uint64_t{0x7ff} << 52;
    return BitsOf(x) - kLeast < kEnd - kLeast;
}

/// Logarithms of finite numbers above 0.
/// P. T. P. Tang, "Table-driven implementation of the logarithm function in IEEE floating-point arithmetic", ACM
/// Transactions on Mathematical Software 16 (1990), with short reciprocals c after S. Gal and B. Bachelis, "An accurate
/// elementary mathematical library for the IEEE floating point standard", ibid. 17 (1991): x = 2^k z and r = c z - 1,
/// computed exactly, give log x = k log 2 - log c + r - r^2 / 2 + ...
class LogarithmSeries {
public:
    /// Of x 2^exponent; x is normal, above 0 and finite.
    explicit LogarithmSeries(double x, int exponent = 0) {
        assert(IsPositiveAndNormal(x));
        constexpr std::uint64_t kLeastMantissa = 0x3fe6a00000000000; // of z: 0.707
        constexpr std::uint64_t kExponentBits = std::uint64_t{0xfff} << 52;
        std::uint64_t const bits = BitsOf(x), above = bits - kLeastMantissa;
        auto const k = static_cast<double>((static_cast<std::int64_t>(above) >> 52) + exponent);
        TwoPart const z = CutInTwo(FromBits(bits - (above & kExponentBits)));
        LogarithmPart const part = kLogarithmTable[above >> 44 & 255U];
        m_rest = QuickSum(part.reciprocal * z.head - 1.0, part.reciprocal * z.tail);
        m_head = k * kLog2Head + part.head; // exactly
        m_tail = k * kLog2Tail + part.tail;
    }

    /// In double precision but for the two parts of the sum.
    Approximation Quick() const {
        double const r = m_rest.head, square = r * r;
        double const high =
            (kLogarithmFactor4 + r * kLogarithmFactor5) + square * (kLogarithmFactor6 + r * kLogarithmFactor7);
        double const beyond = square * ((kLogarithmFactor2 + r * kLogarithmFactor3) + square * high);
        TwoPart const sum = QuickSum(m_head, r);
        return {sum.head, (sum.tail + (m_rest.tail + m_tail)) + beyond,
                kQuickLogarithmError * square + kQuickLogarithmTailError * std::fabs(m_head)};
    }

    /// Head and tail are apart as far as they can be.
    Approximation Value() const {
        double const r = m_rest.head, square = r * r;
        double const rHead = OnGrid<33>(r), rTail = r - rHead;
        double const squareHead = -0.5 * rHead * rHead, squareTail = -0.5 * rTail * (r + rHead);
        double const high = (1.0 / 7 - r * (1.0 / 8)) + square * (1.0 / 9);
        double const beyond =
            r * square * ((1.0 / 3 - r * (1.0 / 4)) + square * ((1.0 / 5 - r * (1.0 / 6)) + square * high));

        TwoPart const first = QuickSum(m_head, r), second = QuickSum(first.head, squareHead);
        double const lower = (m_rest.tail - m_rest.tail * r) + (squareTail + beyond) + m_tail;
        TwoPart const sum = QuickSum(second.head, first.tail + second.tail + lower);
        return {sum.head, sum.tail, m_head == 0.0 ? kLogarithmErrorNearOne * std::fabs(sum.head) : kLogarithmError};
    }

private:
    TwoPart m_rest;        // r
    double m_head, m_tail; // k log 2 - log c
};

inline constexpr double kLeastNormal = 0x1p-1022;

/// Of x, finite and above 0.
inline LogarithmSeries LogarithmOf(double x) {
    return x < kLeastNormal ? LogarithmSeries(x * 0x1p54, -54) : LogarithmSeries(x);
}

} // namespace zvi::lib::math
