#include "zvi/math/Distance.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

namespace zvi::lib {

TEST(Distance, LinePoint2dMeasuresAlongAxisParallelLinesOnly) {
    struct Row {
        double p1[2], p2[2], pt[2], distance;
    };
    Row const rows[] = {
        {{0, 0}, {1, 0}, {5, 0}, 4.0},  // a point of a horizontal line: to the nearer end
        {{0, 0}, {1, 0}, {-2, 0}, 2.0}, //
        {{0, 0}, {1, 0}, {5, -3}, 3.0},      {{0, 0}, {1, 0}, {5, 5e-8}, 5e-8}, // off it: to the infinite line
        {{2, 0}, {2, 4}, {2, 1}, 1.0},                                          // a point of a vertical segment
        {{2, 0}, {2, 4}, {-1, 9}, 3.0},                                         //
        {{0, 0}, {1, 1}, {5, 5}, 0.0},                                          // a point of a slanted line
        {{1, 2}, {9, 8}, {-2, 6}, 5.0},                                         //
        {{1, 1}, {1, 1}, {4, 5}, 3.0},       // coincident ends count as a vertical line
        {{1, 1}, {1, 1}, {1, 5}, 4.0},       //
        {{0, 0}, {9e-9, 7}, {9e-9, 8}, 1.0}, // nearly vertical, the point within the limit
    };
    for (Row const &row : rows) {
        EXPECT_NEAR(distance_line_point_2d(row.p1, row.p2, row.pt), row.distance, 1e-12) << &row - rows;
    }
}

TEST(Distance, LinePoint2dByDirectionHasOneEnd) {
    double const p[2] = {1.0, 2.0};
    double const horizontal[2] = {-3.0, 0.0};
    double const slanted[2] = {30.0, 40.0};
    double const onLine[2] = {7.0, 2.0};
    double const off[2] = {8.0, 3.0};
    EXPECT_EQ(distance_line_point_2d_vec(p, horizontal, onLine), 6.0);
    EXPECT_EQ(distance_line_point_2d_vec(p, horizontal, off), 1.0);
    EXPECT_NEAR(distance_line_point_2d_vec(p, slanted, off), 5.0, 1e-14);
}

TEST(Distance, LinePoint3d) {
    double const p1[3] = {1, 0, 0};
    double const p2[3] = {1, 0, 9};
    double const pt[3] = {4, 4, -50};
    EXPECT_NEAR(distance_line_point_3d(p1, p2, pt), 5.0, 1e-13);
    EXPECT_EQ(distance_line_point_3d(p1, p1, pt), kNoAnswer);
}

TEST(Distance, SegmentPointIsThatOfTheNearestPoint) {
    struct Row {
        double p1[3], p2[3], pt[3], distance;
    };
    Row const rows[] = {
        {{0, 0, 0}, {10, 0, 0}, {4, 3, 0}, 3.0},   {{0, 0, 0}, {10, 0, 0}, {13, 4, 0}, 5.0},
        {{0, 0, 0}, {10, 0, 0}, {-3, -4, 0}, 5.0}, {{0, 0, 0}, {10, 0, 0}, {12, 0, 0}, 2.0},
        {{0, 0, 0}, {3, 4, 0}, {1.5, 2, 0}, 0.0},  {{0, 0, 0}, {5e-5, 0, 0}, {2.5e-5, 1, 0}, 1.0},
    };
    for (Row const &row : rows) {
        EXPECT_NEAR(distance_segment_point_2d(row.p1, row.p2, row.pt), row.distance, 1e-9) << &row - rows;
        EXPECT_NEAR(distance_segment_point_3d(row.p1, row.p2, row.pt), row.distance, 1e-9) << &row - rows;
    }
    EXPECT_EQ(distance_segment_point_2d(rows[0].p1, rows[0].p1, rows[0].pt), kNoAnswer);
    EXPECT_EQ(distance_segment_point_3d(rows[0].p1, rows[0].p1, rows[0].pt), kNoAnswer);
}

TEST(Distance, SegmentPointAgreesWithSampling) {
    std::mt19937_64 random(11);
    std::uniform_real_distribution<double> coordinate(-10.0, 10.0);
    for (int round = 0; round < 100; ++round) {
        double p[3][3];
        for (auto &point : p) {
            for (double &x : point)
                x = coordinate(random);
        }
        double nearest2 = 1e9;
        double nearest3 = 1e9;
        for (int i = 0; i <= 2000; ++i) {
            double q[3];
            for (int k = 0; k < 3; ++k)
                q[k] = p[0][k] + (p[1][k] - p[0][k]) * i / 2000.0;
            nearest2 = std::min(nearest2, distance_2d(q, p[2]));
            nearest3 = std::min(nearest3, distance_3d(q, p[2]));
        }
        EXPECT_NEAR(distance_segment_point_2d(p[0], p[1], p[2]), nearest2, 2e-3) << "seed 11, round " << round;
        EXPECT_NEAR(distance_segment_point_3d(p[0], p[1], p[2]), nearest3, 2e-3) << "seed 11, round " << round;
    }
}

TEST(Distance, SegmentPoint3dOfAPointFarOutOnTheLine) {
    double const p1[3] = {0.1, 0.2, 0.3};
    double const p2[3] = {1.1, 1.9, 3.3};
    for (double t : {2.0, 1e3, 1e6, -5e7}) {
        double const pt[3] = {p1[0] + t * 1.0, p1[1] + t * 1.7, p1[2] + t * 3.0};
        double const expected = std::min(distance_3d(p1, pt), distance_3d(p2, pt));
        EXPECT_NEAR(distance_segment_point_3d(p1, p2, pt), expected, 1e-12 * expected) << t;
    }
}

TEST(Distance, PlanePoint) {
    double const a[3] = {0, 0, 1};
    double const b[3] = {2, 0, 1};
    double const c[3] = {0, 2, 1};
    double const pt[3] = {5, 6, -3};
    double const slanted[3] = {3, 0, 4};
    double const along[3] = {1, 1, 0};
    double const zero[3] = {0, 0, 0};
    double const longNormal[3] = {0, 0, 2};
    EXPECT_EQ(distance_plane_point_3d(a, b, c, pt), 4.0);
    EXPECT_EQ(distance_plane_point_normal_3d(a, b, c, pt), 4.0);
    EXPECT_EQ(distance_plane_point_3d(longNormal, a, pt), 8.0) << "the normal is used as given";
    EXPECT_EQ(distance_plane_point_3d(a, b, b, pt), 0.0) << "no plane";
    EXPECT_NEAR(distance_plane_point_vector_3d(a, b, c, slanted, pt), 5.0, 1e-14);
    EXPECT_EQ(distance_plane_point_vector_3d(a, b, c, along, pt), 0.0);
    EXPECT_EQ(distance_plane_point_vector_3d(a, b, c, zero, pt), 4.0);
}

} // namespace zvi::lib
