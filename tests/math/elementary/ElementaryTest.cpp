#include "zvi/math/elementary/Elementary.h"

#include "tests/math/elementary/Elementaries.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <limits>
#include <numbers>
#include <string_view>

namespace zvi::lib::test {

namespace {

constexpr double kInfinity = std::numeric_limits<double>::infinity();
constexpr double kNaN = std::numeric_limits<double>::quiet_NaN();
constexpr double kPi = std::numbers::pi;

struct Row {
    std::string_view name;
    double x, y, expected;
};

double Ours(Row const &row) {
    static std::vector<Elementary> const kAll = Elementaries();
    auto const of = std::find_if(kAll.begin(), kAll.end(), [&](Elementary const &e) { return e.name == row.name; });
    return of->ours({row.x, row.y});
}

void ExpectRows(std::vector<Row> const &rows) {
    for (Row const &row : rows) {
        double const ours = Ours(row);
        EXPECT_TRUE(IsSame(ours, row.expected))
            << row.name << "(" << row.x << ", " << row.y << ") is " << ours << ", should be " << row.expected;
    }
}

} // namespace

TEST(Elementary, AnswersZerosInfinitiesAndNaNAsTheStandardSays) {
    ExpectRows({
        {"Sin", -0.0, 0, -0.0},
        {"Sin", kInfinity, 0, kNaN},
        {"Cos", -0.0, 0, 1},
        {"Cos", -kInfinity, 0, kNaN},
        {"Tan", -0.0, 0, -0.0},
        {"Tan", kInfinity, 0, kNaN},
        {"Sin", kNaN, 0, kNaN},
        {"Cos", kNaN, 0, kNaN},
        {"Asin", -0.0, 0, -0.0},
        {"Asin", 1, 0, kPi / 2},
        {"Asin", -1, 0, -kPi / 2},
        {"Asin", 1.5, 0, kNaN},
        {"Acos", 1, 0, 0.0},
        {"Acos", -1, 0, kPi},
        {"Acos", -1.5, 0, kNaN},
        {"Acos", 0, 0, kPi / 2},
        {"Atan", -0.0, 0, -0.0},
        {"Atan", -kInfinity, 0, -kPi / 2},
        {"Atan", 1, 0, kPi / 4},
        {"Atan", kNaN, 0, kNaN},
        {"Atan2", -0.0, 0.0, -0.0},
        {"Atan2", 0.0, -0.0, kPi},
        {"Atan2", -0.0, -1, -kPi},
        {"Atan2", 0.0, 1, 0.0},
        {"Atan2", -1, 0, -kPi / 2},
        {"Atan2", 5e-324, -0.0, kPi / 2},
        {"Atan2", 1, -kInfinity, kPi},
        {"Atan2", -1, kInfinity, -0.0},
        {"Atan2", kInfinity, 1, kPi / 2},
        {"Atan2", kInfinity, kInfinity, kPi / 4},
        {"Atan2", -kInfinity, -kInfinity, -3 * kPi / 4},
        {"Atan2", kNaN, 1, kNaN},
        {"Atan2", 1, kNaN, kNaN},
        {"Exp", -0.0, 0, 1},
        {"Exp", kInfinity, 0, kInfinity},
        {"Exp", -kInfinity, 0, 0.0},
        {"Exp", kNaN, 0, kNaN},
        {"Exp", 709.79, 0, kInfinity},
        {"Exp", -745.14, 0, 0.0},
        {"Exp", -745.13, 0, 5e-324},
        {"Log", -0.0, 0, -kInfinity},
        {"Log", 1, 0, 0.0},
        {"Log", -1, 0, kNaN},
        {"Log", kInfinity, 0, kInfinity},
        {"Log10", 0, 0, -kInfinity},
        {"Log10", -kInfinity, 0, kNaN},
        {"Log10", kNaN, 0, kNaN},
        {"Sinh", -0.0, 0, -0.0},
        {"Sinh", -kInfinity, 0, -kInfinity},
        {"Sinh", kNaN, 0, kNaN},
        {"Sinh", 710.48, 0, kInfinity},
        {"Cosh", -0.0, 0, 1},
        {"Cosh", -kInfinity, 0, kInfinity},
        {"Pow", -0.0, -3, -kInfinity},
        {"Pow", -0.0, -2, kInfinity},
        {"Pow", 0.0, -0.5, kInfinity},
        {"Pow", -0.0, -kInfinity, kInfinity},
        {"Pow", -0.0, 3, -0.0},
        {"Pow", -0.0, 0.5, 0.0},
        {"Pow", -1, kInfinity, 1},
        {"Pow", 1, kNaN, 1},
        {"Pow", kNaN, -0.0, 1},
        {"Pow", kNaN, 1, kNaN},
        {"Pow", -8, 1.0 / 3, kNaN},
        {"Pow", -2, 3, -8},
        {"Pow", -2, 0x1p53, kInfinity},
        {"Pow", -2, -1075, -0.0},
        {"Pow", 0.5, -kInfinity, kInfinity},
        {"Pow", 2, -kInfinity, 0.0},
        {"Pow", -kInfinity, -3, -0.0},
        {"Pow", -kInfinity, 3, -kInfinity},
        {"Pow", -kInfinity, 0.5, kInfinity},
        {"Pow", kInfinity, -1, 0.0},
        {"Hypot", -kInfinity, kNaN, kInfinity},
        {"Hypot", kNaN, 1, kNaN},
        {"Hypot", 1, kNaN, kNaN},
        {"Hypot", -0.0, -0.0, 0.0},
        {"Hypot", 1e308, -1.7e308, kInfinity},
        {"Hypot", 5e-324, 0, 5e-324},
        {"Hypot", -3e-320, 4e-320, 5e-320},
    });
    EXPECT_EQ(Hypot(kNaN, 1.0, -kInfinity), kInfinity);
    EXPECT_TRUE(std::isnan(Hypot(1.0, kNaN, 2.0)));
}

/// Arguments at multiples of a quarter turn, and such whose result is a middle of two doubles or nearest to one among
/// 150,000 that were drawn; right after MPFR.
TEST(Elementary, RoundsTheHardCasesCorrectly) {
    ExpectRows({
        {"Sin", 0x1.cc595e47a3818p+2, 0, 0x1.942745d3d919cp-1},
        {"Sin", -0x1.8f7b9cdb81282p+330, 0, 0x1.e2b027a16bdbep-1},
        {"Cos", -0x1.74fd615c852cep+2, 0, 0x1.cbdc2ecf712e4p-1},
        {"Cos", 0x1.184daeb02fcd4p+3, 0, -0x1.92cedf7516748p-1},
        {"Tan", -0x1.e09235f2a0ab8p+1, 0, -0x1.6809a035c99a4p-1},
        {"Tan", -0x1.9d3a6b0d6d345p-3, 0, -0x1.a2edc5a64b774p-3},
        {"Asin", 0x1.f70c44a681b7ep-13, 0, 0x1.f70c44f7711acp-13},
        {"Asin", 0x1.fffa985243eb1p-1, 0, 0x1.8fcc8a6d1a3ebp+0},
        {"Acos", -0x1.ffaa6a189ece6p-1, 0, 0x1.8d7f7bec71104p+1},
        {"Acos", -0x1.ff964159dc0b9p-1, 0, 0x1.8cfb5de1ba687p+1},
        {"Atan", 0x1.ad45d25f34c5bp-12, 0, 0x1.ad45d0ccdc6dep-12},
        {"Atan", -0x1.d1e3124f1ac8p-3, 0, -0x1.ca175da641c6p-3},
        {"Atan2", 0x1.f212ec10c401bp-999, -0x1.041f875e1956ep-998, 0x1.306124851fdabp+1},
        {"Atan2", 0x1.b0940b4b7fae2p-11, -0x1.57fd1f35d4717p-28, 0x1.92201b0d904abp+0},
        {"Exp", -0x1.2effffb97ba92p-46, 0, 0x1.fffffffffff69p-1},
        {"Exp", -0x1.a76fa9896477p-9, 0, 0x1.fe593f3ec8558p-1},
        {"Log", 0x1.53b84db57eb65p-1022, 0, -0x1.620e865466eafp+9},
        {"Log", 0x1.fd59ff4ab20fp-1, 0, -0x1.53e1968c19ed1p-8},
        {"Log10", 0x1.cd6e58e3d04c9p+8, 0, 0x1.550173b197c33p+1},
        {"Log10", 0x1.13044be6c048fp-1020, 0, -0x1.3304fc66d7843p+8},
        {"Pow", 0x1p-1, -0x1.3eb1121d152f3p-16, 0x1.0000dce6d5852p+0},
        {"Pow", 0x1.47e49a704944ap+994, 0x1.4643edaa93244p-1, 0x1.8f3e625110c92p+633},
        {"Sinh", 0x1.5f3a15a33331ep-2, 0, 0x1.66277bafd02b4p-2},
        {"Sinh", 0x1.df2adc02d5152p-11, 0, 0x1.df2ae061fd0c3p-11},
        {"Cosh", 0x1.127d03a63660ap+2, 0, 0x1.2398189b43d42p+5},
        {"Cosh", -0x1.a56669cd7202p-14, 0, 0x1.00000015ad5p+0},
        {"Hypot", -0x1.8345779a4f8d6p+6, 0x1.f55ec8624c6fcp+5, 0x1.cd53951bdc61ep+6},
        {"Hypot", 0x1.3325574788078p+5, -0x1.bc1c90f8ffc48p+3, 0x1.4698e68347278p+5},
        {"Sin", kPi, 0, 0x1.1a62633145c07p-53},
        {"Cos", kPi / 2, 0, 0x1.1a62633145c07p-54},
        {"Exp", 0x1p-53, 0, 1 + 0x1p-52}, // all but a middle
        {"Exp", -0x1p-54, 0, 1},
        {"Log10", 1e22, 0, 22},
        {"Pow", 94906267, 2, 0x1.0000007c84becp+53}, // a middle, as the next one

        {"Pow", 208065, 3, 0x1.00011add69b20p+53},
        {"Pow", 2, -1074, 5e-324},
        {"Pow", 2, -1075, 0}, // half of the least double
        {"Hypot", 3, 4, 5},
        {"Hypot", 6500000180000001, 7200000080000000, 9700000180000000},
        {"Atan2", 5e-324, 2, 0},        // less than half of the least double
        {"Atan2", 1.5e-323, 2, 5e-324}, // less than one and a half of it
    });
    EXPECT_EQ(Sin(0x1.6ac5b262ca1ffp+849), 1.0);
    EXPECT_EQ(Hypot(2.0, 3.0, 6.0), 7.0);
    EXPECT_EQ(Hypot(6500000180000001, 7200000080000000, 1e-300), 9700000180000002); // a little more than the middle
}

/// The bits of 10,000 results of each function, which are the same on every compiler, processor and host.
TEST(Elementary, GivesTheSameBitsEverywhere) {
    std::uint64_t hash = 0;
    for (Elementary const &of : Elementaries()) {
        ArgumentSource arguments(20240607);
        for (std::size_t i = 0; i < 10'000; ++i) {
            double const result = of.ours(arguments.Next(of, i));
            hash = (hash ^ std::bit_cast<std::uint64_t>(std::isnan(result) ? 0.0 : result)) * 0x9e3779b97f4a7c15;
            hash ^= hash >> 29;
        }
    }
    EXPECT_EQ(hash, 7051714594204107775U);
}

} // namespace zvi::lib::test
