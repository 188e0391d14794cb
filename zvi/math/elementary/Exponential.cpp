#include "zvi/math/elementary/AccurateDetail.h"
#include "zvi/math/elementary/Elementary.h"
#include "zvi/math/elementary/ExponentialDetail.h"

#include <cassert>
#include <limits>

namespace zvi::lib {

namespace math {

bool RoundsAtEnds(ScaledValue const &s, double error, double &value) {
    constexpr int kGreatestSubnormalExponent = -1024; // up to this one, the value is subnormal
    if (s.exponent > kGreatestNormalExponent) {
        bool const isDone = Rounds(Approximation{s.head, s.tail, error}, value);
        value = std::ldexp(value, s.exponent);
        return isDone;
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

} // namespace math

using namespace math;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
/// Above it e^x is infinite, and below the other one 0. A little more than that is computed.
constexpr double kGreatestExponent = 710.0;
constexpr double kLeastExponent = -746.0;
/// Above it the hyperbolic functions are infinite.
constexpr double kGreatestHyperbolic = 711.0;
/// Below it sinh x rounds to x: x^3 / 6 is less than a quarter of the last place.
constexpr double kSmall = 0x1p-27;
/// Below it sinh x is computed from the table around 0, since the difference of two powers would lose bits.
constexpr double kTableEnd = 22.5 / 64.0;
/// Above it e^-x is nothing beside e^x in the two parts of a value.
constexpr double kOnePowerOnly = 40.0;

/// The error of a sum or a difference of two powers, and, in parts of it, that of a value around 0.
constexpr double kSumError = 2.0 * kExponentialError;
constexpr double kSmallSinhError = 0x1p-65;

double ErrorOfSum(double x) {
    return x > kOnePowerOnly ? kExponentialError : kSumError;
}

/// e^x + sign e^-x for x from 0 on; half of it is the hyperbolic function.
inline ScaledValue SumOfPowers(double x, double sign) {
    assert(x >= 0.0);
    ExponentialSeries const series(x, 0.0);
    ScaledValue const up = series.Up();
    if (x > kOnePowerOnly)
        return up;
    ScaledValue const down = series.Down();
    double const scale = sign * PowerOfTwo(down.exponent - up.exponent);
    TwoPart const sum = QuickSum(up.head, scale * down.head);
    return {sum.head, sum.tail + (up.tail + scale * down.tail), up.exponent};
}

/// sinh(c + r) = sinh c cosh r + cosh c sinh r with c of the table, for x from [0, kTableEnd).
Approximation SmallSinh(double x) {
    assert(x >= 0.0 && x < kTableEnd);
    double const shifted = x * 64.0 + kToInteger;
    double const r = x - (shifted - kToInteger) * (1.0 / 64.0);
    HyperbolicPart const c = kHyperbolicTable[static_cast<unsigned>(LowInteger(shifted))];
    double const square = r * r, rHead = Split(r).head;
    double const sine = r * square * (1.0 / 6 + square * (1.0 / 120 + square * (1.0 / 5040)));
    double const cosine = 0.5 * square + square * square * (1.0 / 24 + square * (1.0 / 720));
    TwoPart const sum = QuickSum(c.sine.head, c.cosine.head * rHead);
    double const lower = (c.cosine.head + c.cosine.tail) * ((r - rHead) + sine) + c.cosine.tail * rHead +
                         (c.sine.tail + (c.sine.head + c.sine.tail) * cosine);
    return {sum.head, sum.tail + lower, kSmallSinhError * sum.head};
}

} // namespace

double Exp(double x) {
    if (!(x < kGreatestExponent && x > kLeastExponent))
        return x > 0.0 ? kInfinity : x < 0.0 ? 0.0 : x;
    double value = 0.0;
    return Rounds(ExponentialSeries(x, 0.0).Up(), kExponentialError, value) ? value : AccurateExp(x);
}

double Sinh(double x) {
    double const size = std::fabs(x);
    if (!(size >= kSmall && size < kGreatestHyperbolic))
        return size < kSmall ? x : x * kInfinity;
    double value = 0.0;
    bool isDone = false;
    if (size < kTableEnd)
        isDone = Rounds(SmallSinh(size), value);
    else {
        ScaledValue half = SumOfPowers(size, -1.0);
        --half.exponent;
        isDone = Rounds(half, ErrorOfSum(size), value);
    }
    return isDone ? std::copysign(value, x) : AccurateSinh(x);
}

double Cosh(double x) {
    double const size = std::fabs(x);
    if (!(size < kGreatestHyperbolic))
        return size * kInfinity;
    ScaledValue half = SumOfPowers(size, 1.0);
    --half.exponent;
    double value = 0.0;
    return Rounds(half, ErrorOfSum(size), value) ? value : AccurateCosh(x);
}

} // namespace zvi::lib
