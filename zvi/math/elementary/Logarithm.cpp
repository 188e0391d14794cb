#include "zvi/math/elementary/LogarithmDetail.h"

#include "zvi/math/elementary/AccurateDetail.h"
#include "zvi/math/elementary/Elementary.h"

#include <limits>

namespace zvi::lib {

using namespace math;

namespace {

/// By how much the product with 1 / log 10 is wrong, in parts of it and of the logarithm's tail.
constexpr double kProductError = 0x1p-76;
constexpr double kTailError = 0x1p-52;

/// The logarithm of base 10 from that of base e.
inline Approximation ToBaseTen(Approximation const &log) {
    TwoPart const parts = Split(log.head);
    double const large = parts.head * kLog10Head, small = parts.tail * kLog10Head;
    TwoPart const sum = QuickSum(large, small);
    return {sum.head, sum.tail + (log.head * kLog10Tail + log.tail * (kLog10Head + kLog10Tail)),
            0.5 * log.error + (kProductError * std::fabs(sum.head) + kTailError * std::fabs(log.tail))};
}

/// When the quick phase could not tell.
[[gnu::cold]] double SlowLog(double x) {
    Approximation const log = LogarithmOf(x).Value();
    double value = 0.0;
    return Rounds(log, value) ? value : AccurateLog(x, log);
}

[[gnu::cold]] double SlowLog10(double x) {
    Approximation const log = LogarithmOf(x).Value();
    double value = 0.0;
    return Rounds(ToBaseTen(log), value) ? value : AccurateLog10(x, log);
}

/// The answer to what is no normal number above 0; `slow` takes the subnormal ones.
double LogarithmOfOthers(double x, double (*slow)(double)) {
    if (x == 0.0)
        return -std::numeric_limits<double>::infinity();
    if (x < 0.0)
        return std::numeric_limits<double>::quiet_NaN();
    return x < kLeastNormal ? slow(x) : x;
}

} // namespace

double Log(double x) {
    if (!IsPositiveAndNormal(x))
        return LogarithmOfOthers(x, SlowLog);
    double value = 0.0;
    return Rounds(LogarithmSeries(x).Quick(), value) ? value : SlowLog(x);
}

double Log10(double x) {
    if (!IsPositiveAndNormal(x))
        return LogarithmOfOthers(x, SlowLog10);
    double value = 0.0;
    return Rounds(ToBaseTen(LogarithmSeries(x).Quick()), value) ? value : SlowLog10(x);
}

} // namespace zvi::lib
