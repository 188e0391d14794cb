#include "zvi/math/free/Scalar.h"

#include "zvi/base/Pi.h"
#include "zvi/math/free/FreeFamilyDetail.h"

#include <algorithm>
#include <cmath>

namespace zvi::lib {

using math::kScalarZero;

namespace {

/// A rest above it rounds up in `round_off`: a little under one half, so that a half that lost its last digits does.
constexpr double kRoundOffRest = 0.499999;
/// A rest above it counts as a started unit in `round_up`.
constexpr double kRoundUpRest = 1e-8;

double RoundByRest(double x, double limit) {
    double const whole = std::trunc(x);
    return x - whole > limit ? whole + 1.0 : whole;
}

} // namespace

bool is_zero(double x) {
    return std::abs(x) < kScalarZero;
}

bool is_not_zero(double x) {
    return std::abs(x) > kScalarZero;
}

bool isequal(double a, double b) {
    return std::abs(a - b) < kScalarZero;
}

bool approximate(double a, double b, double tol) {
    return a >= b - tol && b + tol >= a;
}

bool is_equal3(double a, double b, double c) {
    if (std::abs(a - b) > kScalarZero)
        return false;
    return std::abs(a - c) < kScalarZero;
}

void chop(double &x) {
    if (std::abs(x) < kScalarZero)
        x = 0.0;
}

void clean(double *xyz, double tol) {
    for (int i = 0; i < 3; ++i) {
        if (std::abs(xyz[i]) < tol)
            xyz[i] = 0.0;
    }
}

double round_off(double x) {
    return RoundByRest(x, kRoundOffRest);
}

double round_up(double x) {
    return RoundByRest(x, kRoundUpRest);
}

double radian(double degrees) {
    return base::kPi * degrees / 180.0;
}

double degree(double radians) {
    return radians * 180.0 / base::kPi;
}

double factorial(int n) {
    constexpr int kLargestFinite = 170;
    double product = 1.0;
    for (int factor = 2; factor <= std::min(n, kLargestFinite + 1); ++factor)
        product *= factor;
    return product;
}

double minimum3(double a, double b, double c) {
    return std::min(std::min(a, b), c);
}

double maximum3(double a, double b, double c) {
    return std::max(std::max(a, b), c);
}

void bound3(double a, double b, double c, double &min, double &max) {
    double const smallest = minimum3(a, b, c);
    max = maximum3(a, b, c);
    min = smallest;
}

} // namespace zvi::lib
