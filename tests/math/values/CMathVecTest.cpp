#include "zvi/math/values/CMathVec.h"

#include "tests/math/Near.h"
#include "zvi/math/values/CMathPln.h"

#include <numbers>

namespace zvi::lib::test {

namespace {

CMathVec const kX(1, 0, 0), kY(0, 1, 0), kZ(0, 0, 1);

} // namespace

TEST(CMathVec, ProductsKeepTheirHands) {
    CMathVec const v(2, -3, 5);
    EXPECT_EQ(v * CMathVec(1, 1, 2), 9.0);
    ExpectNear((kX ^ kY).Data(), Xyz{0, 0, 1});
    // a x (b x c) = b (a . c) - c (a . b)
    ExpectNear(v.CrossCrossed(kX, kY).Data(), Xyz{-3, -2, 0});
    ExpectNear((-v).Data(), Xyz{-2, 3, -5});
    ExpectNear((v * 2 - v).Data(), Xyz{2, -3, 5});
    CMathVec chain = kX;
    chain ^= kY;
    chain.CrossCross(kX, kY);
    EXPECT_EQ(chain.IsNull(), 1);
}

TEST(CMathVec, HeadIsTheSecondPoint) {
    CMathPnt const from(1, 2, 1), to(4, 6, 1);
    ExpectNear(CMathVec(from, to).Data(), Xyz{3, 4, 0});
    CMathVec v;
    v.Set(to.Data(), from.Data());
    ExpectNear(v.Data(), Xyz{-3, -4, 0});
    ExpectNear(v.Normalized().Data(), Xyz{-0.6, -0.8, 0});
}

TEST(CMathVec, ZeroVectorNormalisesToNaN) {
    CMathVec const zero;
    EXPECT_TRUE(std::isnan(zero.Normalized().X()));
    EXPECT_TRUE(std::isnan(kX.Angle(zero, 1)));
    EXPECT_TRUE(std::isnan(kX.Rotated(zero, 1).X()));
    EXPECT_EQ(kX.IsParallel(zero, 10), 0);
}

TEST(CMathVec, AngleIsAccurateFromZeroToPi) {
    for (double angle : {0.0, 1e-12, 1e-9, 0.3, std::numbers::pi / 4.0, 0.8, std::numbers::pi / 2.0, 2.3, 2.4,
                         std::numbers::pi - 1e-9, std::numbers::pi}) {
        CMathVec const other(5.0 * std::cos(angle), 0.0, 5.0 * std::sin(angle));
        EXPECT_NEAR(CMathVec(2, 0, 0).Angle(other, 1), angle, 5e-16 + 4e-16 * angle) << angle;
        EXPECT_NEAR(CMathVec(2, 0, 0).Angle(other, 0), angle * 180.0 / std::numbers::pi, 1e-13) << angle;
    }
}

TEST(CMathVec, AngleWithRefTakesItsSignFromTheReference) {
    CMathVec const y(0, 3, 0);
    EXPECT_NEAR(kX.AngleWithRef(y, CMathVec(1, 0, 0.1), 0), 90.0, 1e-12);
    EXPECT_NEAR(kX.AngleWithRef(y, CMathVec(0, 0, -5), 0), -90.0, 1e-12);
    EXPECT_NEAR(kX.AngleWithRef(y, CMathVec(1, 1, 0), 1), std::numbers::pi / 2.0, 1e-15);
}

TEST(CMathVec, RelationsCompareAnglesInclusively) {
    CMathVec const v(1, 2, 2), across(0, -1, 1), tilted = v.Rotated(across, 0.01);
    struct {
        CMathVec other;
        double tol;
        int normal, opposite, parallel;
    } const rows[] = {{v, 1e-9, 0, 0, 1},
                      {v.Reversed(), 1e-9, 0, 1, 1},
                      {across, 1e-9, 1, 0, 0},
                      {tilted, 0.0099, 0, 0, 0},
                      {tilted, 0.0101, 0, 0, 1},
                      {tilted.Reversed(), 0.0101, 0, 1, 1},
                      {v.Rotated(across, 1.6), 0.03, 1, 0, 0}};
    for (auto const &row : rows) {
        EXPECT_EQ(v.IsNormal(row.other, row.tol), row.normal) << &row - rows;
        EXPECT_EQ(v.IsOpposite(row.other, row.tol), row.opposite) << &row - rows;
        EXPECT_EQ(v.IsParallel(row.other, row.tol), row.parallel) << &row - rows;
    }
}

TEST(CMathVec, IsEqualLooksAtTheAngleOfVectorsLongerThanTheLengthTolerance) {
    for (auto const &[x, y, lengthTol, angleTol, equal] : Rows<5>("0 1 0.5 1.5 0; 0 1 0.5 1.6 1; 0 1 1 0 1;"
                                                                  "1.6 0 0.5 4 0; 1e-9 0 1e-3 4 0; 2 0 1 0 1"))
        EXPECT_EQ(kX.IsEqual(CMathVec(x, y, 0), lengthTol, angleTol), equal) << x << ' ' << lengthTol;
}

TEST(CMathVec, RotateTurnsCounterclockwiseAboutTheAxis) {
    ExpectNear(kX.Rotated(CMathVec(0, 0, 7), std::numbers::pi / 2.0).Data(), Xyz{0, 1, 0});
    ExpectNear(kX.Rotated(CMathVec(1, 1, 1), 2.0 * std::numbers::pi / 3.0).Data(), Xyz{0, 1, 0});
    ExpectNear(kX.Rotated(CMathVec(), 9e-11).Data(), Xyz{1, 0, 0}, 0.0);
}

TEST(CMathVec, ProjectIsTheOrthogonalProjection) {
    Random coordinate(7, -10.0, 10.0);
    for (int round = 0; round < 200; ++round) {
        Xyz const v = coordinate.Space(), direction = coordinate.Space();
        Xyz const n = 1.0 / Length(direction) * direction;
        CMathPln const plane(CMathPnt(1, 2, 3), CMathVec(direction));
        ExpectNear(CMathVec(v).Projected(plane).Data(), v - Dot(v, n) * n, 1e-11);
    }
    // What lies nearly in the plane is kept.
    CMathPln const floor(CMathPnt(), kZ);
    EXPECT_EQ(CMathVec(1, 0, 9e-6).Projected(floor).Z(), 9e-6);
    EXPECT_NEAR(CMathVec(1, 0, 1.1e-5).Projected(floor).Z(), 0.0, 1e-15);
    EXPECT_TRUE(std::isnan(CMathVec(0, 0, 3).Projected(floor).X()));
}

} // namespace zvi::lib::test
