#include "zvi/math/MMathFunc.h"

#include <climits>
#include <cmath>
#include <limits>

#include <gtest/gtest.h>

#include "zvi/math/MCompFunc.h"

using zvi::lib::MCompFunc;
using zvi::lib::MMathFunc;

namespace {

// Initialised before anything else of this program: it must see the constants all the same.
double const piAtLoad = MMathFunc::m_pi * MMathFunc::m_trang * MMathFunc::m_trrad;

double const infinity = std::numeric_limits<double>::infinity();

} // namespace

TEST(MMathFuncScalar, ConstantsHoldTheirValuesAtLoad) {
    EXPECT_EQ(MMathFunc::m_NormalZero, 1e-15);
    EXPECT_EQ(MMathFunc::m_pi, 4.0 * std::atan(1.0));
    EXPECT_EQ(MMathFunc::m_trrad, MMathFunc::m_pi / 180.0);
    EXPECT_EQ(MMathFunc::m_trang, 180.0 / MMathFunc::m_pi);
    EXPECT_NEAR(piAtLoad, 3.14159265358979, 1e-14);
}

TEST(MMathFuncScalar, ZeroTestsAreStrict) {
    EXPECT_EQ(MMathFunc::IsZero(1e-8), 0);
    EXPECT_EQ(MMathFunc::IsZero(-1e-8), 0);
    EXPECT_EQ(MMathFunc::IsZero(0.9999e-8), 1);
    EXPECT_EQ(MMathFunc::IsEqual(0.0, 1e-8), 0);
    EXPECT_EQ(MMathFunc::IsEqual(5.0, 5.0 + 9e-9), 1);
    double const shorter[3] = {0.0, -0.99e-6, 0.0};
    double const atLimit[3] = {0.0, 0.0, 1.001e-6};
    EXPECT_EQ(MMathFunc::IsZero(shorter), 1);
    EXPECT_EQ(MMathFunc::IsZero(atLimit), 0);
}

TEST(MMathFuncScalar, MakeNonZeroMovesUpWhateverTheSign) {
    struct {
        double before, after;
    } const rows[] = {{-1e-9, 1e-8}, {0.0, 1e-8}, {-1e-8, -1e-8}, {2e-8, 2e-8}};
    for (auto const &row : rows) {
        double value = row.before;
        MMathFunc::MakeNonZero(value);
        EXPECT_EQ(value, row.after) << row.before;
    }
    double v[3] = {5e-7, 0.0, -5e-7};
    MMathFunc::MakeNonZero(v);
    EXPECT_EQ(v[0], 0.0);
    EXPECT_EQ(v[2], 1e-8);
}

TEST(MMathFuncScalar, SineAndCosineSnapAtTheAxes) {
    EXPECT_EQ(MMathFunc::mathSin(MMathFunc::m_pi), 0.0);
    EXPECT_EQ(MMathFunc::mathCos(MMathFunc::m_pi / 2.0), 0.0);
    EXPECT_EQ(MMathFunc::mathCos(MMathFunc::m_pi), -1.0);
    EXPECT_EQ(MMathFunc::mathSin(MMathFunc::m_pi / 2.0 + 1e-8), 1.0);
    EXPECT_EQ(MMathFunc::mathSin(2e-15), 2e-15);
    EXPECT_EQ(MMathFunc::mathAsin(1.5), std::asin(1.0));
    EXPECT_EQ(MMathFunc::mathAcos(-7.0), std::acos(-1.0));
    EXPECT_EQ(MMathFunc::mathSqrt(-1.0), 0.0);
    EXPECT_EQ(MMathFunc::mathAbs(INT_MIN), INT_MAX);
}

TEST(MMathFuncScalar, RoundsDecimalsAsWritten) {
    struct {
        double value;
        int digits;
        double off, up, down;
    } const rows[] = {
        {1.005, 2, 1.01, 1.01, 1.0},  {-1.005, 2, -1.01, -1.01, -1.0},   {1.1, 1, 1.1, 1.1, 1.1},
        {2.4999, 0, 2, 3, 2},         {0.29, 2, 0.29, 0.29, 0.29},       {-2.71, 1, -2.7, -2.8, -2.7},
        {1250, -2, 1300, 1300, 1200}, {1e300, 300, 1e300, 1e300, 1e300}, {0.0, 3, 0, 0, 0},
    };
    for (auto const &row : rows) {
        EXPECT_EQ(MMathFunc::mathRoundOff(row.value, row.digits), row.off) << row.value;
        EXPECT_EQ(MMathFunc::mathRoundUp(row.value, row.digits), row.up) << row.value;
        EXPECT_EQ(MMathFunc::mathRoundDown(row.value, row.digits), row.down) << row.value;
    }
    EXPECT_TRUE(std::isnan(MMathFunc::mathRoundUp(NAN, INT_MIN)));
    EXPECT_EQ(MMathFunc::mathRoundOff(-infinity), -infinity);
}

