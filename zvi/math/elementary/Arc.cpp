#include "zvi/math/elementary/AccurateDetail.h"
#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <cassert>
#include <limits>

namespace zvi::lib {

using namespace math;

namespace {

constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
/// Below it arc sine and arc tangent round to the number: its cube is less than a quarter of the last place.
constexpr double kSmall = 0x1p-27;
/// In parts of the value.
constexpr double kArcSineError = 0x1p-68;
constexpr double kArcTangentError = 0x1p-67;
/// Of the quick phases; where that is much in parts of the value, the next phase is needed.
constexpr double kQuickArcTangentError = 0x1p-58;
/// Of the quick arc sine, beside that of the table, which scripts/elementary-tables adds up row by row: of the parts of
/// an angle of the table or of quarter turns, which are rounded five times at 2^-106 of them.
constexpr double kQuickArcSineError = 0x1p-100;
/// Of the series without a table, in parts of the sine and of what is beyond it, which is rounded 8 times: the
/// polynomial is wrong by 2^-66 of the sine, and what the root lacks, 2^-53 of it, is multiplied by the slope but for
/// 2^-14.
constexpr double kArcSeriesError = 0x1p-65;
constexpr double kArcSeriesRounding = 0x1.1p-50;
/// Up to here, and from there on by the root, the arc sine is computed by the series without a table.
constexpr double kNearZero = 0x1p-4;
constexpr double kNearOne = 1.0 - 0x1p-6;
/// A tangent that is greater belongs to pi / 2.
constexpr double kFarthest = 0x1p60;

Approximation WithError(TwoPart const &value, double part) {
    return {value.head, value.tail, part * std::fabs(value.head)};
}

/// An angle; the tail may be 2^-7 of the head.
struct NearAngle {
    double head, tail;
};

/// Quarter turns to which an angle is added or from which it is taken.
struct Base {
    TwoPart turns;
    double sign;
};

constexpr TwoPart kHalfPi = {kHalfPiHead, kHalfPiTail}, kPi = {2.0 * kHalfPiHead, 2.0 * kHalfPiTail};

/// The angle from a base, and negated where `negative` is so. A table of bases and products with signs stand for
/// branches, which would be guessed wrong every other time.
TwoPart FromBase(Base const &base, double negative, NearAngle const &angle) {
    double const sign = std::copysign(1.0, negative);
    TwoPart const sum = QuickSum(base.turns.head, base.sign * angle.head);
    return {sign * sum.head, sign * (sum.tail + (base.turns.tail + base.sign * angle.tail))};
}

/// The series of the arc tangent of t, |t| < 2^-7, beyond t.
double ArcTangentBeyond(double t) {
    assert(std::fabs(t) < 0x1p-7);
    double const square = t * t;
    return t * square * ((-1.0 / 3 + square * (1.0 / 5)) + square * square * (-1.0 / 7 + square * (1.0 / 9)));
}

/// Arc tangent of y / x as below, with the rounding errors of t.
NearAngle QuickArcTangentOf(double y, double x) {
    assert(0.0 < y && y <= x);
    double const shifted = y / x * 128.0 + kToInteger;
    double const c = (shifted - kToInteger) * (1.0 / 128.0);
    TwoPart const angle = kArcTangentTable[static_cast<unsigned>(LowInteger(shifted))];
    TwoPart const xs = Split(x);
    double const t = ((y - c * xs.head) - c * xs.tail) / (x + c * y);
    TwoPart const sum = QuickSum(angle.head, t);
    return {sum.head, sum.tail + (angle.tail + ArcTangentBeyond(t))};
}

/// Arc tangent of y / x, 0 < y <= x: that of c = i / 128, of the table, plus that of t = (y - c x) / (x + c y).
NearAngle ArcTangentOf(double y, double x) {
    assert(0.0 < y && y <= x);
    double const shifted = y / x * 128.0 + kToInteger;
    double const c = (shifted - kToInteger) * (1.0 / 128.0);
    TwoPart const angle = kArcTangentTable[static_cast<unsigned>(LowInteger(shifted))];
    TwoPart const xs = Split(x), ys = Split(y);
    TwoPart const first = Sum(y, -(c * xs.head)); // inexact without a tail where y is a little less than half of that
    TwoPart const above = Sum(first.head, first.tail - c * xs.tail);
    TwoPart const sumBelow = QuickSum(x, c * ys.head);
    TwoPart const below = QuickSum(sumBelow.head, sumBelow.tail + c * ys.tail);
    double const inverse = 1.0 / below.head;
    double const head = Split(above.head * inverse).head;
    TwoPart const divisor = Split(below.head);
    double const left = ((above.head - head * divisor.head) - head * divisor.tail) + (above.tail - head * below.tail);
    double const tail = left * inverse;
    TwoPart const sum = QuickSum(angle.head, head);
    return {sum.head, sum.tail + (angle.tail + (tail + ArcTangentBeyond(head + tail)))};
}

/// The angle below pi / 4 or a little more whose sine is u and whose cosine is v, heads of 26 bits: that of the table
/// with the sine c = i / 128 and the cosine d, plus the arc sine of t = u d - c v.
NearAngle ArcSineOf(TwoPart const &u, TwoPart const &v) {
    double const shifted = (u.head + u.tail) * 128.0 + kToInteger;
    double const c = (shifted - kToInteger) * (1.0 / 128.0);
    ArcSinePart const part = kArcSineTable[static_cast<unsigned>(LowInteger(shifted))];
    double const exact = u.head * part.cosine.head - c * v.head;
    double const tail = u.tail * part.cosine.head + ((u.head + u.tail) * part.cosine.tail - c * v.tail);
    double const t = exact + tail, square = t * t;
    double const beyond =
        t * square * (1.0 / 6 + square * (3.0 / 40 + square * (15.0 / 336 + square * (105.0 / 3456))));
    TwoPart const sum = QuickSum(part.angle.head, exact);
    return {sum.head, sum.tail + (part.angle.tail + (tail + beyond))};
}

/// sqrt(1 - x x), the head of 26 bits.
TwoPart RootOfOneMinusSquare(double x, TwoPart const &parts) {
    double const square = x * x;
    double const squareTail =
        ((parts.head * parts.head - square) + 2.0 * parts.head * parts.tail) + parts.tail * parts.tail;
    double const one = 1.0 - square;
    TwoPart const rest = QuickSum(one, ((1.0 - one) - square) - squareTail);
    double const root = std::sqrt(rest.head), head = Split(root).head;
    return {head, ((rest.head - head * head) + rest.tail) / (root + head)};
}

/// An angle: what is known early of it, and what is added last, as a whole of `beyond`.
struct QuickAngle {
    double head, tail, beyond, error;
};

/// The arc sine of x from [2^-4, 1 - 2^-6), or with the sign -1 its negative: angle, slope and more of it at a center
/// near x, of the row for the first bits of 1 - x. Where the series is steep, rows are narrow. d, and its product with
/// the slope, are exact.
inline QuickAngle ArcSineByTable(double x, double sign) {
    assert(x >= kNearZero && x < kNearOne && std::fabs(sign) == 1.0);
    constexpr std::uint64_t kFirstRow = std::bit_cast<std::uint64_t>(0x1p-6) >> 48;
    ArcSineSeriesPart const &part = kArcSineSeriesTable[(BitsOf(1.0 - x) >> 48) - kFirstRow];
    std::array<double, 9> const &f = part.factors;
    double const d = x - part.center, square = d * d, fourth = square * square, towards = sign * d;
    double const low = (f[0] + d * f[1]) + square * (f[2] + d * f[3]);
    double const high = (f[4] + d * f[5]) + square * (f[6] + d * f[7]) + fourth * f[8];
    TwoPart const sum = QuickSum(sign * part.angle.head, towards * part.slope);
    return {sum.head, sum.tail + sign * part.angle.tail, towards * (low + fourth * high), part.error * std::fabs(d)};
}

/// asin s - s for s^2 = z < 2^-7.
double BeyondSine(double s, double z) {
    double const square = z * z, low = (kArcFactor0 + z * kArcFactor1) + square * (kArcFactor2 + z * kArcFactor3);
    return s * z * (low + square * square * (kArcFactor4 + z * kArcFactor5));
}

/// The arc sine of x, |x| < 2^-4.
inline QuickAngle SmallArcSine(double x) {
    assert(std::fabs(x) < kNearZero);
    double const beyond = BeyondSine(x, x * x);
    return {x, 0.0, beyond, kArcSeriesError * std::fabs(x) + kArcSeriesRounding * std::fabs(beyond)};
}

/// The arc cosine of x from [1 - 2^-6, 1), or with the sign -1 its negative: 2 asin sqrt((1 - x) / 2).
inline QuickAngle SmallArcCosine(double x, double sign) {
    assert(x >= kNearOne && x < 1.0 && std::fabs(sign) == 1.0);
    double const z = 0.5 - 0.5 * x, inverse = 0.5 / z, root = std::sqrt(z), beyond = 2.0 * BeyondSine(root, z);
    TwoPart const parts = CutInTwo(root);
    double const left = (z - parts.head * parts.head) - parts.tail * (root + parts.head);
    double const head = 2.0 * sign * root, tail = 2.0 * sign * (left * (root * inverse));
    return {head, tail + 0.5 * z * tail, sign * beyond, kArcSeriesError * (root + root) + kArcSeriesRounding * beyond};
}

QuickAngle Plus(TwoPart const &turns, QuickAngle const &angle) {
    TwoPart const sum = QuickSum(turns.head, angle.head);
    return {sum.head, sum.tail + (turns.tail + angle.tail), angle.beyond, angle.error};
}

bool Rounds(QuickAngle const &a, double &value) {
    return math::Rounds({a.head, a.tail + a.beyond, a.error + kQuickArcSineError}, value);
}

/// Numbers up to here are less than their cosine.
constexpr double kByItself = 0.70703125;

/// The arc sine or the arc cosine of x from the smaller of the angles whose sines are |x| and sqrt(1 - x x).
template <bool IsCosine>
TwoPart FromSmallerAngle(double x, NearAngle const &angle) {
    // By whether the angle is that of |x|, and for the cosine also by the sign of x.
    static constexpr Base kSineBases[] = {{kHalfPi, -1.0}, {{0.0, 0.0}, 1.0}};
    static constexpr Base kCosineBases[] = {{{0.0, 0.0}, 1.0}, {kHalfPi, -1.0}, {kPi, -1.0}, {kHalfPi, 1.0}};
    unsigned const bySize{std::fabs(x) < kByItself};
    if constexpr (IsCosine)
        return FromBase(kCosineBases[bySize + 2U * unsigned{x < 0.0}], 1.0, angle);
    else
        return FromBase(kSineBases[bySize], x, angle);
}

/// The arc sine or the arc cosine of x, |x| < 1, when the quick phase could not tell. `accurate` is asked last.
template <bool IsCosine>
[[gnu::cold]] double SlowArcOf(double x, double (*accurate)(double, Approximation const &)) {
    assert(std::fabs(x) < 1.0);
    double const size = std::fabs(x);
    TwoPart const parts = Split(size), root = RootOfOneMinusSquare(size, parts);
    NearAngle const angle = size < kByItself ? ArcSineOf(parts, root) : ArcSineOf(root, parts);
    Approximation const next = WithError(FromSmallerAngle<IsCosine>(x, angle), kArcSineError);
    double value = 0.0;
    return Rounds(next, value) ? value : accurate(x, next);
}

/// Of a direction that is not along an axis, finite, and of which one length is at most 2^60 times the other.
template <NearAngle (*Compute)(double, double)>
TwoPart ArcTangentOfDirection(double y, double x) {
    // By whether the direction is steep, and by whether it points to the left.
    static constexpr Base kBases[] = {{{0.0, 0.0}, 1.0}, {kHalfPi, -1.0}, {kPi, -1.0}, {kHalfPi, 1.0}};
    double const width = std::fabs(x), height = std::fabs(y);
    unsigned const base = unsigned{width < height} + 2U * unsigned{x < 0.0};
    return FromBase(kBases[base], y, Compute(std::min(width, height), std::max(width, height)));
}

/// As Atan2, where the direction is such a one.
double AngleOf(double y, double x) {
    double value = 0.0;
    TwoPart const quick = ArcTangentOfDirection<QuickArcTangentOf>(y, x);
    if (Rounds(Approximation{quick.head, quick.tail, kQuickArcTangentError}, value))
        return value;
    Approximation const angle = WithError(ArcTangentOfDirection<ArcTangentOf>(y, x), kArcTangentError);
    return Rounds(angle, value) ? value : AccurateAtan2(y, x, angle);
}

/// Whether one length is so much smaller than another one that the angle is, or all but is, that of an axis.
bool IsAlong(double small, double large) {
    return small == 0.0 || std::isinf(large) || small / large <= 1.0 / kFarthest;
}

/// Zeros, infinities and NaN, directions that are all but along an axis, and very large or small lengths.
double AngleOfOthers(double y, double x) {
    double const height = std::fabs(y), width = std::fabs(x);
    if (std::isnan(x) || std::isnan(y))
        return kNaN;
    if (std::isinf(height) && std::isinf(width))
        return std::copysign(x > 0.0 ? 0.5 * kHalfPiHead : 1.5 * kHalfPiHead, y); // that product is exact
    if (IsAlong(height, width)) {
        if (std::signbit(x))
            return std::copysign(2.0 * kHalfPiHead, y);
        return height == 0.0 || std::isinf(width) ? std::copysign(0.0, y) : AccurateSmallAngle(y, x);
    }
    if (IsAlong(width, height))
        return std::copysign(kHalfPiHead, y);
    int const exponent = std::ilogb(width);
    return Atan2(std::ldexp(y, -exponent), std::ldexp(x, -exponent));
}

} // namespace

double Atan(double x) {
    double const size = std::fabs(x);
    if (!(size >= kSmall))
        return x;
    if (size > kFarthest)
        return std::copysign(kHalfPiHead, x);
    return AngleOf(x, 1.0);
}

double Atan2(double y, double x) {
    constexpr double kLeast = 0x1p-400, kGreatest = 0x1p400;
    double const height = std::fabs(y), width = std::fabs(x);
    if (!(height > kLeast && width > kLeast && height < kGreatest && width < kGreatest && height < kFarthest * width &&
          width < kFarthest * height))
        return AngleOfOthers(y, x);
    return AngleOf(y, x);
}

double Asin(double x) {
    double const size = std::fabs(x);
    if (!(size < 1.0))
        return size == 1.0 ? std::copysign(kHalfPiHead, x) : kNaN;
    if (size < kSmall)
        return x;
    double value = 0.0;
    bool isDone = false;
    if (size < kNearZero)
        isDone = Rounds(SmallArcSine(x), value);
    else if (size < kNearOne)
        isDone = Rounds(ArcSineByTable(size, 1.0), value);
    else
        isDone = Rounds(Plus(kHalfPi, SmallArcCosine(size, -1.0)), value);
    return isDone ? std::copysign(value, x) : SlowArcOf<false>(x, AccurateAsin);
}

double Acos(double x) {
    double const size = std::fabs(x);
    if (!(size < 1.0))
        return x == 1.0 ? 0.0 : x == -1.0 ? 2.0 * kHalfPiHead : kNaN;
    double value = 0.0;
    bool isDone = false;
    if (size < kNearZero)
        isDone = Rounds(Plus(kHalfPi, SmallArcSine(-x)), value);
    else if (size < kNearOne)
        isDone = Rounds(Plus(kHalfPi, ArcSineByTable(size, std::copysign(1.0, -x))), value);
    else if (x > 0.0)
        isDone = Rounds(SmallArcCosine(size, 1.0), value);
    else
        isDone = Rounds(Plus(kPi, SmallArcCosine(size, -1.0)), value);
    return isDone ? value : SlowArcOf<true>(x, AccurateAcos);
}

} // namespace zvi::lib
