#include "zvi/math/elementary/AccurateDetail.h"
#include "zvi/math/elementary/Elementary.h"

#include <algorithm>
#include <cassert>
#include <limits>

namespace zvi::lib {

using namespace math;

namespace {

/// Between the two, no square of the greatest number runs over, and nothing that counts beside it is lost.
constexpr double kGreatest = 0x1p500;
constexpr double kLeast = 0x1p-400;
/// A number so much smaller than another one does not change its length.
constexpr double kNothingBeside = 0x1p-30;
constexpr double kEnd = std::numeric_limits<double>::infinity();

/// In parts of the root. With u the unit of HeadOnUnit and g, at least 2^24 u, the greatest number, what a head leaves
/// is at most u, and its product with a sum of at most 2 g + u is wrong by 2^-75 g^2 at most. Three of them and the
/// additions are wrong by 2^-72.4 g^2, which is half as much in parts of the root; Newton's step adds 2^-76.
constexpr double kRootError = 0x1p-73;

/// The multiple next to x, from [0, greatest], of a unit that goes into `greatest` 2^24 to 2^25 times: a sum of three
/// squares of such multiples is exact.
double HeadOnUnit(double x, double greatest) {
    assert(0.0 <= x && x <= greatest);
    double const shift = greatest * 0x1p28;
    return (x + shift) - shift;
}

/// Of head + tail, which is above 0, the head exact, by the root of their sum and one step of Newton's.
Approximation RootOf(double head, double tail) {
    assert(head + tail > 0.0);
    double const square = head + tail, inverse = 0.5 / square;
    double const root = std::sqrt(square);
    TwoPart const parts = CutInTwo(root);
    double const left =
        ((square - parts.head * parts.head) - parts.tail * (root + parts.head)) + ((head - square) + tail);
    return {root, left * (root * inverse), kRootError * root};
}

/// Infinities and NaN, and numbers that are very large or small.
double LengthOfOthers(double x, double y, double z) {
    if (std::isinf(x) || std::isinf(y) || std::isinf(z))
        return std::numeric_limits<double>::infinity();
    if (std::isnan(x) || std::isnan(y) || std::isnan(z))
        return std::numeric_limits<double>::quiet_NaN();
    return AccurateHypot(x, y, z);
}

} // namespace

double Hypot(double x, double y) {
    double const width = std::fabs(x), height = std::fabs(y), greatest = std::max(width, height);
    if (!(width + height < kGreatest && greatest > kLeast)) {
        bool const isAlone = std::min(width, height) <= greatest * kNothingBeside;
        return isAlone && width + height < kEnd ? greatest : LengthOfOthers(x, y, 0.0);
    }
    double const xHead = HeadOnUnit(width, greatest), yHead = HeadOnUnit(height, greatest);
    double const tail = (width - xHead) * (width + xHead) + (height - yHead) * (height + yHead);
    double value = 0.0;
    return Rounds(RootOf(xHead * xHead + yHead * yHead, tail), value) ? value : AccurateHypot(x, y, 0.0);
}

double Hypot(double x, double y, double z) {
    double const width = std::fabs(x), height = std::fabs(y), depth = std::fabs(z);
    double const greatest = std::max(std::max(width, height), depth);
    if (!(width + height + depth < kGreatest && greatest > kLeast))
        return LengthOfOthers(x, y, z);
    double const xHead = HeadOnUnit(width, greatest), yHead = HeadOnUnit(height, greatest),
                 zHead = HeadOnUnit(depth, greatest);
    double const tail =
        (width - xHead) * (width + xHead) + ((height - yHead) * (height + yHead) + (depth - zHead) * (depth + zHead));
    double const head = xHead * xHead + (yHead * yHead + zHead * zHead);
    double value = 0.0;
    return Rounds(RootOf(head, tail), value) ? value : AccurateHypot(x, y, z);
}

} // namespace zvi::lib
