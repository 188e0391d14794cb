#include "zvi/math/free/Triangle.h"

#include "tests/math/Near.h"
#include "zvi/math/free/Distance.h"

namespace zvi::lib::test {

TEST(Triangle, HoldsItsInsideAndItsBorder) {
    Xyz const a{0, 0, 3}, b{4, 0, 3}, c{0, 3, 3};
    for (auto const &[x, y, inside] :
         Rows<3>("1 1 1; 2 0 1; 2 1.5 1; 4.0000005 0 1; 2.1 1.6 0; -1 1 0; 5 0 0; 3.9 0.01 1")) {
        Xyz const p{x, y, 50};
        EXPECT_EQ(is_in_triangle_2d(a, b, c, p, 1e-6), inside) << p;
        EXPECT_EQ(is_in_triangle_2d(c, b, a, p, 1e-6), inside) << p;
        EXPECT_EQ(is_in_triangle_3d(a, b, c, p, 1e-6), inside) << p;
    }
    // Three corners in a line: without a plane only the place along ab counts, and nothing without a direction.
    Xyz const flat{8, 0, 3}, on{6, 0, 3}, off{6, 1, 3}, past{8.1, 0, 3};
    EXPECT_TRUE(is_in_triangle_2d(a, b, flat, on, 1e-6));
    EXPECT_FALSE(is_in_triangle_2d(a, b, flat, off, 1e-6));
    EXPECT_TRUE(is_in_triangle_3d(a, b, flat, off, 1e-6));
    EXPECT_FALSE(is_in_triangle_3d(a, b, flat, past, 1e-6));
    EXPECT_TRUE(is_in_triangle_3d(a, a, b, past, 1e-6));
    // From 0.01 under the middle of the edge ab its ends are seen under a cosine of about -1 + 5e-5.
    Xyz const below{2, -0.01, 3};
    EXPECT_TRUE(is_in_triangle_2d(a, b, c, below, 1e-4));
    EXPECT_FALSE(is_in_triangle_2d(a, b, c, below, 1e-5));
}

TEST(Triangle, Coplanar) {
    Xyz const a{0, 0, 0}, b{1, 0, 1}, c{0, 1, 0}, d{5, 7, 5}, e{-1, 2, -1}, f{3, 3, 3.1};
    double const lift = 0.1 / std::sqrt(2.0);
    EXPECT_TRUE(are_coplanar_3d(a, b, c, d, e, f, lift + 1e-12));
    EXPECT_FALSE(are_coplanar_3d(a, b, c, d, e, f, lift - 1e-12));
    EXPECT_FALSE(are_coplanar_3d(a, b, c, f, d, e, lift - 1e-12));
    EXPECT_TRUE(are_coplanar_3d(a, b, b, d, e, f, 0.0)) << "no plane to be off";
}

TEST(Triangle, Areas) {
    Xyz const a{1, 2, 5}, b{5, 1, 5}, c{5, 4, 5}, standing{1, 2, 8};
    Xyz const reflex{4, 2, 5}; // the quadrilateral a, b, c, reflex is not convex; its shoelace sum is 6
    EXPECT_EQ(signed_triangle_area_2d(a, b, c), 6.0);
    EXPECT_EQ(signed_triangle_area_2d(a, c, b), -6.0);
    EXPECT_EQ(triangle_area_2d(a, c, b), 6.0);
    EXPECT_EQ(triangle_area_3d(a, c, b), 6.0);
    EXPECT_EQ(quadrilateral_area_2d(a, b, c, reflex), 3.0);
    EXPECT_EQ(quadrilateral_area_3d(a, b, c, reflex), 3.0);
    EXPECT_NEAR(triangle_area_3d(a, b, standing), std::sqrt(153.0) / 2.0, 1e-14);
}

TEST(Triangle, CirclesPassAndTouch) {
    Random coordinate(17, -1e-3, 1e-3); // small, but not flat
    Xy center{};
    double radius = 0.0;
    for (int round = 0; round < 200; ++round) {
        SCOPED_TRACE(testing::Message() << "seed 17, round " << round);
        Xy const p[3] = {coordinate.Plan(), coordinate.Plan(), coordinate.Plan()};
        double const area = signed_triangle_area_2d(p[0], p[1], p[2]);
        if (std::abs(area) < 1e-9)
            continue;
        ASSERT_TRUE(circumscribed_circle_2d(p[0], p[1], p[2], center, radius));
        for (Xy const &corner : p)
            EXPECT_NEAR(Length(corner - center), radius, 1e-9 * radius);
        ASSERT_TRUE(inscribed_circle_2d(p[0], p[1], p[2], center, radius));
        for (int i = 0; i < 3; ++i) {
            double const strip = signed_triangle_area_2d(center, p[i], p[(i + 1) % 3]);
            EXPECT_NEAR(std::copysign(2.0, area) * strip / Length(p[(i + 1) % 3] - p[i]), radius, 1e-15);
        }
    }
    Xy const a{10, 20}, b{14, 20}, c{10, 23}, collinear{18, 20};
    ASSERT_TRUE(inscribed_circle_2d(c, b, a, center, radius));
    ExpectNear(center, Xy{11, 21});
    EXPECT_NEAR(radius, 1.0, 1e-14);
    double const before = radius;
    EXPECT_FALSE(circumscribed_circle_2d(a, b, collinear, center, radius));
    EXPECT_FALSE(inscribed_circle_2d(a, a, a, center, radius));
    EXPECT_EQ(radius, before) << "nothing is written on failure";
}

} // namespace zvi::lib::test
