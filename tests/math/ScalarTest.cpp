#include "zvi/math/Scalar.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>

namespace zvi::lib {

TEST(Scalar, ZeroTestsLeaveTheirLimitOut) {
    struct Row {
        double x;
        bool zero, notZero;
    };
    double const nan = std::nan("");
    for (Row const &row : {Row{0.0, true, false}, Row{-9.9e-9, true, false}, Row{1e-8, false, false},
                           Row{-1e-8, false, false}, Row{1.1e-8, false, true}, Row{nan, false, false}}) {
        EXPECT_EQ(is_zero(row.x), row.zero) << row.x;
        EXPECT_EQ(is_not_zero(row.x), row.notZero) << row.x;
        EXPECT_EQ(isequal(row.x, 0.0), row.zero) << row.x;
        double chopped = row.x;
        chop(chopped);
        EXPECT_EQ(chopped == 0.0, row.zero) << row.x;
    }
}

TEST(Scalar, ApproximateIncludesBothEnds) {
    EXPECT_TRUE(approximate(1.0, 1.5, 0.5));
    EXPECT_TRUE(approximate(2.0, 1.5, 0.5));
    EXPECT_FALSE(approximate(0.999, 1.5, 0.5));
    EXPECT_FALSE(approximate(2.001, 1.5, 0.5));
}

TEST(Scalar, ThirdNumberIsComparedWithTheFirstAlone) {
    EXPECT_TRUE(is_equal3(0.0, 1e-8, 0.0)) << "the first comparison lets the limit pass";
    EXPECT_FALSE(is_equal3(0.0, 0.0, 1e-8)) << "the second does not";
    EXPECT_TRUE(is_equal3(0.0, 9e-9, -9e-9)) << "b and c differ by more";
    EXPECT_FALSE(is_equal3(0.0, 1.1e-8, 0.0));
    EXPECT_FALSE(is_equal3(1.0, -1.0, 1.0));
    EXPECT_TRUE(is_equal3(1.0, std::nan(""), 1.0)) << "the first comparison rejects, the second accepts";
    EXPECT_FALSE(is_equal3(1.0, 1.0, std::nan("")));
}

TEST(Scalar, CleanLooksAtEachCoordinate) {
    double v[3] = {0.1, -0.05, 0.02};
    clean(v, 0.05);
    EXPECT_EQ(v[0], 0.1);
    EXPECT_EQ(v[1], -0.05);
    EXPECT_EQ(v[2], 0.0);
}

TEST(Scalar, RoundingFavoursThePositiveSide) {
    struct Row {
        double x, off, up;
    };
    for (Row const &row :
         {Row{2.4999995, 3.0, 3.0}, Row{2.499, 2.0, 3.0}, Row{-2.7, -2.0, -2.0}, Row{-2.5, -2.0, -2.0},
          Row{2.000000005, 2.0, 2.0}, Row{2.00000002, 2.0, 3.0}, Row{7.0, 7.0, 7.0}, Row{1e300, 1e300, 1e300}}) {
        EXPECT_EQ(round_off(row.x), row.off) << row.x;
        EXPECT_EQ(round_up(row.x), row.up) << row.x;
    }
}

TEST(Scalar, DegreesAndFactorials) {
    EXPECT_EQ(radian(180.0), 4.0 * std::atan(1.0));
    EXPECT_DOUBLE_EQ(degree(radian(30.0)), 30.0);
    EXPECT_EQ(factorial(-3), 1.0);
    EXPECT_EQ(factorial(1), 1.0);
    EXPECT_EQ(factorial(10), 3628800.0);
    EXPECT_TRUE(std::isfinite(factorial(170)));
    EXPECT_TRUE(std::isinf(factorial(std::numeric_limits<int>::max())));
}

TEST(Scalar, BoundsOfThreeInEveryOrder) {
    double const orders[6][3] = {{1, 2, 3}, {1, 3, 2}, {2, 1, 3}, {2, 3, 1}, {3, 1, 2}, {3, 2, 1}};
    for (auto const &order : orders) {
        double min = 0.0;
        double max = 0.0;
        bound3(order[0], order[1], order[2], min, max);
        EXPECT_EQ(min, 1.0);
        EXPECT_EQ(max, 3.0);
    }
}

} // namespace zvi::lib
