#include "zvi/math/Intersection.h"

#include "tests/math/Near.h"

#include <cmath>
#include <random>

namespace zvi::lib {

using test::ExpectNear;
using test::Xy;
using test::Xyz;

TEST(Intersection, SegmentsInThePlane) {
    struct Row {
        double a[2], b[2], c[2], d[2];
        bool crosses, meets, extended;
        Xy point;
    };
    double const nan = std::nan("");
    Row const rows[] = {
        {{0, 0}, {4, 4}, {0, 4}, {4, 0}, true, true, true, {2, 2}},
        {{0, 0}, {4, 4}, {4, 4}, {9, 0}, false, true, true, {4, 4}},     // a shared end
        {{0, 0}, {4, 0}, {2, 0}, {2, 5}, false, true, true, {2, 0}},     // touching in a T
        {{0, 0}, {4, 0}, {6, -1}, {6, 1}, false, false, true, {6, 0}},   // beyond the first
        {{0, 0}, {4, 0}, {2, 1}, {2, 3}, false, false, true, {2, 0}},    // beyond the second
        {{0, 0}, {4, 0}, {0, 1}, {4, 1}, false, false, false, {0, 0}},   // parallel
        {{0, 0}, {4, 0}, {2, 0}, {6, 0}, false, false, false, {0, 0}},   // overlapping
        {{0, 0}, {4, 0}, {2, 0}, {2, 0}, false, false, false, {0, 0}},   // no length
        {{0, 0}, {4, 0}, {2, nan}, {2, 1}, false, false, false, {0, 0}}, // not a number
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(&row - rows);
        double out[2] = {0, 0};
        EXPECT_EQ(check_line_line_intersection_2d(row.a, row.b, row.c, row.d), row.crosses);
        EXPECT_EQ(check_line_line_intersection_2d(row.d, row.c, row.a, row.b), row.crosses);
        EXPECT_EQ(intersect_line_line_2d(row.a, row.b, row.c, row.d, out), row.meets);
        ExpectNear(out, row.meets ? row.point : Xy{0, 0});
        EXPECT_EQ(intersect_line_line_2d_extension(row.a, row.b, row.c, row.d, out), row.extended);
        ExpectNear(out, row.point);
    }
}

TEST(Intersection, FractionsAreWrittenOutsideTheSegmentsToo) {
    double s = 9.0;
    double t = 9.0;
    EXPECT_FALSE(intersect_line_line_2d(0, 0, 1, 0, 1.00000001, 1, 1.00000001, -3, s, t));
    EXPECT_EQ(s, 1.00000001);
    EXPECT_EQ(t, 0.25);
    EXPECT_TRUE(intersect_line_line_2d(0, 0, 1, 0, 1.000000009, 1, 1.000000009, -3, s, t));
    EXPECT_TRUE(intersect_line_line_2d(0, 0, 1, 0, -9e-9, 1, -9e-9, -3, s, t));
    EXPECT_FALSE(intersect_line_line_2d(0, 0, 1, 0, -1e-8, 1, -1e-8, -3, s, t));
    EXPECT_FALSE(intersect_line_line_2d(0, 0, 1, 0, 0.5, 1, 0.5, 1 - 9e-9, s, t)) << "no length";
    EXPECT_EQ(s, -1e-8);
}

TEST(Intersection, PointOfTwoLinesLiesOnTheSecond) {
    // The lines pass each other 0.0008 apart, one along x at height 0, the other along y at that height.
    double const a[3] = {0, 0, 0};
    double const b[3] = {4, 0, 0};
    double const c[3] = {1, -2, 0.0008};
    double const d[3] = {1, 2, 0.0008};
    double out[3] = {7, 7, 7};
    EXPECT_TRUE(intersect_line_line_3d_extension(a, b, c, d, out));
    ExpectNear(out, Xyz{1, 0, 0.0008});
    EXPECT_FALSE(intersect_line_line_3d(a, b, c, d, out)) << "on the first only with a coarser tolerance";
    EXPECT_TRUE(intersect_line_line_3d_withTol(a, b, c, d, out, 0.002));
    EXPECT_FALSE(intersect_line_line_3d_withTol(a, b, c, d, out, 0.0007));
    double const apartC[3] = {1, -2, 0.0012};
    double const apartD[3] = {1, 2, 0.0012};
    EXPECT_FALSE(intersect_line_line_3d_extension(a, b, apartC, apartD, out));
}

TEST(Intersection, SegmentsInSpaceAgreeWithThoseInThePlane) {
    // Plane problems carried into space by three frames, so that each component of the cross product has its turn.
    double const frames[3][2][3] = {{{1, 0, 0}, {0, 1, 0}}, {{0, 0, 1}, {1, 0, 0}}, {{0, 1, 0}, {0, 0, 1}}};
    std::mt19937_64 random(5);
    std::uniform_int_distribution<int> coordinate(-8, 8);
    for (int round = 0; round < 600; ++round) {
        double plane[4][2];
        double space[4][3];
        auto const &frame = frames[round % 3];
        for (int i = 0; i < 4; ++i) {
            plane[i][0] = coordinate(random);
            plane[i][1] = coordinate(random);
            for (int k = 0; k < 3; ++k)
                space[i][k] = 2.0 + plane[i][0] * frame[0][k] + plane[i][1] * frame[1][k];
        }
        SCOPED_TRACE(testing::Message() << "seed 5, round " << round);
        double out2[2] = {0, 0};
        double out3[3] = {0, 0, 0};
        bool const meets = intersect_line_line_2d(plane[0], plane[1], plane[2], plane[3], out2);
        ASSERT_EQ(intersect_line_line_3d(space[0], space[1], space[2], space[3], out3), meets);
        ASSERT_EQ(intersect_line_line_3d_withTol(space[0], space[1], space[2], space[3], out3, 1e-6), meets);
        for (int k = 0; meets && k < 3; ++k)
            EXPECT_NEAR(out3[k], 2.0 + out2[0] * frame[0][k] + out2[1] * frame[1][k], 1e-12);
        bool const extended = intersect_line_line_2d_extension(plane[0], plane[1], plane[2], plane[3], out2);
        ASSERT_EQ(intersect_line_line_3d_extension(space[0], space[1], space[2], space[3], out3), extended);
        for (int k = 0; extended && k < 3; ++k)
            EXPECT_NEAR(out3[k], 2.0 + out2[0] * frame[0][k] + out2[1] * frame[1][k], 1e-9);
    }
}

TEST(Intersection, GateLooksAtTheLastPointOrWithTolAtEitherOfTheTwo) {
    // c hangs 1e-5 over the first line, so the plane a, b, c stands upright and d is 4 off it; c is hardly off a, b, d.
    double const a[3] = {0, 0, 0};
    double const b[3] = {10, 0, 0};
    double const c[3] = {5, 0, 1e-5};
    double const d[3] = {5, 4, 0};
    double out[3];
    EXPECT_FALSE(intersect_line_line_3d(a, b, c, d, out));
    EXPECT_TRUE(intersect_line_line_3d_withTol(a, b, c, d, out, 1e-4));
    ExpectNear(out, Xyz{5, 0, 1e-5}, 1e-9);
}

TEST(Intersection, TriangleAndQuadrilateralWithASegment) {
    double const q[4][3] = {{0, 0, 1}, {4, 0, 1}, {4, 4, 1}, {0, 4, 1}};
    struct Row {
        double from[3], to[3];
        bool first, both;
    };
    Row const rows[] = {
        {{3, 1, 0}, {3, 1, 2}, true, true},     {{1, 3, 0}, {1, 3, 2}, false, true},
        {{2, 2, 0}, {2, 2, 5}, true, true},     {{3, 1, 0}, {3, 1, 1}, true, true}, // ends on the face
        {{3, 1, 0}, {3, 1, 0.9}, false, false}, {{5, 1, 0}, {5, 1, 2}, false, false},
        {{0, 1, 1}, {4, 1, 1}, false, false}, // runs in the plane
        {{3, 1, 0}, {3, 1, 0}, false, false},   {{6, 3, 0}, {0, -1, 2}, true, true},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(&row - rows);
        EXPECT_EQ(intersect_triangle_line_3d(q[0], q[1], q[2], row.from, row.to), row.first);
        EXPECT_EQ(intersect_triangle_line_3d(q[2], q[1], q[0], row.to, row.from), row.first);
        EXPECT_EQ(intersect_quadrilateral_line_3d(q[0], q[1], q[2], q[3], row.from, row.to), row.both);
    }
    double const flat[3] = {2, 0, 1};
    EXPECT_FALSE(intersect_triangle_line_3d(q[0], q[1], flat, rows[0].from, rows[0].to));
    EXPECT_FALSE(intersect_triangle_line_3d(q[0], q[1], q[1], rows[0].from, rows[0].to));
}

} // namespace zvi::lib
