#include "zvi/math/free/Distance.h"

#include "tests/math/Near.h"

#include <algorithm>

namespace zvi::lib::test {

TEST(Distance, LinePoint2dMeasuresAlongAxisParallelLinesOnly) {
    // On a level line: to the nearer end; off it: to the infinite line. Upright; slanted. Coincident ends count as
    // upright, and so does a line that is nearly so for a point within the limit.
    for (auto const &[p1, p2, pt, distance] : Rows<Xy, Xy, Xy, double>(
             "0 0  1 0  5 0  4; 0 0  1 0  -2 0  2; 0 0  1 0  5 -3  3; 0 0  1 0  5 5e-8  5e-8; 2 0  2 4  2 1  1;"
             "2 0  2 4  -1 9  3; 0 0  1 1  5 5  0; 1 2  9 8  -2 6  5; 1 1  1 1  4 5  3; 1 1  1 1  1 5  4;"
             "0 0  9e-9 7  9e-9 8  1"))
        EXPECT_NEAR(distance_line_point_2d(p1, p2, pt), distance, 1e-12) << p1 << p2 << pt;
    // By a direction the line has one end.
    Xy const p{1, 2}, level{-3, 0}, on{7, 2}, off{8, 3};
    EXPECT_EQ(distance_line_point_2d_vec(p, level, on), 6.0);
    EXPECT_EQ(distance_line_point_2d_vec(p, level, off), 1.0);
    EXPECT_NEAR(distance_line_point_2d_vec(p, Xy{30, 40}, off), 5.0, 1e-14);
}

TEST(Distance, LinePoint3d) {
    Xyz const p1{1, 0, 0}, p2{1, 0, 9}, pt{4, 4, -50};
    EXPECT_NEAR(distance_line_point_3d(p1, p2, pt), 5.0, 1e-13);
    EXPECT_EQ(distance_line_point_3d(p1, p1, pt), kNoAnswer);
}

TEST(Distance, SegmentPointIsThatOfTheNearestPoint) {
    for (auto const &[x2, y2, x, y, distance] :
         Rows<5>("10 0 4 3 3; 10 0 13 4 5; 10 0 -3 -4 5; 10 0 12 0 2; 3 4 1.5 2 0; 5e-5 0 2.5e-5 1 1; 0 0 4 3 1e35")) {
        Xyz const p1{0, 0, 0}, p2{x2, y2, 0}, pt{x, y, 0};
        EXPECT_NEAR(distance_segment_point_2d(p1, p2, pt), distance, 1e-9) << p2 << pt;
        EXPECT_NEAR(distance_segment_point_3d(p1, p2, pt), distance, 1e-9) << p2 << pt;
    }
    Random coordinate(11, -10.0, 10.0);
    for (int round = 0; round < 100; ++round) {
        Xyz const p1 = coordinate.Space(), p2 = coordinate.Space(), pt = coordinate.Space();
        double nearest2 = 1e9, nearest3 = 1e9;
        for (int i = 0; i <= 2000; ++i) {
            Xyz const offset = p1 + i / 2000.0 * (p2 - p1) - pt;
            nearest2 = std::min(nearest2, std::hypot(offset[0], offset[1]));
            nearest3 = std::min(nearest3, Length(offset));
        }
        EXPECT_NEAR(distance_segment_point_2d(p1, p2, pt), nearest2, 2e-3) << "seed 11, round " << round;
        EXPECT_NEAR(distance_segment_point_3d(p1, p2, pt), nearest3, 2e-3) << "seed 11, round " << round;
    }
    // A point far out on the line, whose end is the nearest one.
    Xyz const p1{0.1, 0.2, 0.3}, p2{1.1, 1.9, 3.3};
    for (double t : {2.0, 1e3, 1e6, -5e7}) {
        double const expected = std::min(std::abs(t), std::abs(t - 1.0)) * Length(p2 - p1);
        EXPECT_NEAR(distance_segment_point_3d(p1, p2, p1 + t * (p2 - p1)), expected, 1e-12 * expected) << t;
    }
}

TEST(Distance, PlanePoint) {
    Xyz const a{0, 0, 1}, b{2, 0, 1}, c{0, 2, 1}, pt{5, 6, -3};
    EXPECT_EQ(distance_plane_point_3d(a, b, c, pt), 4.0);
    EXPECT_EQ(distance_plane_point_normal_3d(a, b, c, pt), 4.0);
    EXPECT_EQ(distance_plane_point_3d(Xyz{0, 0, 2}, a, pt), 8.0) << "the normal is used as given";
    EXPECT_EQ(distance_plane_point_3d(a, b, b, pt), 0.0) << "no plane";
    EXPECT_NEAR(distance_plane_point_vector_3d(a, b, c, Xyz{3, 0, 4}, pt), 5.0, 1e-14);
    EXPECT_EQ(distance_plane_point_vector_3d(a, b, c, Xyz{1, 1, 0}, pt), 0.0) << "along the plane";
    EXPECT_EQ(distance_plane_point_vector_3d(a, b, c, Xyz{0, 0, 0}, pt), 4.0);
}

} // namespace zvi::lib::test
