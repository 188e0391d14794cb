#include "zvi/math/elementary/AccurateDetail.h"
#include "zvi/math/elementary/Elementary.h"
#include "zvi/math/elementary/ExponentialDetail.h"
#include "zvi/math/elementary/LogarithmDetail.h"

#include <limits>

namespace zvi::lib {

using namespace math;

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
/// A greater size of y log x gives infinity, or 0.
constexpr double kGreatestExponent = 746.0;
/// A smaller one of y gives 1 for every finite x: y log x is less than half of the last place below 1.
constexpr double kSmallPower = 0x1p-65;

/// A greater one of y needs a logarithm with more bits.
constexpr double kQuickPower = 64.0;

enum class Parity { kNoInteger, kOdd, kEven };

Parity ParityOf(double y) {
    if (y != std::floor(y))
        return Parity::kNoInteger;
    return std::fabs(y) < 0x1p53 && std::fmod(y, 2.0) != 0.0 ? Parity::kOdd : Parity::kEven;
}

/// e^(y log x) as far as the logarithm is known.
bool RoundsPower(double y, Approximation const &log, double &value) {
    TwoPart const power = Split(y);
    double const logHead = OnGrid<16>(log.head), logTail = (log.head - logHead) + log.tail;
    ExponentialSeries const series(power.head * logHead, power.tail * logHead + y * logTail);
    return Rounds(series.Up(), kExponentialError + 4.0 * std::fabs(y) * log.error, value);
}

/// x > 0 and y are finite; x is not 1, y not 0.
double PowerOfPositive(double x, double y) {
    if (std::fabs(y) < kSmallPower)
        return 1.0;
    LogarithmSeries const series(x);
    Approximation const middle = series.Middle();
    double const size = y * (middle.head + middle.tail);
    if (std::fabs(size) > kGreatestExponent)
        return size > 0.0 ? kInfinity : 0.0;
    double value = 0.0;
    if (std::fabs(y) < kQuickPower && RoundsPower(y, middle, value))
        return value;
    Approximation const log = series.Value();
    TwoPart const product = Product(y, log.head);
    ExponentialSeries const exponential(product.head, product.tail + y * log.tail);
    double const error = kExponentialError + 4.0 * std::fabs(y) * log.error;
    return Rounds(exponential.Up(), error, value) ? value : AccuratePow(x, y, log);
}

/// x or y is infinite; neither is NaN, and x is not 1.
double PowerOfInfinite(double x, double y) {
    double const size = std::fabs(x);
    if (size == 1.0)
        return 1.0;
    return (size > 1.0) == (y > 0.0) ? kInfinity : 0.0;
}

} // namespace

double Pow(double x, double y) {
    if (x == 1.0 || y == 0.0)
        return 1.0;
    if (x > 0.0 && x < kInfinity && std::fabs(y) < kInfinity)
        return PowerOfPositive(x, y);
    if (std::isnan(x) || std::isnan(y))
        return x + y;
    Parity const parity = ParityOf(y);
    bool const isNegative = std::signbit(x) && parity == Parity::kOdd;
    double const size = std::fabs(x);
    double value = 1.0;
    if (size == kInfinity || std::fabs(y) == kInfinity)
        value = PowerOfInfinite(size, y);
    else if (size == 0.0)
        value = y > 0.0 ? 0.0 : kInfinity;
    else if (x < 0.0 && parity == Parity::kNoInteger)
        return std::numeric_limits<double>::quiet_NaN();
    else if (size != 1.0)
        value = PowerOfPositive(size, y);
    return isNegative ? -value : value;
}

} // namespace zvi::lib
