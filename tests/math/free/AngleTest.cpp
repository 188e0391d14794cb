#include "zvi/math/free/Angle.h"

#include "tests/math/Near.h"

#include <numbers>

namespace zvi::lib::test {

TEST(Angle, PlaneAnglesAreSignedAndEndAtPlus180) {
    Xy const apex{3, -7};
    for (auto const &[v, w, degrees] : Rows<Xy, Xy, double>(
             "1 0 0 -1 -90; 1 0 -1 0 180; 1 0 -1 -1e-5 180; 3 0 5 5 45; 0 2 1 0 -90; 1 1 2 2 0; 1 0 1 1e-4 0;"
             "1 0 1 1.5e-4 0.0085944; 7e-5 0 0 7e-5 0; 8e-5 0 0 8e-5 90; 0 0 1 1 0; -1 0 0 -4 90;"
             "1 0 -0.5 0.8660254037844386 120")) {
        EXPECT_NEAR(angle_2d(v, w), degrees, 1e-6) << v << w;
        EXPECT_NEAR(angle_2d(apex, apex + v, apex + w), degrees, 1e-6) << v << w;
        EXPECT_NEAR(angle_3d(v[0], 0.0, v[1], w[0], 0.0, w[1]), std::abs(degrees), 1e-6) << v << w;
    }
}

TEST(Angle, SpaceAngleAtTheFirstPoint) {
    Xyz const apex{1, 2, 3}, v{1, 2, 2}, w{4, 0, 3};
    double const expected = std::acos(2.0 / 3.0) * 180.0 / std::numbers::pi;
    EXPECT_NEAR(angle_3d(apex, apex + v, apex + w), expected, 1e-12);
    EXPECT_NEAR(angle_3d(v, w), expected, 1e-12);
    EXPECT_EQ(angle_3d(apex, apex, w), 0.0);
    EXPECT_TRUE(std::isnan(angle_3d(NAN, 0.0, 0.0, 1.0, 0.0, 0.0)));
}

} // namespace zvi::lib::test
