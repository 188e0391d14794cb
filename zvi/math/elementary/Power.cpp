#include "zvi/math/elementary/AccurateDetail.h"
#include "zvi/math/elementary/Elementary.h"
#include "zvi/math/elementary/ExponentialDetail.h"
#include "zvi/math/elementary/LogarithmDetail.h"

#include <cassert>
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
constexpr double kQuickPower = 256.0;

enum class Parity { kNoInteger, kOdd, kEven };

Parity ParityOf(double y) {
    if (y != std::floor(y))
        return Parity::kNoInteger;
    return std::fabs(y) < 0x1p53 && std::fmod(y, 2.0) != 0.0 ? Parity::kOdd : Parity::kEven;
}

/// e^(y log x) as far as the logarithm is known. What the product of the heads leaves, |y| 2^-16 or less, is rounded
/// three times.
inline bool RoundsPower(double y, Approximation const &log, double &value) {
    constexpr double kProductError = 0x1p-68;
    TwoPart const power = Split(y);
    double const logHead = OnGrid<16>(log.head), logTail = (log.head - logHead) + log.tail;
    ExponentialSeries const series(power.head * logHead, power.tail * logHead + y * logTail);
    return Rounds(series.Up(), kExponentialError + 4.0 * std::fabs(y) * (log.error + kProductError), value);
}

/// When the quick logarithm has too few bits.
[[gnu::noinline]] double SlowPower(double x, double y) {
    Approximation const log = LogarithmOf(x).Value();
    TwoPart const product = Product(y, log.head);
    ExponentialSeries const exponential(product.head, product.tail + y * log.tail);
    double const error = kExponentialError + 4.0 * std::fabs(y) * log.error;
    double value = 0.0;
    return Rounds(exponential.Up(), error, value) ? value : AccuratePow(x, y, log);
}

/// The result of a size of y log x that makes it 0 or infinity.
double PowerBeyond(double size) {
    return size > 0.0 ? kInfinity : 0.0;
}

/// x > 0 and y are finite; x is not 1, y not 0.
double PowerOfPositive(double x, double y) {
    assert(x > 0.0 && x < kInfinity && x != 1.0 && std::fabs(y) < kInfinity && y != 0.0);
    if (std::fabs(y) < kSmallPower)
        return 1.0;
    Approximation const log = LogarithmOf(x).Quick();
    double const size = y * (log.head + log.tail);
    return std::fabs(size) > kGreatestExponent ? PowerBeyond(size) : SlowPower(x, y);
}

/// x or y is infinite, x not negative; neither is NaN, and x is not 1.
double PowerOfInfinite(double x, double y) {
    if (x == 1.0)
        return 1.0;
    return (x > 1.0) == (y > 0.0) ? kInfinity : 0.0;
}

/// Any powers; the quick phase is passed over.
double PowerOfOthers(double x, double y) {
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

} // namespace

double Pow(double x, double y) {
    if (!(IsPositiveAndNormal(x) && std::fabs(y) < kQuickPower && std::fabs(y) > kSmallPower))
        return PowerOfOthers(x, y);
    Approximation const log = LogarithmSeries(x).Quick();
    double const size = y * (log.head + log.tail);
    if (std::fabs(size) > kGreatestExponent)
        return PowerBeyond(size);
    double value = 0.0;
    return RoundsPower(y, log, value) ? value : SlowPower(x, y);
}

} // namespace zvi::lib
