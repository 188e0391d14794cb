#pragma once

// Tables and constants of the elementary functions, correct to the last bit of each part. Written by
// scripts/elementary-tables; change that, not this.

#include <array>
#include <cstdint>

namespace zvi::lib::math {

/// 128 / log 2: how many steps of the table of 2^x are in 1.
inline constexpr double kStepsPerUnit = 0x1.71547652b82fep+7;
/// log 2 / 128; the first part times a number of 18 bits is exact.
inline constexpr double kStepHead = 0x1.62e42fef80000p-8;
inline constexpr double kStepTail = 0x1.1cf79abc9e3b4p-43;
/// log 2; the first part times a number of 11 bits is exact.
inline constexpr double kLog2Head = 0x1.62e42fefa3800p-1;
inline constexpr double kLog2Tail = 0x1.ef35793c76730p-45;
/// 1 / log 10; the first part times a number of 26 bits is exact.
inline constexpr double kLog10Head = 0x1.bcb7b18000000p-2;
inline constexpr double kLog10Tail = -0x1.6c8d78e6acaa4p-29;
/// of r^2, r^3, ... in log(1 + r) - r for |r| <= 2^-8, which the whole polynomial gives but for 2^-55 r^2.
inline constexpr double kLogarithmFactor2 = -0x1.0000000000000p-1;
inline constexpr double kLogarithmFactor3 = 0x1.5555555555556p-2;
inline constexpr double kLogarithmFactor4 = -0x1.ffffffff6fff6p-3;
inline constexpr double kLogarithmFactor5 = 0x1.9999999919990p-3;
inline constexpr double kLogarithmFactor6 = -0x1.5556d556aef01p-3;
inline constexpr double kLogarithmFactor7 = 0x1.24939e7b21ce1p-3;
/// of 1, z, z^2, ... in (asin(s) / s - 1) / z with z = s^2 up to 2^-7, which they give but for 2^-59.
inline constexpr double kArcFactor0 = 0x1.5555555555555p-3;
inline constexpr double kArcFactor1 = 0x1.333333333374dp-4;
inline constexpr double kArcFactor2 = 0x1.6db6db6ab9cb4p-5;
inline constexpr double kArcFactor3 = 0x1.f1c7292ee91c6p-6;
inline constexpr double kArcFactor4 = 0x1.6e7f600472ab8p-6;
inline constexpr double kArcFactor5 = 0x1.21bc5f0bbae0bp-6;
/// 256 / pi: how many steps of the table of sines are in 1.
inline constexpr double kStepsPerRadian = 0x1.45f306dc9c883p+6;
/// pi / 256; the first three parts times a number of 23 bits are exact.
inline constexpr double kAngleStep1 = 0x1.921fb54800000p-7;
inline constexpr double kAngleStep2 = -0x1.de973dd000000p-38;
inline constexpr double kAngleStep3 = 0x1.313198a000000p-68;
inline constexpr double kAngleStep4 = 0x1.701b839a25205p-99;
/// pi / 256 without its first two parts.
inline constexpr double kAngleStepRest = 0x1.313198a2e0370p-68;
/// pi / 256 again; the first three parts times a number of 31 bits are exact.
inline constexpr double kLongAngleStep1 = 0x1.921fb80000000p-7;
inline constexpr double kLongAngleStep2 = -0x1.5dde900000000p-30;
inline constexpr double kLongAngleStep3 = -0x1.cf72d00000000p-52;
inline constexpr double kLongAngleStep4 = 0x1.3198a2e037073p-76;
/// pi / 2.
inline constexpr double kHalfPiHead = 0x1.921fb54442d18p+0;
inline constexpr double kHalfPiTail = 0x1.1a62633145c07p-54;
/// pi / 2; the first part times a number of 27 bits is exact.
inline constexpr double kQuarterTurnHead = 0x1.921fb58000000p+0;
inline constexpr double kQuarterTurnTail = -0x1.dde973dcb3b3ap-27;

/// A number of few bits, and what is left of the value.
struct TwoPart {
    double head, tail;
};

struct LogarithmPart {
    double reciprocal, head, tail;
};

struct ArcSinePart {
    TwoPart angle, cosine;
};

struct alignas(64) ArcSineSeriesPart {
    double center, slope;
    TwoPart angle;                 // of the center
    std::array<double, 9> factors; // of d, d^2, ... in what is beyond the angle and slope times d
    double error;                  // for each unit of d
};

struct HyperbolicPart {
    TwoPart sine, cosine;
};

/// 2^(i / 128).
extern std::array<TwoPart, 128> const kExponentialTable;
/// c, about 1 / z in the interval i of z, and -log c.
extern std::array<LogarithmPart, 256> const kLogarithmTable;
/// sin(i pi / 256).
extern std::array<TwoPart, 512> const kSineTable;
/// atan(i / 128).
extern std::array<TwoPart, 129> const kArcTangentTable;
/// asin(i / 128), and the cosine of that angle.
extern std::array<ArcSinePart, 92> const kArcSineTable;
/// asin(center + d), by the first bits of 1 - center - d.
extern std::array<ArcSineSeriesPart, 95> const kArcSineSeriesTable;
/// sinh(i / 64) and cosh(i / 64).
extern std::array<HyperbolicPart, 23> const kHyperbolicTable;

/// 2 / pi: the bits after the point, 32 to an element.
extern std::array<std::uint32_t, 48> const kTwoOverPi;
/// pi / 4, log 2 and 2 / log 10, all from [1/2, 1): 256 bits after the point, the lowest element first.
extern std::array<std::uint32_t, 8> const kWideQuarterPi, kWideLog2, kWideTwoOverLog10;

} // namespace zvi::lib::math
