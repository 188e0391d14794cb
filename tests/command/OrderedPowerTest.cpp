#include "zvi/command/OrderedPowerDetail.h"

#include <gtest/gtest.h>

#include <bit>
#include <cmath>
#include <cstdint>
#include <random>

namespace zvi::lib::command::test {

namespace {

/// One multiplication after the other, and the rest by squaring.
double Multiplied(double base, std::int32_t exponent) {
    double product = 1.0;
    std::int32_t left = exponent;
    for (; left > 0 && exponent - left < kMostOrderedFactors; --left) {
        double const next = product * base;
        if (std::fabs(next) == std::fabs(product))
            return std::signbit(base) && left % 2 == 0 ? product : next;
        product = next;
    }
    for (double square = base; left > 0; left >>= 1, square *= square)
        product *= left & 1 ? square : 1.0;
    return product;
}

void Compare(double base, std::int32_t exponent) {
    double const power = OrderedPower(base, exponent);
    ASSERT_EQ(std::bit_cast<std::uint64_t>(power), std::bit_cast<std::uint64_t>(Multiplied(base, exponent)))
        << std::hexfloat << base << "^" << std::dec << exponent;
}

} // namespace

TEST(OrderedPower, IsTheProductBitForBit) {
    for (double const base : {0.0, 1.0, 2.0, 0.5, 1e300, 1e-300, double{INFINITY}, 1.001, 0.999, 1.0 + 0x1p-52,
                              1.0 - 0x1p-53, 1.0 + 0x1p-29, 1.0 - 0x1p-29, 1.0 + 0x3p-40, 1.0 - 0x5p-33}) {
        for (std::int32_t const exponent : {1, 2, 3, 9999, 10000, 10001, 2147483646, 2147483647, -1, -2147483647}) {
            Compare(base, exponent);
            Compare(-base, exponent);
        }
    }
    EXPECT_TRUE(std::isnan(OrderedPower(NAN, 3)));
}

/// Distances to 1 of few bits meet many ties. Longer products go on from shorter ones of the same base.
TEST(OrderedPower, OfABaseNearOneIsTheProductBitForBit) {
    std::mt19937_64 random(20261122);
    for (int i = 0; i < 400; ++i) {
        double const distance = i % 2 ? std::ldexp(static_cast<double>(random() % 64 + 1), -53 + i / 2 % 19)
                                      : std::ldexp(static_cast<double>(random() >> 11), -82 - i / 2 % 24);
        double const base = (i % 3 == 0 ? -1.0 : 1.0) * (random() % 2 ? 1.0 + distance : 1.0 - distance);
        for (int repeat = 0; repeat < 3; ++repeat)
            Compare(base, static_cast<std::int32_t>(random() % 60000));
    }
}

} // namespace zvi::lib::command::test
