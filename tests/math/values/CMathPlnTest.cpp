#include "zvi/math/values/CMathPln.h"

#include "tests/math/Near.h"

namespace zvi::lib::test {

TEST(CMathPln, OnlyTheConstructorNormalises) {
    CMathVec const normal(0, 3, 4);
    CMathPnt const p(9, 4, 3);
    CMathPln plane(CMathPnt(), normal);
    ExpectNear(plane.GetNormal().Data(), Xyz{0, 0.6, 0.8});
    EXPECT_NEAR(plane.Distance(p), 4.8, 1e-14);
    plane.Set(CMathPnt(), normal);
    ExpectNear(plane.GetNormal().Data(), Xyz{0, 3, 4}, 0.0);
    EXPECT_EQ(plane.Distance(p), 24.0);
    plane.SetNormal(-normal);
    EXPECT_EQ(plane.DistanceWithSign(p), -24.0);
}

TEST(CMathPln, BaseOfCoefficientsLiesOnTheAxisOfTheLargest) {
    for (auto const &[a, b, c, d, base] :
         Rows<double, double, double, double, Xyz>("1 1 1 -3 0 0 3; 2 -2 1 8 0 4 0; -4 2 3 8 2 0 0; 2 1 -2 8 0 0 4;"
                                                   "1 3 2 -6 0 2 0")) {
        CMathPln const plane(a, b, c, d);
        ExpectNear(plane.GetBasePnt().Data(), base, 1e-15);
        Coordinates<4> unit{};
        plane.Coefficients(unit[0], unit[1], unit[2], unit[3]);
        ExpectNear(unit, 1.0 / std::hypot(a, b, c) * Coordinates<4>{a, b, c, d}, 1e-14);
    }
}

TEST(CMathPln, ThreePointsMustSpanAnArea) {
    CMathPln plane(CMathPnt(0, 0, 5), CMathPnt(1, 0, 5), CMathPnt(0, 1, 5));
    ExpectNear(plane.GetNormal().Data(), Xyz{0, 0, 1});
    CMathPnt const origin;
    plane.Set(origin, CMathPnt(1, 1, 1), CMathPnt(2, 2, 2));
    EXPECT_EQ(plane.GetBasePnt().Z(), 5.0);
    plane.Set(origin, CMathPnt(9e-4, 0, 0), CMathPnt(0, 0, 1.1e-3));
    EXPECT_EQ(plane.GetBasePnt().Z(), 5.0) << "twice the area is below 1e-6";
    plane.Set(origin, CMathPnt(1.1e-3, 0, 0), CMathPnt(0, 0, 1e-3));
    ExpectNear(plane.GetNormal().Data(), Xyz{0, -1, 0});
}

TEST(CMathPln, ParallelPlaneMovesAlongTheStoredNormal) {
    CMathPln scaled;
    scaled.Set(CMathPnt(1, 1, 1), CMathVec(0, 0, 5));
    CMathPln const moved(scaled, -2.0);
    ExpectNear(moved.GetBasePnt().Data(), Xyz{1, 1, -9});
    EXPECT_EQ(moved.GetNormal().Z(), 5.0);
    EXPECT_EQ(CMathPln(scaled, 1e-11).GetBasePnt().Z(), 1.0);
}

} // namespace zvi::lib::test
