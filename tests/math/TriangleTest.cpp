#include "zvi/math/Triangle.h"

#include "tests/math/Near.h"
#include "zvi/math/Distance.h"

#include <cmath>
#include <random>

namespace zvi::lib {

using test::ExpectNear;
using test::Xy;

TEST(Triangle, HoldsItsInsideAndItsBorder) {
    double const a[3] = {0, 0, 3};
    double const b[3] = {4, 0, 3};
    double const c[3] = {0, 3, 3};
    struct Row {
        double x, y;
        bool inside;
    };
    for (Row const &row : {Row{1, 1, true}, Row{2, 0, true}, Row{2, 1.5, true}, Row{4 + 5e-7, 0, true},
                           Row{2.1, 1.6, false}, Row{-1, 1, false}, Row{5, 0, false}, Row{3.9, 0.01, true}}) {
        double const p[3] = {row.x, row.y, 50.0};
        EXPECT_EQ(is_in_triangle_2d(a, b, c, p, 1e-6), row.inside) << row.x << ' ' << row.y;
        EXPECT_EQ(is_in_triangle_2d(c, b, a, p, 1e-6), row.inside) << row.x << ' ' << row.y;
        EXPECT_EQ(is_in_triangle_3d(a, b, c, p, 1e-6), row.inside) << row.x << ' ' << row.y;
    }
    double const flat[3] = {8, 0, 3};
    double const onFlat[3] = {6, 0, 3};
    double const offFlat[3] = {6, 1, 3};
    EXPECT_TRUE(is_in_triangle_2d(a, b, flat, onFlat, 1e-6));
    EXPECT_FALSE(is_in_triangle_2d(a, b, flat, offFlat, 1e-6));
    double const past[3] = {8.1, 0, 3};
    EXPECT_TRUE(is_in_triangle_3d(a, b, flat, offFlat, 1e-6)) << "without a plane only the place along ab counts";
    EXPECT_FALSE(is_in_triangle_3d(a, b, flat, past, 1e-6));
    EXPECT_TRUE(is_in_triangle_3d(a, a, b, past, 1e-6)) << "and nothing without a direction";
}

TEST(Triangle, EdgePointsAreDecidedWithTheCallersTolerance) {
    double const a[2] = {0, 0};
    double const b[2] = {4, 0};
    double const c[2] = {0, 4};
    double const below[2] = {2, -0.01}; // sees the edge under a cosine of about -1 + 5e-5
    EXPECT_TRUE(is_in_triangle_2d(a, b, c, below, 1e-4));
    EXPECT_FALSE(is_in_triangle_2d(a, b, c, below, 1e-5));
}

TEST(Triangle, Coplanar) {
    double const p[6][3] = {{0, 0, 0}, {1, 0, 1}, {0, 1, 0}, {5, 7, 5}, {-1, 2, -1}, {3, 3, 3.1}};
    double const lift = 0.1 / std::sqrt(2.0);
    EXPECT_TRUE(are_coplanar_3d(p[0], p[1], p[2], p[3], p[4], p[5], lift + 1e-12));
    EXPECT_FALSE(are_coplanar_3d(p[0], p[1], p[2], p[3], p[4], p[5], lift - 1e-12));
    EXPECT_FALSE(are_coplanar_3d(p[0], p[1], p[2], p[5], p[3], p[4], lift - 1e-12));
    EXPECT_TRUE(are_coplanar_3d(p[0], p[1], p[1], p[3], p[4], p[5], 0.0)) << "no plane to be off";
}

TEST(Triangle, Areas) {
    double const a[3] = {1, 2, 5};
    double const b[3] = {5, 1, 5};
    double const c[3] = {5, 4, 5};
    double const reflex[3] = {4, 2, 5}; // the quadrilateral a, b, c, reflex is not convex
    EXPECT_EQ(signed_triangle_area_2d(a, b, c), 6.0);
    EXPECT_EQ(signed_triangle_area_2d(a, c, b), -6.0);
    EXPECT_EQ(triangle_area_2d(a, c, b), 6.0);
    EXPECT_EQ(triangle_area_3d(a, c, b), 6.0);
    EXPECT_EQ(quadrilateral_area_2d(a, b, c, reflex), 3.0); // the shoelace sum of the four corners is 6
    EXPECT_EQ(quadrilateral_area_3d(a, b, c, reflex), 3.0);
    double const standing[3] = {1, 2, 8};
    EXPECT_NEAR(triangle_area_3d(a, b, standing), std::sqrt(153.0) / 2.0, 1e-14);
}

TEST(Triangle, CirclesOfTheThreeFourFiveTriangle) {
    double const a[2] = {10, 20};
    double const b[2] = {14, 20};
    double const c[2] = {10, 23};
    double center[2];
    double radius = 0.0;
    ASSERT_TRUE(circumscribed_circle_2d(a, b, c, center, radius));
    ExpectNear(center, Xy{12, 21.5});
    EXPECT_NEAR(radius, 2.5, 1e-14);
    ASSERT_TRUE(inscribed_circle_2d(c, b, a, center, radius));
    ExpectNear(center, Xy{11, 21});
    EXPECT_NEAR(radius, 1.0, 1e-14);
    double const collinear[2] = {18, 20};
    EXPECT_FALSE(circumscribed_circle_2d(a, b, collinear, center, radius));
    EXPECT_FALSE(inscribed_circle_2d(a, a, a, center, radius));
    EXPECT_EQ(radius, 1.0) << "nothing is written on failure";
}

TEST(Triangle, CirclesPassAndTouch) {
    std::mt19937_64 random(17);
    std::uniform_real_distribution<double> coordinate(-1e-3, 1e-3); // small, but not flat
    for (int round = 0; round < 200; ++round) {
        double p[3][2];
        for (auto &point : p) {
            point[0] = coordinate(random);
            point[1] = coordinate(random);
        }
        if (triangle_area_2d(p[0], p[1], p[2]) < 1e-9)
            continue;
        SCOPED_TRACE(testing::Message() << "seed 17, round " << round);
        double center[2];
        double radius = 0.0;
        ASSERT_TRUE(circumscribed_circle_2d(p[0], p[1], p[2], center, radius));
        for (auto const &point : p)
            EXPECT_NEAR(distance_2d(center, point), radius, 1e-9 * radius);
        ASSERT_TRUE(inscribed_circle_2d(p[0], p[1], p[2], center, radius));
        double const side = signed_triangle_area_2d(p[0], p[1], p[2]) < 0.0 ? -2.0 : 2.0;
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(side * signed_triangle_area_2d(center, p[i], p[(i + 1) % 3]) /
                            distance_2d(p[i], p[(i + 1) % 3]),
                        radius, 1e-15);
    }
}

} // namespace zvi::lib
