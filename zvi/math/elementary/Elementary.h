#pragma once

// The elementary functions, with the same bits on every compiler, processor and host: the results of the C library's
// differ between them in the last bit. Each gives the double nearest to the true value of its arguments.
// No case is known in which it does not: a result could be wrong, in its last bit, only if the true one were within
// 2^-110 units of the last place of the middle between two doubles without being that middle.
//
// Zeros, infinities and NaN are answered as annex F of the C standard says; errno and the floating-point flags are not
// part of the answer. The processor must round to nearest, as it does unless a program asks for something else.
//
// Angles are in radians. sqrt, fabs, floor, fmod and their like are exact everywhere and need no counterpart here.

#include "zvi/Export.h"

namespace zvi::lib {

/// Sine; NaN for an infinite angle.
ZVI_API double Sin(double angle);
/// Cosine; NaN for an infinite angle.
ZVI_API double Cos(double angle);
/// Tangent; NaN for an infinite angle. No double is an odd multiple of pi / 2, so the result is always finite.
ZVI_API double Tan(double angle);

/// Arc sine in [-pi / 2, pi / 2]; NaN unless |x| <= 1.
ZVI_API double Asin(double x);
/// Arc cosine in [0, pi]; NaN unless |x| <= 1.
ZVI_API double Acos(double x);
/// Arc tangent in [-pi / 2, pi / 2].
ZVI_API double Atan(double x);
/// Angle of the direction (x, y) in [-pi, pi]. Signs of zeros count: (-1, -0) gives -pi, and (0, 0) gives 0.
ZVI_API double Atan2(double y, double x);

/// e to the power x; infinite above 709.78.
ZVI_API double Exp(double x);
/// Natural logarithm; -infinity for 0, NaN below.
ZVI_API double Log(double x);
/// Logarithm of base 10; -infinity for 0, NaN below. Exact for powers of ten.
ZVI_API double Log10(double x);
/// x to the power y. NaN for a negative x with a y that is no integer; 1 for y = 0 and for x = 1, whatever the other
/// is.
ZVI_API double Pow(double x, double y);
/// Hyperbolic sine.
ZVI_API double Sinh(double x);
/// Hyperbolic cosine.
ZVI_API double Cosh(double x);

/// sqrt(x x + y y) without overflow or underflow on the way. Infinite when one is, also beside a NaN.
ZVI_API double Hypot(double x, double y);
/// sqrt(x x + y y + z z) without overflow or underflow on the way. Infinite when one is, also beside a NaN.
ZVI_API double Hypot(double x, double y, double z);

} // namespace zvi::lib
