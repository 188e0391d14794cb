#include "zvi/math/CMathPln.h"

#include "tests/math/Near.h"

#include <cmath>

namespace zvi::lib {

using test::ExpectNear;
using test::Xyz;

TEST(CMathPln, OnlyTheConstructorNormalises) {
    CMathVec const normal(0.0, 3.0, 4.0);
    CMathPnt const p(9.0, 4.0, 3.0);
    CMathPln plane(CMathPnt(), normal);
    EXPECT_NEAR(plane.GetNormal().Magnitude(), 1.0, 1e-15);
    EXPECT_NEAR(plane.Distance(p), 4.8, 1e-14);
    plane.Set(CMathPnt(), normal);
    EXPECT_EQ(plane.GetNormal().Magnitude(), 5.0);
    EXPECT_EQ(plane.Distance(p), 24.0);
    plane.SetNormal(CMathVec(0.0, -3.0, -4.0));
    EXPECT_EQ(plane.DistanceWithSign(p), -24.0);
}

TEST(CMathPln, BaseOfCoefficientsLiesOnTheAxisOfTheLargest) {
    struct Row {
        double a, b, c, d;
        Xyz base;
    };
    Row const rows[] = {
        {1.0, 1.0, 1.0, -3.0, {0.0, 0.0, 3.0}}, {2.0, -2.0, 1.0, 8.0, {0.0, 4.0, 0.0}},
        {-4.0, 2.0, 3.0, 8.0, {2.0, 0.0, 0.0}}, {2.0, 1.0, -2.0, 8.0, {0.0, 0.0, 4.0}},
        {1.0, 3.0, 2.0, -6.0, {0.0, 2.0, 0.0}},
    };
    for (Row const &row : rows) {
        CMathPln const plane(row.a, row.b, row.c, row.d);
        ExpectNear(plane.GetBasePnt().Data(), row.base, 1e-15);
        double a, b, c, d;
        plane.Coefficients(a, b, c, d);
        double const length = CMathVec(row.a, row.b, row.c).Magnitude();
        ExpectNear(Xyz{a, b, c}.data(), Xyz{row.a / length, row.b / length, row.c / length});
        EXPECT_NEAR(d, row.d / length, 1e-14);
    }
}

TEST(CMathPln, ThreePointsMustSpanAnArea) {
    CMathPln plane(CMathPnt(0.0, 0.0, 5.0), CMathPnt(1.0, 0.0, 5.0), CMathPnt(0.0, 1.0, 5.0));
    ExpectNear(plane.GetNormal().Data(), Xyz{0.0, 0.0, 1.0});
    CMathPnt const origin;
    plane.Set(origin, CMathPnt(1.0, 1.0, 1.0), CMathPnt(2.0, 2.0, 2.0));
    EXPECT_EQ(plane.GetBasePnt().Z(), 5.0);
    plane.Set(origin, CMathPnt(9e-4, 0.0, 0.0), CMathPnt(0.0, 0.0, 1.1e-3));
    EXPECT_EQ(plane.GetBasePnt().Z(), 5.0) << "twice the area is below 1e-6";
    plane.Set(origin, CMathPnt(1.1e-3, 0.0, 0.0), CMathPnt(0.0, 0.0, 1e-3));
    ExpectNear(plane.GetNormal().Data(), Xyz{0.0, -1.0, 0.0});
}

TEST(CMathPln, ParallelPlaneMovesAlongTheStoredNormal) {
    CMathPln scaled;
    scaled.Set(CMathPnt(1.0, 1.0, 1.0), CMathVec(0.0, 0.0, 5.0));
    CMathPln const moved(scaled, -2.0);
    ExpectNear(moved.GetBasePnt().Data(), Xyz{1.0, 1.0, -9.0});
    EXPECT_EQ(moved.GetNormal().Z(), 5.0);
    EXPECT_EQ(CMathPln(scaled, 1e-11).GetBasePnt().Z(), 1.0);
}

} // namespace zvi::lib