TEST(MMathFuncScalar, DirectionOfAVectorCoversTheCircle) {
    struct {
        double dx, dy, degrees;
    } const rows[] = {{0, 0, 0},    {0, 1e-300, 90}, {0, -2, 270},  {3, 0, 0},   {3, 3, 45},
                      {-3, 0, 180}, {-2, 2, 135},    {-2, -2, 225}, {2, -2, 315}};
    for (auto const &row : rows)
        EXPECT_NEAR(MMathFunc::GetAngle(row.dx, row.dy), row.degrees, 1e-12) << row.dx << ' ' << row.dy;
    EXPECT_EQ(MMathFunc::GetAngle(1.0, -1e-20), 360.0);
}

TEST(MMathFuncScalar, DirectionBetweenPointsDependsOnTheFlag) {
    struct {
        double x2, y2, direction, slope;
    } const rows[] = {{0, 0.0005, 0, 0}, {0, 0.002, 90, 90}, {0, -0.002, 270, -90}, {4, 0, 0, 0},     {-4, 0, 180, 0},
                      {4, 4, 45, 45},    {4, -4, 315, -45},  {-4, -4, 225, 45},     {-4, 4, 135, -45}};
    for (auto const &row : rows) {
        EXPECT_NEAR(MMathFunc::GetAngle(0.0, 0.0, row.x2, row.y2, 1), row.direction, 1e-12) << row.x2 << ' ' << row.y2;
        EXPECT_NEAR(MMathFunc::GetAngle(0.0, 0.0, row.x2, row.y2, 0), row.slope, 1e-12) << row.x2 << ' ' << row.y2;
    }
}

TEST(MMathFuncScalar, TurnOfThreePoints) {
    EXPECT_EQ(MMathFunc::math_ccw(1, 1, 3, 1, 2, 2), 1);
    EXPECT_EQ(MMathFunc::math_ccw(1, 1, 3, 1, 2, 0), -1);
    EXPECT_EQ(MMathFunc::math_ccw(1, 0, 3, 0, 2, 4e-11), 0);
    EXPECT_EQ(MMathFunc::math_ccw(1, 0, 3, 0, 2, -6e-11), -1);
    EXPECT_EQ(MMathFunc::math_ccw(1, 0, 3, 0, 2, NAN), -1);
}

TEST(MMathFuncScalar, VectorsWorkInPlace) {
    double a[3] = {1, 2, 3};
    double const b[3] = {4, 5, 6};
    EXPECT_EQ(MMathFunc::VectorCross(a, b, a), a);
    EXPECT_EQ(a[0], -3.0);
    EXPECT_EQ(a[1], 6.0);
    EXPECT_EQ(a[2], -3.0);
    double corner[3] = {1, 0, 0};
    double const c[3] = {0, 2, 0};
    double const origin[3] = {0, 0, 0};
    MMathFunc::Get4thPoint(corner, origin, c, corner);
    EXPECT_EQ(corner[0], 1.0);
    EXPECT_EQ(corner[1], 2.0);
    double only[3] = {7, 8, 9};
    MMathFunc::mathVecCross(b, c, only);
    EXPECT_EQ(only[0], -12.0);
    EXPECT_EQ(only[1], 8.0);
    EXPECT_EQ(only[2], 9.0);
}

