#include "zvi/math/elementary/AccurateDetail.h"

#include "zvi/base/Index.h"
#include "zvi/math/elementary/QuarterTurnsDetail.h"
#include "zvi/math/elementary/WideFloatDetail.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <utility>

namespace zvi::lib::math {

namespace {

/// A term of a series that is so many bits smaller than the sum ends it.
constexpr int kSeriesBits = 260;

bool IsNegligible(WideFloat const &term, WideFloat const &sum) {
    return term.IsZero() || term.Exponent() < sum.Exponent() - kSeriesBits;
}

WideFloat Constant(WideFloat::Limbs const &limbs, int exponent) {
    return {limbs, exponent};
}

WideFloat ValueOf(Approximation const &near) {
    return WideFloat(near.head) + near.tail;
}

/// e^x, by the series of a 256th of what is left of x after whole powers of two.
WideFloat Exponential(WideFloat const &x) {
    constexpr int kHalvings = 8;
    double const power = std::floor(x.Rounded() * (kStepsPerUnit / 128.0) + 0.5);
    WideFloat const rest = (x - Constant(kWideLog2, 0) * power).Scaled(-kHalvings);
    WideFloat sum(1.0), term(1.0);
    for (std::uint32_t i = 1; !IsNegligible(term, sum); ++i) {
        term = (term * rest).Over(i);
        sum = sum + term;
    }
    for (int i = 0; i < kHalvings; ++i)
        sum = sum * sum;
    return sum.Scaled(static_cast<int>(power));
}

/// x^first / first! - x^(first + 2) / (first + 2)! + ..., the sine or the cosine.
WideFloat AlternatingSeries(WideFloat const &x, WideFloat term, std::uint32_t first) {
    WideFloat const square = -(x * x);
    WideFloat sum = term;
    for (std::uint32_t i = first; !IsNegligible(term, sum); i += 2) {
        term = (term * square).Over((i + 1) * (i + 2));
        sum = sum + term;
    }
    return sum;
}

/// Of an angle of a few radians at most.
WideFloat SineOf(WideFloat const &x) {
    return AlternatingSeries(x, x, 1);
}

WideFloat CosineOf(WideFloat const &x) {
    return AlternatingSeries(x, 1.0, 0);
}

/// A whole number of quarter turns, of which the last two bits count, and what is left, in radians.
struct WideAngle {
    unsigned quarterTurns;
    WideFloat rest;
};

WideAngle WideAngleOf(double x) {
    if (std::fabs(x) < 0.5)
        return {0, x};
    QuarterTurns const turns = QuarterTurnsOf(x, kAccurateLimbs);
    int zeros = 0; // whole limbs; two at most
    while (turns.limbs[base::Index(zeros)] == 0)
        ++zeros;
    assert(zeros <= 2);
    WideFloat::Limbs limbs;
    std::copy_n(turns.limbs.begin() + zeros, limbs.size(), limbs.rbegin());
    return {turns.whole, WideFloat(limbs, -32 * zeros, turns.isNegative) * Constant(kWideQuarterPi, 1)};
}

WideFloat SineOf(WideAngle const &angle) {
    WideFloat const sine = angle.quarterTurns % 2 == 0 ? SineOf(angle.rest) : CosineOf(angle.rest);
    return (angle.quarterTurns & 2U) == 0 ? sine : -sine;
}

WideFloat CosineOf(WideAngle const &angle) {
    return SineOf(WideAngle{angle.quarterTurns + 1, angle.rest});
}

/// log x = near + log(1 + z) with the small z = x e^-near - 1.
WideFloat Logarithm(double x, Approximation const &near) {
    WideFloat const start = ValueOf(near), z = WideFloat(x) * Exponential(-start) - 1.0;
    return start + (z - (z * z).Scaled(-1) + (z * z * z).Over(3));
}

/// The angle whose sine is s: s itself, s^2 being as good as nothing against 1/s^3.
WideFloat SmallArcSine(WideFloat const &s) {
    return s + (s * s * s).Over(6);
}

WideFloat RootOfOneMinusSquare(double x) {
    return ((WideFloat(1.0) - x) * (WideFloat(1.0) + x)).Root();
}

} // namespace

double AccurateSin(double x) {
    return SineOf(WideAngleOf(x)).Rounded();
}

double AccurateCos(double x) {
    return CosineOf(WideAngleOf(x)).Rounded();
}

double AccurateTan(double x) {
    WideAngle const angle = WideAngleOf(x);
    return (SineOf(angle) / CosineOf(angle)).Rounded();
}

// Where the sine and the cosine of an angle are known, those of its difference to `near` are, too.

double AccurateAsin(double x, Approximation const &near) {
    WideFloat const start = ValueOf(near);
    return (start + SmallArcSine(CosineOf(start) * x - RootOfOneMinusSquare(x) * SineOf(start))).Rounded();
}

double AccurateAcos(double x, Approximation const &near) {
    WideFloat const start = ValueOf(near);
    return (start + SmallArcSine(RootOfOneMinusSquare(x) * CosineOf(start) - SineOf(start) * x)).Rounded();
}

double AccurateAtan2(double y, double x, Approximation const &near) {
    assert(x != 0.0 && y != 0.0);
    WideFloat const start = ValueOf(near);
    WideFloat const sine = SineOf(start), cosine = CosineOf(start);
    WideFloat const tangent = (cosine * y - sine * x) / (cosine * x + sine * y);
    return (start + (tangent - (tangent * tangent * tangent).Over(3))).Rounded();
}

double AccurateSmallAngle(double y, double x) {
    assert(x > 0.0 && std::fabs(y) / x <= 0x1p-60);
    // The angle is smaller than the quotient, by less than can be written. That counts where the quotient is the middle
    // of two subnormal numbers; another quotient is farther from a middle than this.
    return (WideFloat(y) / x * (WideFloat(1.0) - 0x1p-108)).Rounded();
}

double AccurateExp(double x) {
    return Exponential(x).Rounded();
}

double AccurateLog(double x, Approximation const &near) {
    return Logarithm(x, near).Rounded();
}

double AccurateLog10(double x, Approximation const &nearLog) {
    return (Logarithm(x, nearLog) * Constant(kWideTwoOverLog10, -1)).Rounded();
}

double AccuratePow(double x, double y, Approximation const &nearLog) {
    assert(x > 0.0 && std::fabs(y * nearLog.head) < 1000.0);
    return Exponential(Logarithm(x, nearLog) * y).Rounded();
}

double AccurateSinh(double x) {
    return (Exponential(x) - Exponential(-x)).Scaled(-1).Rounded();
}

double AccurateCosh(double x) {
    return (Exponential(x) + Exponential(-x)).Scaled(-1).Rounded();
}

double AccurateHypot(double x, double y, double z) {
    // A third number that is too small to be seen beside the others still keeps the root from being the middle of two
    // doubles.
    double first = std::fabs(x), second = std::fabs(y), third = std::fabs(z);
    if (first < second)
        std::swap(first, second);
    if (second < third)
        std::swap(second, third);
    if (first < second)
        std::swap(first, second);
    WideFloat const large(first), middle(second);
    WideFloat small(third);
    if (!small.IsZero() && small.Exponent() < large.Exponent() - 80)
        small = large.Scaled(-80);
    return (large * large + middle * middle + small * small).Root().Rounded();
}

} // namespace zvi::lib::math
