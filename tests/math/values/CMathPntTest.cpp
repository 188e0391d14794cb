#include "zvi/math/values/CMathPnt.h"

#include "tests/math/Near.h"
#include "zvi/core/MVector.h"
#include "zvi/math/values/CMathPln.h"
#include "zvi/math/values/CMathVec.h"

#include <cstring>
#include <numbers>

namespace zvi::lib::test {

TEST(CMathPnt, IsThreeAdjacentDoubles) {
    MVector<double, 3> const values(1.0, 2.0, 3.0);
    CMathPnt const p(values.Data());
    CMathVec const v(p.Data());
    ASSERT_EQ(sizeof(p), sizeof(values));
    EXPECT_EQ(std::memcmp(&p, &values, sizeof(p)), 0);
    EXPECT_EQ(std::memcmp(&v, &values, sizeof(v)), 0);
}

TEST(CMathPnt, IsNullUpToItsLimitInEachCoordinate) {
    EXPECT_EQ(CMathPnt(1e-10, -1e-10, 0).IsNull(), 1);
    EXPECT_EQ(CMathPnt(1.1e-10, 0, 0).IsNull(), 0);
    EXPECT_EQ(CMathPnt(0, 0, -1.1e-10).IsNull(), 0);
}

TEST(CMathPnt, IsEqualTestsAnInclusiveBox) {
    for (auto const &[z, equal] : Rows<2>("4 1; 4.001 0; nan 0"))
        EXPECT_EQ(CMathPnt(1, 2, 3).IsEqual(CMathPnt(2, 1, z), 1.0), equal) << z;
}

TEST(CMathPnt, CentresAreMeans) {
    CMathPnt const a(0, 0, 0), b(3, 0, 6), c(0, 9, 3), d(1, -1, 3);
    ExpectNear(CMathPnt(a, b).Data(), Xyz{1.5, 0, 3});
    ExpectNear(CMathPnt(a, b, c).Data(), Xyz{1, 3, 3});
    ExpectNear(CMathPnt(a, b, c, d).Data(), Xyz{1, 2, 3});
    CMathPnt weighted = a;
    weighted.BaryCenter(1.0, b, 2.0);
    ExpectNear(weighted.Data(), Xyz{2, 0, 4});
}

TEST(CMathPnt, ArithmeticGoesByCoordinate) {
    CMathPnt p(1, 2, 3);
    p += CMathPnt(1, 0, -1);
    p *= 3.0;
    p -= CMathPnt(0, 2, 0);
    p /= 2.0;
    ExpectNear(p.Data(), Xyz{3, 2, 3});
    ExpectNear(((p - CMathPnt(1, 1, 1)) * 2.0 / 4.0 + p).Data(), Xyz{4, 2.5, 4});
    p.Set(1, 7.0);
    Xyz read{};
    p.Get(read[0], read[1], read[2]);
    EXPECT_EQ(read, (Xyz{3, 7, 3}));
    EXPECT_EQ(CMathPnt(3, 5, -4).Distance(CMathPnt(1, 2, 2)), 7.0);
    p.Set(Xyz{7, 8, 9});
    ExpectNear(p.Data(), Xyz{7, 8, 9});
}

TEST(CMathPnt, GetAngleMeasuresAtTheApex) {
    CMathPnt const apex(1, 1, 0), far(2, 3, 4);
    EXPECT_NEAR(apex.GetAngle(CMathPnt(5, 1, 0), CMathPnt(1, 1, 2), 0), 90.0, 1e-12);
    EXPECT_NEAR(apex.GetAngle(CMathPnt(2, 1, 0), CMathPnt(0, 1 + 1e-9, 0), 1), std::numbers::pi - 1e-9, 1e-14);
    EXPECT_EQ(apex.GetAngle(CMathPnt(1 + 9e-7, 1, -9e-7), far, 0), 0.0);
    EXPECT_EQ(apex.GetAngle(far, apex, 0), 0.0);
}

TEST(CMathPnt, ShortTranslationsAreDropped) {
    for (auto const &[step, x] : Rows<2>("1e-11 0; 2e-10 2e-10")) {
        CMathPnt p(0, 0, 0);
        p.Transform(CMathVec(step, 0, 0));
        EXPECT_EQ(p.X(), x);
    }
}

TEST(CMathPnt, ProjectUsesTheNormalAsStored) {
    CMathPnt const p(3, 4, 7), base(0, 0, 2);
    ExpectNear(p.Projected(CMathPln(base, CMathVec(0, 0, -9))).Data(), Xyz{3, 4, 2});
    CMathPln scaled;
    scaled.Set(base, CMathVec(0, 0, 2));
    ExpectNear(p.Projected(scaled).Data(), Xyz{3, 4, -13});
    CMathPnt slanted(1, 1, 1);
    slanted.Project(CMathPln(1, 1, 1, 0));
    ExpectNear(slanted.Data(), Xyz{0, 0, 0});
}

} // namespace zvi::lib::test
