#include "zvi/math/CMathVec.h"

#include "tests/math/Near.h"
#include "zvi/math/CMathPln.h"

#include <cmath>
#include <random>

namespace zvi::lib {

using test::ExpectNear;
using test::Xyz;

TEST(CMathVec, ProductsKeepTheirHands) {
    CMathVec const x(1.0, 0.0, 0.0);
    CMathVec const y(0.0, 1.0, 0.0);
    CMathVec const v(2.0, -3.0, 5.0);
    EXPECT_EQ(v * CMathVec(1.0, 1.0, 2.0), 9.0);
    ExpectNear((x ^ y).Data(), Xyz{0.0, 0.0, 1.0});
    // a x (b x c) = b (a . c) - c (a . b)
    ExpectNear(v.CrossCrossed(x, y).Data(), Xyz{-3.0, -2.0, 0.0});
    ExpectNear((-v).Data(), Xyz{-2.0, 3.0, -5.0});
    ExpectNear((v * 2.0 - v).Data(), Xyz{2.0, -3.0, 5.0});
    CMathVec chain = x;
    chain ^= y;
    chain.CrossCross(x, y);
    EXPECT_EQ(chain.IsNull(), 1);
}

TEST(CMathVec, HeadIsTheSecondPoint) {
    CMathPnt const from(1.0, 2.0, 1.0);
    CMathPnt const to(4.0, 6.0, 1.0);
    ExpectNear(CMathVec(from, to).Data(), Xyz{3.0, 4.0, 0.0});
    CMathVec v;
    v.Set(to.Data(), from.Data());
    ExpectNear(v.Data(), Xyz{-3.0, -4.0, 0.0});
    ExpectNear(v.Normalized().Data(), Xyz{-0.6, -0.8, 0.0});
}

TEST(CMathVec, ZeroVectorNormalisesToNaN) {
    CMathVec const zero;
    CMathVec const x(1.0, 0.0, 0.0);
    EXPECT_TRUE(std::isnan(zero.Normalized().X()));
    EXPECT_TRUE(std::isnan(x.Angle(zero, 1)));
    EXPECT_TRUE(std::isnan(x.Rotated(zero, 1.0).X()));
    EXPECT_EQ(x.IsParallel(zero, 10.0), 0);
}

TEST(CMathVec, AngleIsAccurateFromZeroToPi) {
    CMathVec const x(2.0, 0.0, 0.0);
    for (double angle : {0.0, 1e-12, 1e-9, 0.3, M_PI / 4.0, 0.8, M_PI / 2.0, 2.3, 2.4, M_PI - 1e-9, M_PI}) {
        CMathVec const other(5.0 * std::cos(angle), 0.0, 5.0 * std::sin(angle));
        EXPECT_NEAR(x.Angle(other, 1), angle, 5e-16 + 4e-16 * angle) << angle;
        EXPECT_NEAR(x.Angle(other, 0), angle * 180.0 / M_PI, 1e-13) << angle;
    }
}

TEST(CMathVec, AngleWithRefTakesItsSignFromTheReference) {
    CMathVec const x(1.0, 0.0, 0.0);
    CMathVec const y(0.0, 3.0, 0.0);
    EXPECT_NEAR(x.AngleWithRef(y, CMathVec(1.0, 0.0, 0.1), 0), 90.0, 1e-12);
    EXPECT_NEAR(x.AngleWithRef(y, CMathVec(0.0, 0.0, -5.0), 0), -90.0, 1e-12);
    EXPECT_NEAR(x.AngleWithRef(y, CMathVec(1.0, 1.0, 0.0), 1), M_PI / 2.0, 1e-15);
}

TEST(CMathVec, RelationsCompareAnglesInclusively) {
    CMathVec const v(1.0, 2.0, 2.0);
    CMathVec const tilted = v.Rotated(CMathVec(0.0, -1.0, 1.0), 0.01);
    struct Row {
        CMathVec other;
        double tol;
        int normal, opposite, parallel;
    };
    Row const rows[] = {
        {v, 1e-9, 0, 0, 1},
        {v.Reversed(), 1e-9, 0, 1, 1},
        {CMathVec(0.0, -1.0, 1.0), 1e-9, 1, 0, 0},
        {tilted, 0.0099, 0, 0, 0},
        {tilted, 0.0101, 0, 0, 1},
        {tilted.Reversed(), 0.0101, 0, 1, 1},
        {v.Rotated(CMathVec(0.0, -1.0, 1.0), 1.6), 0.03, 1, 0, 0},
    };
    for (Row const &row : rows) {
        EXPECT_EQ(v.IsNormal(row.other, row.tol), row.normal) << &row - rows;
        EXPECT_EQ(v.IsOpposite(row.other, row.tol), row.opposite) << &row - rows;
        EXPECT_EQ(v.IsParallel(row.other, row.tol), row.parallel) << &row - rows;
    }
}

TEST(CMathVec, IsEqualLooksAtTheAngleOfLongVectorsOnly) {
    CMathVec const x(1.0, 0.0, 0.0);
    CMathVec const y(0.0, 1.0, 0.0);
    EXPECT_EQ(x.IsEqual(y, 0.5, 1.5), 0);
    EXPECT_EQ(x.IsEqual(y, 0.5, 1.6), 1);
    EXPECT_EQ(x.IsEqual(y, 1.0, 0.0), 1) << "neither is longer than the length tolerance";
    EXPECT_EQ(x.IsEqual(CMathVec(1.6, 0.0, 0.0), 0.5, 4.0), 0);
    EXPECT_EQ(x.IsEqual(CMathVec(1e-9, 0.0, 0.0), 1e-3, 4.0), 0);
    EXPECT_EQ(x.IsEqual(CMathVec(2.0, 0.0, 0.0), 1.0, 0.0), 1);
}

TEST(CMathVec, RotateTurnsCounterclockwiseAboutTheAxis) {
    CMathVec const x(1.0, 0.0, 0.0);
    ExpectNear(x.Rotated(CMathVec(0.0, 0.0, 7.0), M_PI / 2.0).Data(), Xyz{0.0, 1.0, 0.0});
    ExpectNear(x.Rotated(CMathVec(1.0, 1.0, 1.0), 2.0 * M_PI / 3.0).Data(), Xyz{0.0, 1.0, 0.0});
    ExpectNear(x.Rotated(CMathVec(), 9e-11).Data(), Xyz{1.0, 0.0, 0.0}, 0.0);
}

TEST(CMathVec, ProjectIsTheOrthogonalProjection) {
    std::mt19937_64 random(7);
    std::uniform_real_distribution<double> coordinate(-10.0, 10.0);
    for (int round = 0; round < 200; ++round) {
        CMathVec const v(coordinate(random), coordinate(random), coordinate(random));
        CMathPln const plane(CMathPnt(1.0, 2.0, 3.0),
                             CMathVec(coordinate(random), coordinate(random), coordinate(random)));
        CMathVec const n = plane.GetNormal();
        CMathPnt const expected = v - n * (v * n);
        ExpectNear(v.Projected(plane).Data(), Xyz{expected.X(), expected.Y(), expected.Z()}, 1e-13 * 100.0);
    }
}

TEST(CMathVec, ProjectKeepsWhatLiesNearlyInThePlane) {
    CMathPln const plane(CMathPnt(), CMathVec(0.0, 0.0, 1.0));
    CMathVec const near(1.0, 0.0, 9e-6);
    EXPECT_EQ(near.Projected(plane).Z(), 9e-6);
    EXPECT_NEAR(CMathVec(1.0, 0.0, 1.1e-5).Projected(plane).Z(), 0.0, 1e-15);
    EXPECT_TRUE(std::isnan(CMathVec(0.0, 0.0, 3.0).Projected(plane).X()));
}

} // namespace zvi::lib
