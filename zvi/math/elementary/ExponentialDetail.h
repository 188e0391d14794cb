#pragma once

#include "zvi/math/elementary/TwoPartDetail.h"

namespace zvi::lib::math {

/// (head + tail) times 2^exponent, with the head from [0.99, 2.01).
struct ScaledValue {
    double head, tail;
    int exponent;
};

/// The exponents of numbers from [0.99, 2.01) that stay normal.
inline constexpr int kLeastNormalExponent = -1021;
inline constexpr int kGreatestNormalExponent = 1022;
/// Up to this one, such a number is subnormal.
inline constexpr int kGreatestSubnormalExponent = -1024;

/// By how much a ScaledValue of e^(x + tail) may be wrong, not counting its exponent.
inline constexpr double kExponentialError = 0x1.8p-67;

/// e^(x + tail), |x| < 1000, |tail| < 2^-52 |x|, and its reciprocal.
/// P. T. P. Tang, "Table-driven implementation of the exponential function in IEEE floating-point arithmetic", ACM
/// Transactions on Mathematical Software 15 (1989), with products that are exact where they count: x is a number of
/// steps of log 2 / 128 and a rest r; e^x is 2^(steps / 128) (1 + r + r^2 / 2 + ...).
class ExponentialSeries {
public:
    ExponentialSeries(double x, double tail) {
        double const shifted = x * kStepsPerUnit + kToInteger;
        double const steps = shifted - kToInteger;
        m_steps = LowInteger(shifted);
        TwoPart const rest = QuickSum(x - steps * kStepHead, tail - steps * kStepTail);
        double const r = rest.head, square = r * r;
        m_head = OnGrid<34>(r);
        m_tail = (r - m_head) + rest.tail;
        m_even = square * (1.0 / 2 + square * (1.0 / 24 + square * (1.0 / 720)));
        m_odd = r * square * (1.0 / 6 + square * (1.0 / 120));
    }

    ScaledValue Up() const { return Value(m_steps, m_head, m_even + (m_odd + m_tail)); }
    ScaledValue Down() const { return Value(-m_steps, -m_head, m_even - (m_odd + m_tail)); }

private:
    static ScaledValue Value(int steps, double head, double tail) {
        TwoPart const power = kExponentialTable[static_cast<unsigned>(steps) & 127U];
        TwoPart const sum = QuickSum(power.head, power.head * head);
        return {sum.head, sum.tail + (power.tail + ((power.head + power.tail) * tail + power.tail * head)), steps >> 7};
    }

    int m_steps;
    double m_head, m_tail;
    double m_even, m_odd; // r^2 / 2 + r^4 / 24 + ... and r^3 / 6 + ...
};

/// As `Rounds`, for a value whose error is at most `error`; also where the value is subnormal.
inline bool Rounds(ScaledValue const &s, double error, double &value) {
    if (s.exponent >= kLeastNormalExponent) {
        if (!Rounds(Approximation{s.head, s.tail, error}, value))
            return false;
        value = s.exponent <= kGreatestNormalExponent ? value * PowerOfTwo(s.exponent) : std::ldexp(value, s.exponent);
        return true;
    }
    if (s.exponent > kGreatestSubnormalExponent)
        return false; // subnormal or not
    // The least subnormal number, as it is scaled here, is the last place of `shift`.
    double const unit = std::ldexp(1.0, -1074 - s.exponent), shift = 1.5 * 0x1p52 * unit;
    double const slack = error + 0x1p-51 * unit;
    double const high = shift + s.head, low = (s.head - (high - shift)) + s.tail;
    value = high + (low - slack);
    if (value != high + (low + slack))
        return false;
    value = std::ldexp(value - shift, s.exponent);
    return true;
}

} // namespace zvi::lib::math
