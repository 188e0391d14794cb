#include "zvi/math/Angle.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zvi::lib {

TEST(Angle, PlaneAnglesAreSignedAndEndAtPlus180) {
    struct Row {
        double x1, y1, x2, y2, degrees;
    };
    Row const rows[] = {
        {1, 0, 0, -1, -90.0},
        {1, 0, -1, 0, 180.0},
        {1, 0, -1, -1e-5, 180.0},
        {3, 0, 5, 5, 45.0},
        {0, 2, 1, 0, -90.0},
        {1, 1, 2, 2, 0.0},
        {1, 0, 1, 1e-4, 0.0},
        {1, 0, 1, 1.5e-4, 0.0085944},
        {7e-5, 0, 0, 7e-5, 0.0},
        {8e-5, 0, 0, 8e-5, 90.0},
        {0, 0, 1, 1, 0.0},
        {-1, 0, 0, -4, 90.0},
        {1, 0, -0.5, 0.8660254037844386, 120.0},
    };
    for (Row const &row : rows) {
        double const v1[2] = {row.x1, row.y1};
        double const v2[2] = {row.x2, row.y2};
        double const apex[2] = {3.0, -7.0};
        double const p1[2] = {3.0 + row.x1, -7.0 + row.y1};
        double const p2[2] = {3.0 + row.x2, -7.0 + row.y2};
        EXPECT_NEAR(angle_2d(v1, v2), row.degrees, 1e-6) << &row - rows;
        EXPECT_NEAR(angle_2d(apex, p1, p2), row.degrees, 1e-6) << &row - rows;
        EXPECT_NEAR(angle_3d(row.x1, 0.0, row.y1, row.x2, 0.0, row.y2), std::abs(row.degrees), 1e-6) << &row - rows;
    }
}

TEST(Angle, SpaceAngleAtTheFirstPoint) {
    double const apex[3] = {1, 2, 3};
    double const p1[3] = {2, 4, 5};
    double const p2[3] = {5, 2, 6};
    double const v1[3] = {1, 2, 2};
    double const v2[3] = {4, 0, 3};
    double const expected = std::acos(2.0 / 3.0) * 180.0 / M_PI;
    EXPECT_NEAR(angle_3d(apex, p1, p2), expected, 1e-12);
    EXPECT_NEAR(angle_3d(v1, v2), expected, 1e-12);
    EXPECT_EQ(angle_3d(apex, apex, p2), 0.0);
    EXPECT_TRUE(std::isnan(angle_3d(std::nan(""), 0.0, 0.0, 1.0, 0.0, 0.0)));
}

} // namespace zvi::lib
