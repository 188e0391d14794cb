#include "zvi/math/elementary/AccurateDetail.h"
#include "zvi/math/elementary/Elementary.h"
#include "zvi/math/elementary/QuarterTurnsDetail.h"

#include <cassert>
#include <limits>

namespace zvi::lib {

using namespace math;

namespace {

/// Steps of the table of sines in a quarter turn.
constexpr unsigned kQuarter = 128;
/// Below it the sine and the tangent round to the angle: its cube is less than a quarter of the last place.
constexpr double kSmall = 0x1p-27;
/// Up to here the number of steps in an angle has 23 bits, and up to there 31.
constexpr double kGreatestBySteps = 0x1p16;
constexpr double kGreatestByLongSteps = 0x1p24;
/// In parts of the value.
constexpr double kSineError = 0x1p-65;
constexpr double kTangentError = 0x1p-65;

/// An angle as steps of pi / 256 and a rest of at most half a step.
struct Reduced {
    unsigned steps;
    double head, tail;
};

/// W. J. Cody, W. Waite, "Software Manual for the Elementary Functions" (1980): steps times pi / 256 is subtracted in
/// parts whose products are exact. The angle is below kGreatestBySteps.
Reduced ReduceBySteps(double angle) {
    assert(std::fabs(angle) < kGreatestBySteps);
    /// A rest below this is nearly a multiple of the step: then the first two parts cancel, and the others count.
    constexpr double kCancelled = 0x1p-27;
    double const shifted = angle * kStepsPerRadian + kToInteger;
    double const steps = shifted - kToInteger;
    auto const index = static_cast<unsigned>(LowInteger(shifted));
    TwoPart const rest = QuickSum(angle - steps * kAngleStep1, -(steps * kAngleStep2));
    if (std::fabs(rest.head) >= kCancelled || steps == 0.0) {
        TwoPart const sum = QuickSum(rest.head, rest.tail - steps * kAngleStepRest);
        return {index, sum.head, sum.tail};
    }
    TwoPart const small = Sum(rest.head, -(steps * kAngleStep3));
    TwoPart const sum = QuickSum(small.head, small.tail - steps * kAngleStep4);
    return {index, sum.head, sum.tail};
}

/// The same for any angle of at least 1/2, by the bits of 2 / pi.
Reduced ReduceByBits(double angle) {
    QuarterTurns const turns = QuarterTurnsOf(angle, kFastLimbs);
    std::uint64_t const bits = std::uint64_t{turns.limbs[0]} << 32 | turns.limbs[1];
    std::uint64_t const steps = (bits + (std::uint64_t{1} << 56)) >> 57; // 128 of them are a quarter turn
    std::uint64_t const left = bits - (steps << 57);
    double const parts[] = {
        static_cast<double>(static_cast<std::int32_t>(left >> 32)) * 0x1p-32,
        static_cast<double>(static_cast<std::uint32_t>(left)) * 0x1p-64, static_cast<double>(turns.limbs[2]) * 0x1p-96,
        static_cast<double>(turns.limbs[3]) * 0x1p-128, static_cast<double>(turns.limbs[4]) * 0x1p-160};
    TwoPart const first = QuickSum(parts[0], parts[1]);
    TwoPart const second = Sum(first.tail, parts[2]);
    TwoPart const third = QuickSum(first.head, second.head);
    TwoPart const rest = QuickSum(third.head, third.tail + (second.tail + parts[3] + parts[4]));
    TwoPart const radians = Product(rest.head, kHalfPiHead);
    double const tail = radians.tail + (rest.head * kHalfPiTail + rest.tail * kHalfPiHead);
    unsigned const whole = turns.whole * kQuarter;
    if (turns.isNegative)
        return {whole - static_cast<unsigned>(steps), -radians.head, -tail};
    return {whole + static_cast<unsigned>(steps), radians.head, tail};
}

/// The same by steps of up to 31 bits, unless what is left is too small for that; below kGreatestByLongSteps.
Reduced ReduceByLongSteps(double angle) {
    assert(std::fabs(angle) < kGreatestByLongSteps);
    constexpr double kTooSmall = 0x1p-24;
    double const shifted = angle * kStepsPerRadian + kToInteger;
    double const steps = shifted - kToInteger;
    double const exact = (angle - steps * kLongAngleStep1) - steps * kLongAngleStep2;
    TwoPart const rest = QuickSum(exact, -(steps * kLongAngleStep3));
    if (std::fabs(rest.head) < kTooSmall)
        return ReduceByBits(angle);
    TwoPart const sum = QuickSum(rest.head, rest.tail - steps * kLongAngleStep4);
    return {static_cast<unsigned>(LowInteger(shifted)), sum.head, sum.tail};
}

Reduced Reduce(double angle) {
    double const size = std::fabs(angle);
    if (size < kGreatestBySteps)
        return ReduceBySteps(angle);
    return size < kGreatestByLongSteps ? ReduceByLongSteps(angle) : ReduceByBits(angle);
}

/// Sine and cosine of the rest: r + `sine` and 1 + `cosine`.
struct RestSeries {
    double head, tail, sine, cosine;

