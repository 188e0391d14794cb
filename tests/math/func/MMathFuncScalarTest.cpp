#include "zvi/math/func/MMathFunc.h"

#include "tests/math/Near.h"
#include "zvi/math/func/MCompFunc.h"

#include <climits>
#include <numbers>

namespace zvi::lib::test {

namespace {

// Initialised before anything else of this program: it must see the constants all the same.
double const piAtLoad = MMathFunc::m_pi * MMathFunc::m_trang * MMathFunc::m_trrad;

} // namespace

TEST(MMathFuncScalar, ConstantsHoldTheirValuesAtLoad) {
    EXPECT_EQ(MMathFunc::m_NormalZero, 1e-15);
    EXPECT_EQ(MMathFunc::m_pi, 4.0 * std::atan(1.0));
    EXPECT_EQ(MMathFunc::m_trrad, MMathFunc::m_pi / 180.0);
    EXPECT_EQ(MMathFunc::m_trang, 180.0 / MMathFunc::m_pi);
    EXPECT_NEAR(piAtLoad, 3.14159265358979, 1e-14);
    EXPECT_EQ(MMathFunc::SquareNonZero(), 1e-4 * MMathFunc::NonZero());
}

TEST(MMathFuncScalar, ZeroTestsAreStrict) {
    for (auto const &[x, zero] : Rows<2>("1e-8 0; -1e-8 0; 0.9999e-8 1; -0.9999e-8 1")) {
        EXPECT_EQ(MMathFunc::IsZero(x), zero) << x;
        EXPECT_EQ(MMathFunc::IsEqual(0.0, x), zero) << x;
    }
    EXPECT_EQ(MMathFunc::IsEqual(5.0, 5.0 + 9e-9), 1);
    EXPECT_EQ(MMathFunc::IsZero(Xyz{0, -0.99e-6, 0}), 1);
    EXPECT_EQ(MMathFunc::IsZero(Xyz{0, 0, 1.001e-6}), 0);
}

TEST(MMathFuncScalar, MakeNonZeroMovesUpWhateverTheSign) {
    for (auto const &[before, after] : Rows<2>("-1e-9 1e-8; 0 1e-8; -1e-8 -1e-8; 2e-8 2e-8")) {
        double value = before;
        MMathFunc::MakeNonZero(value);
        EXPECT_EQ(value, after) << before;
    }
    Xyz v{5e-7, 0.0, -5e-7};
    MMathFunc::MakeNonZero(v);
    EXPECT_EQ(v, (Xyz{0, 0, 1e-8}));
}

TEST(MMathFuncScalar, SineAndCosineSnapAtTheAxes) {
    EXPECT_EQ(MMathFunc::mathSin(std::numbers::pi), 0.0);
    EXPECT_EQ(MMathFunc::mathCos(std::numbers::pi / 2.0), 0.0);
    EXPECT_EQ(MMathFunc::mathCos(std::numbers::pi + 1e-8), -1.0);
    EXPECT_EQ(MMathFunc::mathSin(std::numbers::pi / 2.0 + 1e-8), 1.0);
    EXPECT_EQ(MMathFunc::mathSin(2e-15), 2e-15);
    EXPECT_EQ(MMathFunc::mathAsin(1.5), std::asin(1.0));
    EXPECT_EQ(MMathFunc::mathAcos(-7.0), std::acos(-1.0));
    EXPECT_EQ(MMathFunc::mathSqrt(-1.0), 0.0);
    EXPECT_EQ(MMathFunc::mathAbs(INT_MIN), INT_MAX);
    EXPECT_EQ(MMathFunc::mathAbs(-2.5), 2.5);
}

TEST(MMathFuncScalar, RoundsDecimalsAsWritten) {
    for (auto const &[value, digits, off, up, down] : Rows<double, int, double, double, double>(
             "1.005 2 1.01 1.01 1; -1.005 2 -1.01 -1.01 -1; 1.1 1 1.1 1.1 1.1; 2.4999 0 2 3 2; 0 3 0 0 0;"
             "0.29 2 0.29 0.29 0.29; -2.71 1 -2.7 -2.8 -2.7; 1250 -2 1300 1300 1200;"
             "1e300 300 1e300 1e300 1e300; -inf 0 -inf -inf -inf")) {
        EXPECT_EQ(MMathFunc::mathRoundOff(value, digits), off) << value;
        EXPECT_EQ(MMathFunc::mathRoundUp(value, digits), up) << value;
        EXPECT_EQ(MMathFunc::mathRoundDown(value, digits), down) << value;
    }
    EXPECT_TRUE(std::isnan(MMathFunc::mathRoundUp(NAN, INT_MIN)));
}

TEST(MMathFuncScalar, DirectionOfAVectorCoversTheCircle) {
    for (auto const &[dx, dy, degrees] : Rows<3>("0 0 0; 0 1e-300 90; 0 -2 270; 3 0 0; 3 3 45; -3 0 180; -2 2 135;"
                                                 "-2 -2 225; 2 -2 315; 1 -1e-20 360"))
        EXPECT_NEAR(MMathFunc::GetAngle(dx, dy), degrees, 1e-12) << dx << ' ' << dy;
    // Between two points the flag chooses the direction or the slope.
    for (auto const &[x, y, direction, slope] :
         Rows<4>("0 0.0005 0 0; 0 0.002 90 90; 0 -0.002 270 -90; 4 0 0 0; -4 0 180 0; 4 4 45 45; 4 -4 315 -45;"
                 "-4 -4 225 45; -4 4 135 -45")) {
        EXPECT_NEAR(MMathFunc::GetAngle(1.0, -2.0, 1.0 + x, -2.0 + y, 1), direction, 1e-12) << x << ' ' << y;
        EXPECT_NEAR(MMathFunc::GetAngle(1.0, -2.0, 1.0 + x, -2.0 + y, 0), slope, 1e-12) << x << ' ' << y;
    }
}

TEST(MMathFuncScalar, TurnOfThreePoints) {
    for (auto const &[y, y3, turn] : Rows<3>("1 2 1; 1 0 -1; 0 4e-11 0; 0 -6e-11 -1; 0 nan -1"))
        EXPECT_EQ(MMathFunc::math_ccw(1, y, 3, y, 2, y3), turn) << y3;
}

TEST(MMathFuncScalar, VectorsWorkInPlace) {
    Xyz a{1, 2, 3}, corner{1, 0, 0}, only{7, 8, 9};
    Xyz const b{4, 5, 6}, c{0, 2, 0}, origin{0, 0, 0};
    EXPECT_EQ(MMathFunc::VectorCross(a, b, a), a.values);
    EXPECT_EQ(a, (Xyz{-3, 6, -3}));
    MMathFunc::Get4thPoint(corner, origin, c, corner);
    EXPECT_EQ(corner, (Xyz{1, 2, 0}));
    MMathFunc::mathVecCross(b, c, only);
    EXPECT_EQ(only, (Xyz{-12, 8, 9})) << "a plan product";
}

TEST(MMathFuncScalar, VectorIdentitiesHold) {
    Xyz const a{3, -4, 12}, b{1, 2, -2};
    Xyz sum{}, difference{}, product{}, v{};
    EXPECT_EQ(MMathFunc::VectorAdd(a, b, sum), sum.values);
    EXPECT_EQ(MMathFunc::VectorSubtract(a, b, difference), difference.values);
    EXPECT_EQ(MMathFunc::Dot(sum, difference), MMathFunc::Dot(a, a) - MMathFunc::Dot(b, b));
    EXPECT_EQ(MMathFunc::PointSquareDistance(a, b), MMathFunc::Dot(difference, difference));
    MMathFunc::mathNormal(a, b, product);
    EXPECT_EQ(MMathFunc::Dot(product, product), 169.0 * 9.0 - 29.0 * 29.0) << "|a x b|^2 = |a|^2 |b|^2 - (a . b)^2";
    MMathFunc::mathReverse(b, v);
    MMathFunc::Add(v, sum, v);
    MMathFunc::mathReverse(v);
    MMathFunc::Add(v, a);
    EXPECT_EQ(v, (Xyz{0, 0, 0})) << "a - (a + b - b)";
    MMathFunc::Copy(a, v, 2);
    MMathFunc::Copy(b, v, -1);
    EXPECT_EQ(v, (Xyz{3, -4, 0}));
    MMathFunc::mathLerp(a, b, 0.25, v);
    EXPECT_EQ(v, (Xyz{2.5, -2.5, 8.5}));
    MMathFunc::Multiply(a, -2.0, v);
    MMathFunc::VectorNormalise(v);
    ExpectNear(v, -1.0 / 13.0 * a, 1e-15);
    EXPECT_EQ(MMathFunc::mathDot(a, a), 1.0) << "clamped";
    EXPECT_EQ(MMathFunc::mathDot(3, 0, -2, 5), -1.0);
    EXPECT_EQ(MMathFunc::mathDot(1.1, 0, 1, 5), 1.0);
    EXPECT_DOUBLE_EQ(MMathFunc::mathDot(0.6, 0.8, 0.8, 0.6), 0.96);
}

TEST(MMathFuncScalar, NormalizeScalesShortVectorsOnce) {
    for (auto const &[x, result] : Rows<2>("1e-7 1; 5 1; 1.1e-13 1; 0.9e-13 0")) {
        Xyz v{x, 0, 0};
        EXPECT_EQ(MMathFunc::Normalize(v), result) << x;
        EXPECT_EQ(v, (Xyz{1, 0, 0})) << x;
    }
    Xyz zero{0, 0, 0};
    EXPECT_EQ(MMathFunc::Normalize(zero), 0);
    EXPECT_TRUE(std::isnan(zero[0]));
}

TEST(MMathFuncScalar, LineDistanceIsToTheEndlessLine) {
    Xyz const a{1, 1, 0}, b{3, 1, 0}, p{9, 4, 4};
    Xyz out{};
    double t = 0.0;
    EXPECT_EQ(MMathFunc::PointLineSquareDistance3D(p, a, b, t, out), 25.0);
    EXPECT_EQ(t, 4.0);
    EXPECT_EQ(out, (Xyz{9, 1, 0}));
    EXPECT_EQ(MMathFunc::mathGetVectorDirectionPoint(p, Xyz{0, 0, -4}, 2.0, out), 1);
    EXPECT_EQ(out, (Xyz{9, 4, 2}));
    EXPECT_EQ(MMathFunc::mathGetVectorDirectionPoint(p, Xyz{0, 9e-16, 0}, 2.0, out), 0);
    EXPECT_EQ(out, p);
}

TEST(MCompFunc, EqualityIsTheWiderOfTheTwoLimits) {
    // The step from minus infinity is infinite. 32 steps of 2^-12 at 2^40 to 2^41 are 2^-7: not below the difference,
    // so equal; one step more is not.
    for (auto const &[a, b, expected] :
         Rows<3>("1e12 1000000000000.001 0; 1000000000000.001 1e12 0; 1e12 1000000000000.01 -1;"
                 "1000000000000.01 1e12 1; 0 0.9e-10 0; 0 1.1e-10 -1; 1.1e-10 0 1; inf inf 0; inf 1 1; nan 1 0;"
                 "0 -inf 0; -1e12 -999999999999.999 0; 0x1p40 0x10000000000.02p0 0; 0x10000000000.021p0 0x1p40 1"))
        EXPECT_EQ(MCompFunc::CompReal(a, b), expected) << a << ' ' << b;
    for (auto const &[a, b, expected] : Rows<3>("1e-12 0 0; 1.1e-12 0 1; 0 1.1e-12 -1"))
        EXPECT_EQ(MCompFunc::FastCompDouble(a, b), expected) << a << ' ' << b;
}

} // namespace zvi::lib::test
