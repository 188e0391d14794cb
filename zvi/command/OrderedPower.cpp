#include "zvi/command/OrderedPowerDetail.h"

#include "zvi/base/HashMix.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <cmath>
#include <cstddef>

namespace zvi::lib::command {

namespace {

/// How close to 1 a factor has to be for `StepsAlike` to be quicker than the multiplications that it saves.
constexpr double kNearOne = 0x1p-29;

/// Factors from which on a product is worth remembering.
constexpr std::int32_t kWorthRemembering = 10'000;

/// A product of `count` factors.
struct Product {
    double factor = 0.0;
    std::int32_t count = 0;
    double value = 1.0;
};

/// How often in a row the rounded product, which the next factor changes by `step`, changes by the same; at least once
/// and at most `most` times. The factor is 1 + `distance` and near to 1, so that the product stays in the binade above
/// 1 or below it, and the steps are the same until product * distance has crossed a middle between two last places. The
/// divisions are off by less than two steps, so four are left to the multiplication, and so is every tie.
std::int32_t StepsAlike(double product, double step, double distance, std::int32_t most) {
    assert(std::fabs(distance) < kNearOne && distance != 0.0 && most > 0);
    double const lastPlace = distance > 0.0 ? 0x1p-52 : 0x1p-53;
    double const end = (step + 0.5 * lastPlace) / distance;
    double const steps = (end - product) / step - 4.0;
    return steps < most ? std::max(static_cast<std::int32_t>(steps), 1) : most;
}

/// Multiplies by further factors up to `count` of them. Stops before where a further one changes nothing.
void Continue(Product &product, std::int32_t count) {
    double const distance = product.factor - 1.0;
    bool const isNearOne = std::fabs(distance) < kNearOne;
    double value = product.value;
    while (product.count < count) {
        double const next = value * product.factor;
        if (next == value)
            break;
        std::int32_t const steps = isNearOne ? StepsAlike(value, next - value, distance, count - product.count) : 1;
        value = isNearOne ? value + steps * (next - value) : next;
        product.count += steps;
    }
    product.value = value;
}

/// The product of `count` factors, or of those before where a further one changes nothing. Goes on where it stopped
/// when the same factor was multiplied last, as texts like to repeat themselves.
Product InOrder(double factor, std::int32_t count) {
    constexpr std::size_t kRemembered = 16;
    static thread_local std::array<Product, kRemembered> remembered;
    Product product{factor};
    if (count < kWorthRemembering) {
        Continue(product, count);
        return product;
    }
    Product &last = remembered[base::HighHalf(base::Mix(0, base::BitsOf(factor))) % kRemembered];
    if (last.factor == factor && last.count <= count)
        product = last;
    Continue(product, count);
    return last = product;
}

} // namespace

double OrderedPower(double base, std::int32_t exponent) {
    if (exponent < 0)
        return 1.0;
    if (std::isnan(base))
        return base;
    double const factor = std::fabs(base);
    std::int32_t const count = std::min(exponent, kMostOrderedFactors);
    Product const ordered = InOrder(factor, count);
    double product = ordered.value;
    std::int32_t left = ordered.count < count ? 0 : exponent - count;
    for (double square = factor; left > 0; left >>= 1, square *= square) {
        if (left & 1)
            product *= square;
    }
    return std::signbit(base) && exponent % 2 == 1 ? -product : product;
}

} // namespace zvi::lib::command
