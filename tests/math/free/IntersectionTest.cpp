#include "zvi/math/free/Intersection.h"

#include "tests/math/Near.h"

namespace zvi::lib::test {

TEST(Intersection, SegmentsInThePlane) {
    // Crossing; a shared end; touching in a T; beyond the first; beyond the second; parallel; overlapping; no length;
    // not a number.
    for (auto const &[a, b, c, d, crosses, meets, extended, point] : Rows<Xy, Xy, Xy, Xy, bool, bool, bool, Xy>(
             "0 0 4 4  0 4 4 0  1 1 1  2 2; 0 0 4 4  4 4 9 0  0 1 1  4 4; 0 0 4 0  2 0 2 5  0 1 1  2 0;"
             "0 0 4 0  6 -1 6 1  0 0 1  6 0; 0 0 4 0  2 1 2 3  0 0 1  2 0; 0 0 4 0  0 1 4 1  0 0 0  0 0;"
             "0 0 4 0  2 0 6 0  0 0 0  0 0; 0 0 4 0  2 0 2 0  0 0 0  0 0; 0 0 4 0  2 nan 2 1  0 0 0  0 0")) {
        SCOPED_TRACE(testing::Message() << a << b << c << d);
        Xy out{0, 0};
        EXPECT_EQ(check_line_line_intersection_2d(a, b, c, d), crosses);
        EXPECT_EQ(check_line_line_intersection_2d(d, c, a, b), crosses);
        EXPECT_EQ(intersect_line_line_2d(a, b, c, d, out), meets);
        ExpectNear(out, meets ? point : Xy{0, 0});
        EXPECT_EQ(intersect_line_line_2d_extension(a, b, c, d, out), extended);
        ExpectNear(out, point);
    }
}

TEST(Intersection, FractionsAreWrittenOutsideTheSegmentsToo) {
    double s = 9.0, t = 9.0;
    for (auto const &[x, meets] : Rows<2>("1.00000001 0; 1.000000009 1; -9e-9 1; -1e-8 0")) {
        EXPECT_EQ(intersect_line_line_2d(0, 0, 1, 0, x, 1, x, -3, s, t), meets) << x;
        EXPECT_EQ(s, x);
        EXPECT_EQ(t, 0.25);
    }
    EXPECT_FALSE(intersect_line_line_2d(0, 0, 1, 0, 0.5, 1, 0.5, 1 - 9e-9, s, t)) << "no length";
    EXPECT_EQ(s, -1e-8);
}

TEST(Intersection, PointOfTwoLinesLiesOnTheSecond) {
    // The lines pass each other 0.0008 apart, one along x at height 0, the other along y at that height.
    Xyz const a{0, 0, 0}, b{4, 0, 0}, c{1, -2, 0.0008}, d{1, 2, 0.0008};
    Xyz out{7, 7, 7};
    EXPECT_TRUE(intersect_line_line_3d_extension(a, b, c, d, out));
    ExpectNear(out, Xyz{1, 0, 0.0008});
    EXPECT_FALSE(intersect_line_line_3d(a, b, c, d, out)) << "on the first only with a coarser tolerance";
    EXPECT_TRUE(intersect_line_line_3d_withTol(a, b, c, d, out, 0.002));
    EXPECT_FALSE(intersect_line_line_3d_withTol(a, b, c, d, out, 0.0007));
    EXPECT_FALSE(intersect_line_line_3d_extension(a, b, Xyz{1, -2, 0.0012}, Xyz{1, 2, 0.0012}, out));
    // c hangs 1e-5 over the first line, so the plane a, b, c stands upright and d is 4 off it; c is hardly off a, b, d.
    Xyz const far{10, 0, 0}, over{5, 0, 1e-5}, aside{5, 4, 0};
    EXPECT_FALSE(intersect_line_line_3d(a, far, over, aside, out)) << "the gate looks at the last point alone";
    EXPECT_TRUE(intersect_line_line_3d_withTol(a, far, over, aside, out, 1e-4)) << "or at either of the two";
    ExpectNear(out, over, 1e-9);
}

TEST(Intersection, SegmentsInSpaceAgreeWithThoseInThePlane) {
    // Plane problems carried into space by three frames, so that each component of the cross product has its turn.
    Xyz const frames[3][2] = {{{1, 0, 0}, {0, 1, 0}}, {{0, 0, 1}, {1, 0, 0}}, {{0, 1, 0}, {0, 0, 1}}};
    Random coordinate(5, -8.5, 8.5);
    for (int round = 0; round < 600; ++round) {
        SCOPED_TRACE(testing::Message() << "seed 5, round " << round);
        auto const carried = [&](Xy const &p) {
            return Xyz{2, 2, 2} + p[0] * frames[round % 3][0] + p[1] * frames[round % 3][1];
        };
        Xy p[4], flat{};
        Xyz q[4], out{};
        for (int i = 0; i < 4; ++i) {
            p[i] = {std::round(coordinate()), std::round(coordinate())};
            q[i] = carried(p[i]);
        }
        bool const meets = intersect_line_line_2d(p[0], p[1], p[2], p[3], flat);
        ASSERT_EQ(intersect_line_line_3d(q[0], q[1], q[2], q[3], out), meets);
        ASSERT_EQ(intersect_line_line_3d_withTol(q[0], q[1], q[2], q[3], out, 1e-6), meets);
        ExpectNear(out, meets ? carried(flat) : out);
        bool const extended = intersect_line_line_2d_extension(p[0], p[1], p[2], p[3], flat);
        ASSERT_EQ(intersect_line_line_3d_extension(q[0], q[1], q[2], q[3], out), extended);
        ExpectNear(out, extended ? carried(flat) : out, 1e-9);
    }
}

TEST(Intersection, TriangleAndQuadrilateralWithASegment) {
    Xyz const q[4] = {{0, 0, 1}, {4, 0, 1}, {4, 4, 1}, {0, 4, 1}};
    // The third ends on the face, the seventh runs in its plane, the eighth has no length.
    for (auto const &[from, to, first, both] : Rows<Xyz, Xyz, bool, bool>(
             "3 1 0  3 1 2  1 1; 2 2 0  2 2 5  1 1; 3 1 0  3 1 1  1 1; 1 3 0  1 3 2  0 1; 3 1 0  3 1 0.9  0 0;"
             "5 1 0  5 1 2  0 0; 0 1 1  4 1 1  0 0; 3 1 0  3 1 0  0 0; 6 3 0  0 -1 2  1 1")) {
        SCOPED_TRACE(testing::Message() << from << to);
        EXPECT_EQ(intersect_triangle_line_3d(q[0], q[1], q[2], from, to), first);
        EXPECT_EQ(intersect_triangle_line_3d(q[2], q[1], q[0], to, from), first);
        EXPECT_EQ(intersect_quadrilateral_line_3d(q[0], q[1], q[2], q[3], from, to), both);
        EXPECT_FALSE(intersect_triangle_line_3d(q[0], q[1], Xyz{2, 0, 1}, from, to)) << "no plane";
        EXPECT_FALSE(intersect_triangle_line_3d(q[0], q[1], q[1], from, to));
    }
}

} // namespace zvi::lib::test
