#pragma once

#include "zvi/Export.h"

// Comparing, cleaning and rounding of bare numbers in the free family. Numbers are compared with one absolute limit,
// 1e-8. Each comparison with a NaN is false, so no test here answers true for one, save `is_equal3` for a NaN `b`.

namespace zvi::lib {

/// True if |x| < 1e-8. At exactly 1e-8 both this and `is_not_zero` are false, deliberately.
ZVI_API bool is_zero(double x);
/// True if |x| > 1e-8.
ZVI_API bool is_not_zero(double x);
/// True if |a - b| < 1e-8.
ZVI_API bool isequal(double a, double b);
/// True if a and b differ by at most `tol`: a >= b - tol and b + tol >= a.
ZVI_API bool approximate(double a, double b, double tol);
/// False if |a - b| > 1e-8, else |a - c| < 1e-8. The two comparisons differ at exactly 1e-8, and b is never compared
/// with c.
ZVI_API bool is_equal3(double a, double b, double c);

/// Sets the value to 0.0 if |x| < 1e-8.
ZVI_API void chop(double &x);
/// Sets to 0.0 each of three adjacent coordinates whose absolute value is below `tol`.
ZVI_API void clean(double *xyz, double tol);

/// The whole number nearest to x for positive x: x truncated toward zero, plus 1 if the rest is above 0.499999. A
/// negative x is truncated only, deliberately: -2.7 gives -2. NaN and infinities come back as they are.
ZVI_API double round_off(double x);
/// x truncated toward zero, plus 1 if the rest is above 1e-8, so 2.00000002 gives 3 and 2.000000005 gives 2. A negative
/// x is truncated.
ZVI_API double round_up(double x);

/// Degrees to radians.
ZVI_API double radian(double degrees);
/// Radians to degrees.
ZVI_API double degree(double radians);
/// n! as a double; 1.0 for any n below 2, infinite above 170.
ZVI_API double factorial(int n);

/// The smallest of three numbers. A NaN among them makes the answer one of the three, not defined which.
ZVI_API double minimum3(double a, double b, double c);
/// The largest of three numbers, with the same words on NaN.
ZVI_API double maximum3(double a, double b, double c);
/// Both at once.
ZVI_API void bound3(double a, double b, double c, double &min, double &max);

} // namespace zvi::lib
