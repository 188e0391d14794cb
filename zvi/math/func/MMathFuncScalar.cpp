#include "zvi/base/Pi.h"
#include "zvi/math/elementary/Elementary.h"
#include "zvi/math/func/MMathFunc.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstring>
#include <limits>

#include "zvi/math/func/MMathFuncDetail.h"

namespace zvi::lib {

using math::Length;
using math::Load3;

namespace {

constexpr double kScalarZero = 1e-8;                // a scalar inside it counts as zero
constexpr double kSquareZero = 1e-12;               // a squared length below it counts as zero
constexpr double kTurnZero = 1e-10;                 // a double area below it is no turn, square units
constexpr double kShortVector = 1e-6;               // a shorter vector is scaled up before its division
constexpr double kShortVectorScale = 1000.0;        // by this much
constexpr double kNoLength = 1e-10;                 // a length below it is reported by Normalize
constexpr double kNearPoints = 0.001;               // points nearer than it have no direction, model units
constexpr double kWholeMantissa = 9007199254740992; // 2^53: every double from here on is whole
constexpr double kDecimalSlack = 4.0 * std::numeric_limits<double>::epsilon(); // relative error of a scaled decimal
constexpr int kMaxDigits = 308; // the decimal exponents of double end here

double SnapToUnitRange(double v) {
    double const zero = MMathFunc::m_NormalZero;
    if (std::abs(v) < zero)
        return 0.0;
    if (std::abs(1.0 - v) < zero)
        return 1.0;
    if (std::abs(v + 1.0) < zero)
        return -1.0;
    return v;
}

double ClampToUnitRange(double v) {
    if (v < -1.0)
        return -1.0;
    return v > 1.0 ? 1.0 : v;
}

enum class Rounding { Nearest, AwayFromZero, TowardZero };

// The whole number that `size`, at least 0, is rounded to. The slack is what a decimal loses on its way through binary.
double WholeOf(double size, Rounding rounding) {
    assert(size >= 0.0);
    double const slack = size * kDecimalSlack;
    double const whole = std::floor(size + slack);
    double const rest = size - whole;
    if (rounding == Rounding::Nearest)
        return rest >= 0.5 - slack ? whole + 1.0 : whole;
    return rounding == Rounding::AwayFromZero && rest > slack ? whole + 1.0 : whole;
}

double RoundDecimals(double value, int digits, Rounding rounding) {
    double const scale = Pow(10.0, std::abs(std::clamp(digits, -kMaxDigits, kMaxDigits)));
    double const size = digits < 0 ? std::abs(value) / scale : std::abs(value) * scale;
    if (!(size < kWholeMantissa))
        return value;
    double const whole = WholeOf(size, rounding);
    return std::copysign(digits < 0 ? whole * scale : whole / scale, value);
}

} // namespace

// Constants, not computed values, so that other load-time code finds them whatever the order of the sources.
constinit double MMathFunc::m_NormalZero = 1e-15;
constinit double MMathFunc::m_pi = base::kPi;
constinit double MMathFunc::m_trrad = base::kRadiansPerDegree;
constinit double MMathFunc::m_trang = base::kDegreesPerRadian;

int MMathFunc::IsZero(double value) {
    return -kScalarZero < value && value < kScalarZero ? 1 : 0;
}

int MMathFunc::IsZero(double const *v) {
    return Dot(v, v) < kSquareZero ? 1 : 0;
}

int MMathFunc::IsEqual(double a, double b) {
    return IsZero(a - b);
}

double MMathFunc::NonZero() {
    return kScalarZero;
}

double MMathFunc::SquareNonZero() {
    return kSquareZero;
}

void MMathFunc::MakeNonZero(double &value) {
    if (IsZero(value))
        value = kScalarZero;
}

void MMathFunc::MakeNonZero(double *v) {
    if (IsZero(v))
        Copy(0.0, 0.0, kScalarZero, v);
}

double MMathFunc::mathSin(double radians) {
    return SnapToUnitRange(Sin(radians));
}

double MMathFunc::mathCos(double radians) {
    return SnapToUnitRange(Cos(radians));
}

double MMathFunc::mathAsin(double value) {
    return Asin(ClampToUnitRange(value));
}

double MMathFunc::mathAcos(double value) {
    return Acos(ClampToUnitRange(value));
}

double MMathFunc::mathSqrt(double value) {
    return value < 0.0 ? 0.0 : std::sqrt(value);
}

int MMathFunc::mathAbs(int value) {
    constexpr int kLargest = std::numeric_limits<int>::max();
    return value < -kLargest ? kLargest : std::abs(value);
}

double MMathFunc::mathAbs(double value) {
    return std::abs(value);
}

double MMathFunc::mathLerp(double a, double b, double t) {
    return a + (b - a) * t;
}

void MMathFunc::mathLerp(double const *a, double const *b, double t, double *out) {
    for (int i = 0; i < 3; ++i)
        out[i] = mathLerp(a[i], b[i], t);
}

double MMathFunc::mathRoundOff(double value, int digits) {
    return RoundDecimals(value, digits, Rounding::Nearest);
}

double MMathFunc::mathRoundUp(double value, int digits) {
    return RoundDecimals(value, digits, Rounding::AwayFromZero);
}

double MMathFunc::mathRoundDown(double value, int digits) {
    return RoundDecimals(value, digits, Rounding::TowardZero);
}

int MMathFunc::math_ccw(double x1, double y1, double x2, double y2, double x3, double y3) {
    double const area = (x2 - x1) * (y3 - y1) - (y2 - y1) * (x3 - x1);
    if (std::abs(area) < kTurnZero)
        return 0;
    return area > 0.0 ? 1 : -1;
}

double MMathFunc::GetAngle(double dx, double dy) {
    if (dx == 0.0) {
        if (dy == 0.0)
            return 0.0;
        return dy > 0.0 ? 90.0 : 270.0;
    }
    double const slope = Atan(dy / dx) * m_trang;
    if (dx > 0.0)
        return slope < 0.0 ? slope + 360.0 : slope;
    return slope + 180.0;
}

double MMathFunc::GetAngle(double x1, double y1, double x2, double y2, int direction) {
    double const dx = x1 - x2;
    double const dy = y1 - y2;
    if (std::sqrt(dx * dx + dy * dy) < kNearPoints)
        return 0.0;
    if (std::abs(dx) < m_NormalZero) {
        if (dy < -m_NormalZero)
            return 90.0;
        return direction ? 270.0 : -90.0;
    }
    if (std::abs(dy) < m_NormalZero) {
        if (dx < -m_NormalZero)
            return 0.0;
        return direction ? 180.0 : 0.0;
    }
    double const slope = Atan(dy / dx) * m_trang;
    if (!direction)
        return slope;
    if (dx < 0.0)
        return dy < 0.0 ? std::abs(slope) : 360.0 - std::abs(slope);
    return dy > 0.0 ? std::abs(slope) + 180.0 : 180.0 - std::abs(slope);
}

double MMathFunc::Dot(double const *a, double const *b) {
    return math::Dot(Load3(a), Load3(b));
}

double MMathFunc::mathDot(double const *a, double const *b) {
    return ClampToUnitRange(Dot(a, b));
}

double MMathFunc::mathDot(double ax, double ay, double bx, double by) {
    return ClampToUnitRange(ax * bx + ay * by);
}

double *MMathFunc::VectorAdd(double const *a, double const *b, double *out) {
    Store(Load3(a) + Load3(b), out);
    return out;
}

double *MMathFunc::VectorSubtract(double const *a, double const *b, double *out) {
    Store(Load3(a) - Load3(b), out);
    return out;
}

double *MMathFunc::VectorMult(double const *a, double k, double *out) {
    Store(Load3(a) * k, out);
    return out;
}

double *MMathFunc::VectorCross(double const *a, double const *b, double *out) {
    Store(Cross(Load3(a), Load3(b)), out);
    return out;
}

void MMathFunc::Add(double const *a, double const *b, double *out) {
    VectorAdd(a, b, out);
}

void MMathFunc::Add(double *a, double const *b) {
    VectorAdd(a, b, a);
}

void MMathFunc::Multiply(double const *a, double k, double *out) {
    VectorMult(a, k, out);
}

void MMathFunc::Copy(double x, double y, double z, double *out) {
    math::Store({x, y, z}, out);
}

void MMathFunc::Copy(double const *src, double *dst, int n) {
    if (n > 0)
        std::memmove(dst, src, static_cast<std::size_t>(n) * sizeof(double));
}

void MMathFunc::mathNormal(double const *a, double const *b, double *out) {
    VectorCross(a, b, out);
}

void MMathFunc::VectorNormalise(double *v) {
    Store(Load3(v) * (1.0 / Length(Load3(v))), v);
}

int MMathFunc::Normalize(double *v) {
    if (Length(Load3(v)) < kShortVector)
        Multiply(v, kShortVectorScale, v);
    double const length = Length(Load3(v));
    Store(Load3(v) / length, v);
    return length < kNoLength ? 0 : 1;
}

void MMathFunc::mathVecCross(double const *a, double const *b, double *out) {
    out[0] = a[1] * b[2] - a[2] * b[1];
}

void MMathFunc::mathReverse(double *v) {
    mathReverse(v, v);
}

void MMathFunc::mathReverse(double const *src, double *dst) {
    Copy(-src[0], -src[1], -src[2], dst);
}

void MMathFunc::Get4thPoint(double const *a, double const *b, double const *c, double *out) {
    Store(Load3(a) + Load3(c) - Load3(b), out);
}

double MMathFunc::PointSquareDistance(double const *a, double const *b) {
    math::Vec3 const d = Load3(a) - Load3(b);
    return math::Dot(d, d);
}

double MMathFunc::PointLineSquareDistance3D(double const *pt, double const *a, double const *b, double &t,
                                            double *foot) {
    math::Vec3 const p = Load3(pt);
    math::Vec3 const along = Load3(b) - Load3(a);
    t = math::Dot(p - Load3(a), along) / math::Dot(along, along);
    math::Vec3 const onLine = Load3(a) + along * t;
    Store(onLine, foot);
    return math::Dot(p - onLine, p - onLine);
}

int MMathFunc::mathGetVectorDirectionPoint(double const *p, double const *dir, double distance, double *out) {
    math::Vec3 const from = Load3(p);
    double const length = Length(Load3(dir));
    bool const hasDirection = length >= m_NormalZero;
    Store(hasDirection ? from + Load3(dir) / length * distance : from, out);
    return hasDirection ? 1 : 0;
}

} // namespace zvi::lib
