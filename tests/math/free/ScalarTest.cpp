#include "zvi/math/free/Scalar.h"

#include "tests/math/Near.h"

#include <limits>

namespace zvi::lib::test {

TEST(Scalar, ZeroTestsLeaveTheirLimitOut) {
    for (auto const &[x, zero, notZero] : Rows<3>("0 1 0; -9.9e-9 1 0; 1e-8 0 0; -1e-8 0 0; 1.1e-8 0 1; nan 0 0")) {
        EXPECT_EQ(is_zero(x), zero) << x;
        EXPECT_EQ(is_not_zero(x), notZero) << x;
        EXPECT_EQ(isequal(x, 0.0), zero) << x;
        double chopped = x;
        chop(chopped);
        EXPECT_EQ(chopped == 0.0, zero) << x;
    }
}

TEST(Scalar, ApproximateIncludesBothEnds) {
    for (auto const &[x, holds] : Rows<2>("1 1; 2 1; 0.999 0; 2.001 0"))
        EXPECT_EQ(approximate(x, 1.5, 0.5), holds) << x;
}

TEST(Scalar, ThirdNumberIsComparedWithTheFirstAlone) {
    // The first comparison lets its limit and a not-a-number pass, the second does not.
    for (auto const &[a, b, c, holds] : Rows<4>("0 1e-8 0 1; 0 0 1e-8 0; 0 9e-9 -9e-9 1; 0 1.1e-8 0 0; 1 -1 1 0;"
                                                "1 nan 1 1; 1 1 nan 0"))
        EXPECT_EQ(is_equal3(a, b, c), holds) << a << ' ' << b << ' ' << c;
}

TEST(Scalar, CleanLooksAtEachCoordinate) {
    Xyz v{0.1, -0.05, 0.02};
    clean(v, 0.05);
    EXPECT_EQ(v, (Xyz{0.1, -0.05, 0.0}));
}

TEST(Scalar, RoundingFavoursThePositiveSide) {
    for (auto const &[x, off, up] : Rows<3>("2.4999995 3 3; 2.499 2 3; -2.7 -2 -2; -2.5 -2 -2; 2.000000005 2 2;"
                                            "2.00000002 2 3; 7 7 7; 1e300 1e300 1e300")) {
        EXPECT_EQ(round_off(x), off) << x;
        EXPECT_EQ(round_up(x), up) << x;
    }
}

TEST(Scalar, DegreesAndFactorials) {
    EXPECT_EQ(radian(180.0), 4.0 * std::atan(1.0));
    EXPECT_DOUBLE_EQ(degree(radian(30.0)), 30.0);
    EXPECT_EQ(factorial(-3), 1.0);
    EXPECT_EQ(factorial(10), 3628800.0);
    EXPECT_TRUE(std::isfinite(factorial(170)));
    EXPECT_TRUE(std::isinf(factorial(std::numeric_limits<int>::max())));
}

TEST(Scalar, BoundsOfThreeInEveryOrder) {
    for (auto const &[a, b, c] : Rows<3>("1 2 3; 1 3 2; 2 1 3; 2 3 1; 3 1 2; 3 2 1")) {
        Xy bounds{};
        bound3(a, b, c, bounds[0], bounds[1]);
        EXPECT_EQ(bounds, (Xy{1, 3})) << a << b << c;
    }
}

} // namespace zvi::lib::test