    explicit RestSeries(Reduced const &rest) : head(Split(rest.head).head), tail((rest.head - head) + rest.tail) {
        double const r = rest.head, square = r * r;
        sine = r * square * (-1.0 / 6 + square * (1.0 / 120 - square * (1.0 / 5040)));
        cosine = square * square * (1.0 / 24 - square * (1.0 / 720)) - (0.5 * square + r * rest.tail);
    }
};

/// sin(c + r) = sin c cos r + cos c sin r, with c = steps pi / 256 of the table.
/// S. Gal, B. Bachelis, "An accurate elementary mathematical library for the IEEE floating point standard", ACM
/// Transactions on Mathematical Software 17 (1991), with values in two parts in place of chosen arguments.
Approximation SineOf(unsigned steps, RestSeries const &r) {
    TwoPart const sine = kSineTable[steps & 511U], cosine = kSineTable[(steps + kQuarter) & 511U];
    TwoPart const sum = QuickSum(sine.head, cosine.head * r.head);
    double const lower = (cosine.head + cosine.tail) * (r.tail + r.sine) + cosine.tail * r.head +
                         (sine.tail + (sine.head + sine.tail) * r.cosine);
    return {sum.head, sum.tail + lower, kSineError * std::fabs(sum.head)};
}

Approximation Quotient(Approximation const &a, Approximation const &b) {
    TwoPart const x = QuickSum(a.head, a.tail), y = QuickSum(b.head, b.tail);
    double const inverse = 1.0 / y.head;
    double const head = Split(x.head * inverse).head;
    TwoPart const divisor = Split(y.head);
    double const left = (x.head - head * divisor.head) - head * divisor.tail + (x.tail - head * y.tail);
    return {head, left * inverse, kTangentError * std::fabs(head)};
}

} // namespace

double Sin(double angle) {
    if (!(std::fabs(angle) >= kSmall))
        return angle;
    if (std::isinf(angle))
        return std::numeric_limits<double>::quiet_NaN();
    Reduced const reduced = Reduce(angle);
    double value = 0.0;
    return Rounds(SineOf(reduced.steps, RestSeries(reduced)), value) ? value : AccurateSin(angle);
}

double Cos(double angle) {
    if (!(std::fabs(angle) >= kSmall))
        return angle - angle + 1.0;
    if (std::isinf(angle))
        return std::numeric_limits<double>::quiet_NaN();
    Reduced const reduced = Reduce(angle);
    double value = 0.0;
    return Rounds(SineOf(reduced.steps + kQuarter, RestSeries(reduced)), value) ? value : AccurateCos(angle);
}

double Tan(double angle) {
    if (!(std::fabs(angle) >= kSmall))
        return angle;
    if (std::isinf(angle))
        return std::numeric_limits<double>::quiet_NaN();
    Reduced const reduced = Reduce(angle);
    RestSeries const rest(reduced);
    double value = 0.0;
    bool const isDone = Rounds(Quotient(SineOf(reduced.steps, rest), SineOf(reduced.steps + kQuarter, rest)), value);
    return isDone ? value : AccurateTan(angle);
}

} // namespace zvi::lib
