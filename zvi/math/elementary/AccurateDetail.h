#pragma once

// The accurate phase of the elementary functions: what is asked when the fast phase cannot tell how to round, about
// once in a thousand calls. It computes with 256 bits. A double `x` is finite, and where its function takes no other,
// from its domain; `near` is the value of the fast phase, right to 2^-60.

#include "zvi/math/elementary/TwoPartDetail.h"

namespace zvi::lib::math {

double AccurateSin(double x);
double AccurateCos(double x);
double AccurateTan(double x);
double AccurateAsin(double x, Approximation const &near);
double AccurateAcos(double x, Approximation const &near);
/// x and y are not 0.
double AccurateAtan2(double y, double x, Approximation const &near);
/// The same for a positive x and |y / x| of at most 2^-60.
double AccurateSmallAngle(double y, double x);
double AccurateExp(double x);
double AccurateLog(double x, Approximation const &near);
double AccurateLog10(double x, Approximation const &nearLog);
/// x is positive, |y log x| < 1000.
double AccuratePow(double x, double y, Approximation const &nearLog);
double AccurateSinh(double x);
double AccurateCosh(double x);
double AccurateHypot(double x, double y, double z);

} // namespace zvi::lib::math
