#pragma once

#include "zvi/math/elementary/TwoPartDetail.h"

#include <cassert>

namespace zvi::lib::math {

/// (head + tail) times 2^exponent, with the head from [0.99, 2.01).
struct ScaledValue {
    double head, tail;
    int exponent;
};

/// The exponents of numbers from [0.99, 2.01) that stay normal.
inline constexpr int kLeastNormalExponent = -1021;
inline constexpr int kGreatestNormalExponent = 1022;

/// By how much a ScaledValue of e^(x + tail) may be wrong, not counting its exponent.
inline constexpr double kExponentialError = 0x1.8p-67;

/// e^(x + tail), |x| < 1000, and its reciprocal; |tail| is less than 2^-52 |x|, or less than 2^-7 with an x that is a
/// multiple of 2^-49.
/// P. T. P. Tang, "Table-driven implementation of the exponential function in IEEE floating-point arithmetic", ACM
/// Transactions on Mathematical Software 15 (1989), with products that are exact where they count: x is a number of
/// steps of log 2 / 128 and a rest r; e^x is 2^(steps / 128) (1 + r + r^2 / 2 + ...).
class ExponentialSeries {
public:
    ExponentialSeries(double x, double tail) {
        assert(std::fabs(x) < 1000.0 && std::fabs(tail) < 0x1p-7);
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

/// As the other one, where the result may be subnormal or infinite.
bool RoundsAtEnds(ScaledValue const &s, double error, double &value);

/// As `Rounds`, for a value whose error is at most `error`; also where the value is subnormal.
inline bool Rounds(ScaledValue const &s, double error, double &value) {
    if (s.exponent < kLeastNormalExponent || s.exponent > kGreatestNormalExponent) [[unlikely]]
        return RoundsAtEnds(s, error, value);
    bool const isDone = Rounds(Approximation{s.head, s.tail, error}, value);
    value *= PowerOfTwo(s.exponent);
    return isDone;
}

} // namespace zvi::lib::math