TEST(MMathFuncScalar, VectorIdentitiesHold) {
    double const a[3] = {3, -4, 12};
    double const b[3] = {1, 2, -2};
    double sum[3], difference[3], product[3], v[3];
    EXPECT_EQ(MMathFunc::VectorAdd(a, b, sum), sum);
    EXPECT_EQ(MMathFunc::VectorSubtract(a, b, difference), difference);
    EXPECT_EQ(MMathFunc::Dot(sum, difference), MMathFunc::Dot(a, a) - MMathFunc::Dot(b, b));
    EXPECT_EQ(MMathFunc::PointSquareDistance(a, b), MMathFunc::Dot(difference, difference));
    MMathFunc::mathNormal(a, b, product);
    EXPECT_EQ(MMathFunc::Dot(product, product), 169.0 * 9.0 - 29.0 * 29.0) << "|a x b|^2 = |a|^2 |b|^2 - (a . b)^2";
    MMathFunc::mathReverse(b, v);
    MMathFunc::Add(v, sum, v);
    MMathFunc::mathReverse(v);
    MMathFunc::Add(v, a);
    EXPECT_EQ(MMathFunc::Dot(v, v), 0.0) << "a - (a + b - b)";
    MMathFunc::Copy(a, v, 2);
    MMathFunc::Copy(b, v, -1);
    EXPECT_EQ(v[1], -4.0);
    EXPECT_EQ(v[2], 0.0);
    MMathFunc::mathLerp(a, b, 0.25, v);
    EXPECT_EQ(v[2], 8.5);
    MMathFunc::Multiply(a, -2.0, v);
    MMathFunc::VectorNormalise(v);
    EXPECT_NEAR(v[0], -3.0 / 13.0, 1e-16);
    EXPECT_EQ(MMathFunc::mathDot(a, a), 1.0) << "clamped";
    EXPECT_EQ(MMathFunc::mathDot(3, 0, -2, 5), -1.0);
    EXPECT_DOUBLE_EQ(MMathFunc::mathDot(0.6, 0.8, 0.8, 0.6), 0.96);
    EXPECT_EQ(MMathFunc::mathAbs(-2.5), 2.5);
    EXPECT_EQ(MMathFunc::SquareNonZero(), 1e-4 * MMathFunc::NonZero());
}

TEST(MMathFuncScalar, NormalizeScalesShortVectorsOnce) {
    struct {
        double x;
        int result;
    } const rows[] = {{1e-7, 1}, {5.0, 1}, {1.1e-13, 1}, {0.9e-13, 0}};
    for (auto const &row : rows) {
        double v[3] = {row.x, 0, 0};
        EXPECT_EQ(MMathFunc::Normalize(v), row.result) << row.x;
        EXPECT_EQ(v[0], 1.0) << row.x;
    }
    double zero[3] = {0, 0, 0};
    EXPECT_EQ(MMathFunc::Normalize(zero), 0);
    EXPECT_TRUE(std::isnan(zero[0]));
}

TEST(MMathFuncScalar, LineDistanceIsToTheEndlessLine) {
    double const a[3] = {1, 1, 0};
    double const b[3] = {3, 1, 0};
    double const pt[3] = {9, 4, 4};
    double t = 0.0;
    double foot[3];
    EXPECT_EQ(MMathFunc::PointLineSquareDistance3D(pt, a, b, t, foot), 25.0);
    EXPECT_EQ(t, 4.0);
    EXPECT_EQ(foot[0], 9.0);
    double out[3];
    double const dir[3] = {0, 0, -4};
    EXPECT_EQ(MMathFunc::mathGetVectorDirectionPoint(pt, dir, 2.0, out), 1);
    EXPECT_EQ(out[2], 2.0);
    double const noDir[3] = {0, 9e-16, 0};
    EXPECT_EQ(MMathFunc::mathGetVectorDirectionPoint(pt, noDir, 2.0, out), 0);
    EXPECT_EQ(out[2], 4.0);
}

TEST(MCompFunc, EqualityIsTheWiderOfTheTwoLimits) {
    struct {
        double a, b;
        int expected;
    } const rows[] = {
        {1e12, 1e12 + 0.001, 0},
        {1e12 + 0.001, 1e12, 0},
        {1e12, 1e12 + 0.01, -1},
        {1e12 + 0.01, 1e12, 1},
        {0.0, 0.9e-10, 0},
        {0.0, 1.1e-10, -1},
        {1.1e-10, 0.0, 1},
        {infinity, infinity, 0},
        {infinity, 1.0, 1},
        {NAN, 1.0, 0},
        {0.0, -infinity, 0}, // the step from minus infinity is infinite
        {-1e12, -1e12 + 0.001, 0},
        // 32 steps of 2^-12 at 2^40 to 2^41 are 2^-7: not below the difference, so equal; one step more is not.
        {0x1p40, 0x1p40 + 0x1p-7, 0},
        {0x1p40 + 0x1p-7 + 0x1p-12, 0x1p40, 1},
    };
    for (auto const &row : rows)
        EXPECT_EQ(MCompFunc::CompReal(row.a, row.b), row.expected) << row.a << ' ' << row.b;
    EXPECT_EQ(MCompFunc::FastCompDouble(1e-12, 0.0), 0);
    EXPECT_EQ(MCompFunc::FastCompDouble(1.1e-12, 0.0), 1);
    EXPECT_EQ(MCompFunc::FastCompDouble(0.0, 1.1e-12), -1);
}
