#include "zvi/math/func/MCompFunc.h"

#include <cmath>

namespace zvi::lib {

namespace {

constexpr double kFastLimit = 1e-12;     // FastCompDouble: differences up to it are none
constexpr double kAbsoluteLimit = 1e-10; // CompReal: smaller differences are none, whatever the size of the values
constexpr double kStepLimit = 32.0;      // CompReal: neither are this many steps from one double to the next

} // namespace

int MCompFunc::FastCompDouble(double a, double b) {
    double const difference = a - b;
    if (difference > kFastLimit)
        return 1;
    return difference < -kFastLimit ? -1 : 0;
}

int MCompFunc::CompReal(double a, double b) {
    double const difference = std::abs(a - b);
    if (difference < kAbsoluteLimit)
        return 0;
    double const smaller = a > b ? b : a;
    double const larger = a > b ? a : b;
    double const step = std::nextafter(smaller, larger) - smaller;
    bool const differs = step * kStepLimit < difference;
    if (a > b)
        return differs ? 1 : 0;
    return differs ? -1 : 0;
}

} // namespace zvi::lib
