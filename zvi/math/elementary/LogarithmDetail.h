#pragma once

#include "zvi/math/elementary/TwoPartDetail.h"

namespace zvi::lib::math {

/// The error of a logarithm; near 1, where no number of the table is added to the series, in parts of it.
inline constexpr double kLogarithmError = 0x1p-76;
inline constexpr double kLogarithmErrorNearOne = 0x1p-68;

/// Logarithms of finite numbers above 0.
/// P. T. P. Tang, "Table-driven implementation of the logarithm function in IEEE floating-point arithmetic", ACM
/// Transactions on Mathematical Software 16 (1990), with short reciprocals c after S. Gal and B. Bachelis, "An accurate
/// elementary mathematical library for the IEEE floating point standard", ibid. 17 (1991): x = 2^k z and r = c z - 1,
/// computed exactly, give log x = k log 2 - log c + r - r^2 / 2 + ...
class LogarithmSeries {
public:
    explicit LogarithmSeries(double x) {
        constexpr std::uint64_t kLeastMantissa = 0x3fe6a00000000000; // of z: 0.707
        constexpr std::uint64_t kExponentBits = std::uint64_t{0xfff} << 52;
        constexpr int kSubnormalShift = 54;
        bool const isSubnormal = x < 0x1p-1022;
        std::uint64_t const bits = BitsOf(isSubnormal ? x * 0x1p54 : x), above = bits - kLeastMantissa;
        std::int64_t const exponent = (static_cast<std::int64_t>(above) >> 52) - (isSubnormal ? kSubnormalShift : 0);
        auto const k = static_cast<double>(exponent);
        double const z = FromBits(bits - (above & kExponentBits)), zHead = OnGrid<26>(z);
        LogarithmPart const part = kLogarithmTable[above >> 44 & 255U];
        m_rest = QuickSum(part.reciprocal * zHead - 1.0, part.reciprocal * (z - zHead));
        m_head = k * kLog2Head + part.head; // exactly
        m_tail = k * kLog2Tail + part.tail;
    }

    /// With the rounding error of r and that of its square; not for numbers next to 1.
    Approximation Quick() const {
        constexpr double kError = 0x1p-60;
        TwoPart const sum = QuickSum(m_head, m_rest.head);
        return {sum.head, sum.tail + (m_tail + Beyond()), kError};
    }

    /// With that of the square alone.
    Approximation Middle() const {
        constexpr double kError = 0x1p-67;
        TwoPart const sum = QuickSum(m_head, m_rest.head);
        double const small = m_rest.tail - m_rest.tail * m_rest.head + m_tail;
        return {sum.head, sum.tail + (small + Beyond()), kError};
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
    /// -r^2 / 2 + r^3 / 3 - ...
    double Beyond() const {
        double const r = m_rest.head, square = r * r;
        double const high = (r * (1.0 / 7) - 1.0 / 6) - square * (1.0 / 8);
        return square * ((r * (1.0 / 3) - 0.5) + square * ((r * (1.0 / 5) - 1.0 / 4) + square * high));
    }

    TwoPart m_rest;        // r
    double m_head, m_tail; // k log 2 - log c
};

} // namespace zvi::lib::math
