#include "zvi/math/CMathPnt.h"

#include "tests/math/Near.h"
#include "zvi/core/MVector.h"
#include "zvi/math/CMathPln.h"
#include "zvi/math/CMathVec.h"

#include <cmath>
#include <cstring>

namespace zvi::lib {

using test::ExpectNear;
using test::Xyz;

TEST(CMathPnt, IsThreeAdjacentDoubles) {
    MVector<double, 3> const values(1.0, 2.0, 3.0);
    CMathPnt const p(values.Data());
    CMathVec const v(p.Data());
    ASSERT_EQ(sizeof(p), sizeof(values));
    EXPECT_EQ(std::memcmp(&p, &values, sizeof(p)), 0);
    EXPECT_EQ(std::memcmp(&v, &values, sizeof(v)), 0);
}

TEST(CMathPnt, IsNullUpToItsLimitInEachCoordinate) {
    EXPECT_EQ(CMathPnt(1e-10, -1e-10, 0.0).IsNull(), 1);
    EXPECT_EQ(CMathPnt(1.1e-10, 0.0, 0.0).IsNull(), 0);
    EXPECT_EQ(CMathPnt(0.0, 0.0, -1.1e-10).IsNull(), 0);
}

TEST(CMathPnt, IsEqualTestsAnInclusiveBox) {
    CMathPnt const p(1.0, 2.0, 3.0);
    EXPECT_EQ(p.IsEqual(CMathPnt(2.0, 1.0, 4.0), 1.0), 1);
    EXPECT_EQ(p.IsEqual(CMathPnt(1.0, 2.0, 4.001), 1.0), 0);
    EXPECT_EQ(p.IsEqual(CMathPnt(1.0, 2.0, std::nan("")), 1.0), 0);
}

TEST(CMathPnt, CentresAreMeans) {
    CMathPnt const a(0.0, 0.0, 0.0);
    CMathPnt const b(3.0, 0.0, 6.0);
    CMathPnt const c(0.0, 9.0, 3.0);
    CMathPnt const d(1.0, -1.0, 3.0);
    ExpectNear(CMathPnt(a, b).Data(), Xyz{1.5, 0.0, 3.0});
    ExpectNear(CMathPnt(a, b, c).Data(), Xyz{1.0, 3.0, 3.0});
    ExpectNear(CMathPnt(a, b, c, d).Data(), Xyz{1.0, 2.0, 3.0});
    CMathPnt weighted = a;
    weighted.BaryCenter(1.0, b, 2.0);
    ExpectNear(weighted.Data(), Xyz{2.0, 0.0, 4.0});
}

TEST(CMathPnt, ArithmeticGoesByCoordinate) {
    CMathPnt p(1.0, 2.0, 3.0);
    p += CMathPnt(1.0, 0.0, -1.0);
    p *= 3.0;
    p -= CMathPnt(0.0, 2.0, 0.0);
    p /= 2.0;
    ExpectNear(p.Data(), Xyz{3.0, 2.0, 3.0});
    ExpectNear(((p - CMathPnt(1.0, 1.0, 1.0)) * 2.0 / 4.0 + p).Data(), Xyz{4.0, 2.5, 4.0});
    p.Set(1, 7.0);
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
    p.Get(x, y, z);
    EXPECT_EQ(y, 7.0);
    EXPECT_EQ(CMathPnt(3.0, 5.0, -4.0).Distance(CMathPnt(1.0, 2.0, 2.0)), 7.0);
    p.Set(CMathPnt(7.0, 8.0, 9.0).Data());
    ExpectNear(p.Data(), Xyz{7.0, 8.0, 9.0});
}

TEST(CMathPnt, GetAngleMeasuresAtTheApex) {
    CMathPnt const apex(1.0, 1.0, 0.0);
    EXPECT_NEAR(apex.GetAngle(CMathPnt(5.0, 1.0, 0.0), CMathPnt(1.0, 1.0, 2.0), 0), 90.0, 1e-12);
    EXPECT_NEAR(apex.GetAngle(CMathPnt(2.0, 1.0, 0.0), CMathPnt(0.0, 1.0 + 1e-9, 0.0), 1), M_PI - 1e-9, 1e-14);
    EXPECT_EQ(apex.GetAngle(CMathPnt(1.0 + 9e-7, 1.0, -9e-7), CMathPnt(2.0, 3.0, 4.0), 0), 0.0);
    EXPECT_EQ(apex.GetAngle(CMathPnt(2.0, 3.0, 4.0), apex, 0), 0.0);
}

TEST(CMathPnt, ShortTranslationsAreDropped) {
    CMathPnt p(0.0, 0.0, 0.0);
    p.Transform(CMathVec(1e-11, 0.0, 0.0));
    EXPECT_EQ(p.X(), 0.0);
    p.Transform(CMathVec(2e-10, 0.0, 0.0));
    EXPECT_EQ(p.X(), 2e-10);
}

TEST(CMathPnt, ProjectUsesTheNormalAsStored) {
    CMathPnt const p(3.0, 4.0, 7.0);
    CMathPnt const base(0.0, 0.0, 2.0);
    ExpectNear(p.Projected(CMathPln(base, CMathVec(0.0, 0.0, -9.0))).Data(), Xyz{3.0, 4.0, 2.0});
    CMathPln scaled;
    scaled.Set(base, CMathVec(0.0, 0.0, 2.0));
    ExpectNear(p.Projected(scaled).Data(), Xyz{3.0, 4.0, -13.0});
    CMathPnt slanted(1.0, 1.0, 1.0);
    slanted.Project(CMathPln(1.0, 1.0, 1.0, 0.0));
    ExpectNear(slanted.Data(), Xyz{0.0, 0.0, 0.0});
}

} // namespace zvi::lib
