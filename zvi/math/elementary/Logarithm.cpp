#include "zvi/math/elementary/LogarithmDetail.h"

#include "zvi/math/elementary/AccurateDetail.h"
#include "zvi/math/elementary/Elementary.h"

#include <limits>

namespace zvi::lib {

using namespace math;

namespace {

/// By how much the product with 1 / log 10 is wrong, in parts of it.
constexpr double kProductError = 0x1p-76;

/// Nearer to 1 the quick phase does not know enough bits.
constexpr double kNearOne = 0.0625;

/// The answer to what is no finite number above 0.
double LogarithmOfOthers(double x) {
    if (x == 0.0)
        return -std::numeric_limits<double>::infinity();
    return x < 0.0 ? std::numeric_limits<double>::quiet_NaN() : x;
}

bool IsPositiveAndFinite(double x) {
    return x > 0.0 && x <= std::numeric_limits<double>::max();
}

/// The logarithm of base 10 from that of base e.
Approximation ToBaseTen(Approximation const &log) {
    TwoPart const parts = Split(log.head);
    double const large = parts.head * kLog10Head, small = parts.tail * kLog10Head;
    TwoPart const sum = QuickSum(large, small);
    return {sum.head, sum.tail + (log.head * kLog10Tail + log.tail * (kLog10Head + kLog10Tail)),
            0.5 * log.error + kProductError * std::fabs(sum.head)};
}

} // namespace

double Log(double x) {
    if (!IsPositiveAndFinite(x))
        return LogarithmOfOthers(x);
    LogarithmSeries const series(x);
    double value = 0.0;
    if (std::fabs(x - 1.0) > kNearOne && Rounds(series.Quick(), value))
        return value;
    Approximation const log = series.Value();
    return Rounds(log, value) ? value : AccurateLog(x, log);
}

double Log10(double x) {
    if (!IsPositiveAndFinite(x))
        return LogarithmOfOthers(x);
    LogarithmSeries const series(x);
    double value = 0.0;
    if (std::fabs(x - 1.0) > kNearOne && Rounds(ToBaseTen(series.Quick()), value))
        return value;
    Approximation const log = series.Value();
    return Rounds(ToBaseTen(log), value) ? value : AccurateLog10(x, log);
}

} // namespace zvi::lib
