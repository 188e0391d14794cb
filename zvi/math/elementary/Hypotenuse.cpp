#include "zvi/math/elementary/AccurateDetail.h"
#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <limits>

namespace zvi::lib {

using namespace math;

namespace {

/// Squares of numbers between the two neither run over nor lose bits, nor do the parts of the squares.
constexpr double kGreatest = 0x1p500;
constexpr double kLeast = 0x1p-400;
/// A number so much smaller than another one does not change its length.
constexpr double kNothingBeside = 0x1p-30;

constexpr double kRootError = 0x1p-76;

/// The head of 52 bits, the tail with an error of 2^-79 of the square.
TwoPart Square(double a) {
    TwoPart const parts = Split(a);
    return {parts.head * parts.head, parts.tail * (a + parts.head)};
}

/// Of head + tail, by the root of the head and one step of Newton's.
Approximation RootOf(TwoPart const &square) {
    double const root = std::sqrt(square.head);
    TwoPart const back = Square(root);
    return {root, ((square.head - back.head) - back.tail + square.tail) / (root + root), kRootError * root};
}

/// Whether one of the three is infinite or NaN; `result` is the answer then.
bool IsSpecial(double x, double y, double z, double &result) {
    if (std::isinf(x) || std::isinf(y) || std::isinf(z))
        result = std::numeric_limits<double>::infinity();
    else if (std::isnan(x) || std::isnan(y) || std::isnan(z))
        result = std::numeric_limits<double>::quiet_NaN();
    else
        return false;
    return true;
}

} // namespace

double Hypot(double x, double y) {
    double const large = std::max(std::fabs(x), std::fabs(y)), small = std::min(std::fabs(x), std::fabs(y));
    if (!(std::fabs(x) + std::fabs(y) < kGreatest && small > kLeast)) {
        double result = 0.0;
        if (IsSpecial(x, y, 0.0, result))
            return result;
        return small <= large * kNothingBeside ? large : AccurateHypot(x, y, 0.0);
    }
    TwoPart const first = Square(large), second = Square(small);
    TwoPart const sum = QuickSum(first.head, second.head);
    double value = 0.0;
    Approximation const root = RootOf(QuickSum(sum.head, sum.tail + (first.tail + second.tail)));
    return Rounds(root, value) ? value : AccurateHypot(x, y, 0.0);
}

double Hypot(double x, double y, double z) {
    if (z == 0.0 || x == 0.0 || y == 0.0)
        return z == 0.0 ? Hypot(x, y) : x == 0.0 ? Hypot(y, z) : Hypot(x, z);
    double const small = std::min({std::fabs(x), std::fabs(y), std::fabs(z)});
    if (!(std::fabs(x) + std::fabs(y) + std::fabs(z) < kGreatest && small > kLeast)) {
        double result = 0.0;
        return IsSpecial(x, y, z, result) ? result : AccurateHypot(x, y, z);
    }
    TwoPart const a = Square(x), b = Square(y), c = Square(z);
    TwoPart const two = Sum(a.head, b.head), sum = Sum(two.head, c.head);
    double value = 0.0;
    Approximation const root = RootOf(QuickSum(sum.head, sum.tail + (two.tail + (a.tail + (b.tail + c.tail)))));
    return Rounds(root, value) ? value : AccurateHypot(x, y, z);
}

} // namespace zvi::lib
