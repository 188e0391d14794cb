#include "zvi/math/MMathFunc.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

using zvi::lib::MMathFunc;

TEST(MMathFuncLine, SkewLinesAnswerOnTheSecondLine) {
    double const p1[3] = {0, 0, 0}, p2[3] = {2, 0, 0};
    double const q1[3] = {1, -1, 0.5}, q2[3] = {1, 1, 0.5};
    double dist = -1.0;
    double out[3] = {9, 9, 9};
    EXPECT_EQ(MMathFunc::mathIntersectLine(p1, p2, q1, q2, 1.0, dist, out), 1);
    EXPECT_EQ(dist, 0.5);
    EXPECT_EQ(out[2], 0.5);
    EXPECT_EQ(MMathFunc::mathIntersectLine(q1, q2, p1, p2, 1.0, dist, out), 1);
    EXPECT_EQ(out[0], 1.0);
    EXPECT_EQ(out[2], 0.0);
    EXPECT_EQ(MMathFunc::mathIntersectLine(p1, p2, q1, q2, 0.4, dist, out), 0);
    EXPECT_EQ(dist, 0.5) << "the distance is told although it is too wide";
    EXPECT_EQ(out[0], 0.0);
}

TEST(MMathFuncLine, NearlyParallelLinesDoNotMeet) {
    double const p1[3] = {0, 0, 0}, p2[3] = {5, 0, 0};
    double dist = 0.0;
    double out[3];
    struct {
        double sine;
        int result;
    } const rows[] = {{0.00009, 0}, {0.00011, 1}};
    for (auto const &row : rows) {
        double const q2[3] = {1.0, row.sine, 0.0};
        EXPECT_EQ(MMathFunc::mathIntersectLine(p1, p2, p1, q2, 1e9, dist, out), row.result) << row.sine;
        EXPECT_EQ(MMathFunc::mathIntersectLine2D(0, 0, 5, 0, 0, 0, 1, row.sine, out[0], out[1], 0), row.result);
    }
    EXPECT_EQ(MMathFunc::mathIntersectLine(p1, p1, p1, p2, 1.0, dist, out), 0);
    EXPECT_EQ(MMathFunc::mathIntersectLine2D(0, 0, NAN, 0, 0, -1, 0, 1, out[0], out[1], 0), 0);
    EXPECT_EQ(MMathFunc::mathIntersectLine2D(0, 0, 1, 0, 3, 3, 3, 3, out[0], out[1], 0), 0);
}

TEST(MMathFuncLine, SegmentSlackIsRelativeToEachLength) {
    // The second segment rises over x at the end of the first, which is `length` long.
    struct {
        double length, x;
        int result;
    } const rows[] = {{100, 100.000009, 1}, {100, 100.000011, 0}, {1, 1.000009, 0},
                      {1, -0.9e-7, 1},      {1, -1.1e-7, 0},      {1000, -0.9e-4, 1}};
    for (auto const &row : rows) {
        double const p1[3] = {0, 0, 0}, p2[3] = {row.length, 0, 0};
        double const q1[3] = {row.x, -1, 0}, q2[3] = {row.x, 1, 0};
        double dist = 0.0;
        double out[3];
        double x = 0.0;
        double y = 0.0;
        EXPECT_EQ(MMathFunc::mathIntersectLine2(p1, p2, q1, q2, 0.0, dist, out), row.result) << row.x;
        EXPECT_EQ(MMathFunc::mathIntersectLine2(q1, q2, p1, p2, 0.0, dist, out), row.result) << row.x;
        EXPECT_EQ(out[0], row.result ? row.x : 0.0);
        EXPECT_EQ(MMathFunc::mathIntersectLine2D(0, 0, row.length, 0, row.x, 1, row.x, -1, x, y, 1), row.result);
        EXPECT_EQ(MMathFunc::mathIntersectLine2D(0, 0, row.length, 0, row.x, 1, row.x, -1, x, y, 0), 1);
        EXPECT_EQ(x, row.x);
    }
}

TEST(MMathFuncLine, CrossingSegmentsInSpaceMeetInBothOrders) {
    std::mt19937 random(77);
    std::uniform_real_distribution<double> number(-10.0, 10.0);
    std::uniform_real_distribution<double> part(-0.5, 1.5);
    for (int run = 0; run < 500; ++run) {
        SCOPED_TRACE(run);
        double meeting[3], u[3], w[3], p1[3], p2[3], q1[3], q2[3];
        double const s = part(random), t = part(random);
        for (int i = 0; i < 3; ++i) {
            meeting[i] = number(random);
            u[i] = i == run % 3 ? 0.0 : number(random); // the directions share a coordinate plane
            w[i] = i == run % 3 ? 0.0 : number(random);
            p1[i] = meeting[i] - s * u[i];
            p2[i] = p1[i] + u[i];
            q1[i] = meeting[i] - t * w[i];
            q2[i] = q1[i] + w[i];
        }
        int const within = s > 0.0 && s < 1.0 && t > 0.0 && t < 1.0;
        double dist = 0.0;
        double out[3];
        EXPECT_EQ(MMathFunc::mathIntersectLine2(p1, p2, q1, q2, 1e-8, dist, out), within);
        EXPECT_EQ(MMathFunc::mathIntersectLine2(q2, q1, p1, p2, 1e-8, dist, out), within);
        ASSERT_EQ(MMathFunc::mathIntersectLine(p1, p2, q1, q2, 1e-8, dist, out), 1);
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(out[i], meeting[i], 1e-9);
        if (run % 3 == 2) {
            double x = 0.0, y = 0.0;
            EXPECT_EQ(MMathFunc::mathIntersectLine2D(p1[0], p1[1], p2[0], p2[1], q1[0], q1[1], q2[0], q2[1], x, y, 1),
                      within);
            EXPECT_EQ(MMathFunc::mathIntersectLine2D(p1[0], p1[1], p2[0], p2[1], q1[0], q1[1], q2[0], q2[1], x, y, 0),
                      1);
            EXPECT_NEAR(std::hypot(x - meeting[0], y - meeting[1]), 0.0, 1e-9);
        }
    }
}

TEST(MMathFuncLine, FootOfAPoint) {
    double x = 0.0, y = 0.0, z = 0.0, t = 0.0;
    EXPECT_EQ(MMathFunc::mathPLCrossPoint(1, -1, 2, 0, 2, 2, 5, 3, 4, x, y, z, t), 1.5);
    EXPECT_EQ(t, 1.5);
    EXPECT_EQ(x, 1.0);
    EXPECT_EQ(y, 2.0);
    EXPECT_EQ(z, 5.0);
    EXPECT_TRUE(std::isnan(MMathFunc::mathPLCrossPoint(1, 0, 0, 0, 0, 0, 5, 3, 5, x, y, z)));
    EXPECT_DOUBLE_EQ(MMathFunc::mathPLCrossPoint2D(1, -2, 4, 2, 8, -1, x, y), 5.0);
    EXPECT_DOUBLE_EQ(x, 4.0);
    EXPECT_DOUBLE_EQ(y, 2.0);
    MMathFunc::mathPLCrossPoint2D(2, 2, 2, 2, 7, 1, x, y);
    EXPECT_TRUE(std::isnan(x));
}

TEST(MMathFuncLine, PlaneEquationHoldsForItsPoints) {
    std::mt19937 random(31);
    std::uniform_real_distribution<double> number(-10.0, 10.0);
    for (int run = 0; run < 100; ++run) {
        double p[3][3];
        for (auto &row : p)
            for (double &value : row)
                value = number(random);
        double n[3], d = 0.0;
        ASSERT_EQ(MMathFunc::mathPlaneEquation(p[0], p[1], p[2], n[0], n[1], n[2], d), 1);
        EXPECT_NEAR(MMathFunc::Dot(n, n), 1.0, 1e-12);
        for (auto const &row : p)
            EXPECT_NEAR(MMathFunc::Dot(n, row) + d, 0.0, 1e-10);
        // The triangle is seen counter-clockwise from the head of the normal.
        double const above[3] = {p[0][0] + n[0], p[0][1] + n[1], p[0][2] + n[2]};
        double u[3], w[3], v[3];
        MMathFunc::VectorSubtract(p[1], p[0], u);
        MMathFunc::VectorSubtract(p[2], p[0], w);
        MMathFunc::VectorSubtract(above, p[0], v);
        EXPECT_GT(MMathFunc::Dot(MMathFunc::VectorCross(u, w, u), v), 0.0);
        double again[3] = {3.0 * n[0], 3.0 * n[1], 3.0 * n[2]};
        double a = 0, b = 0, c = 0, sameD = 0;
        MMathFunc::mathPlaneEquation(p[2], again, a, b, c, sameD);
        EXPECT_NEAR(sameD, d, 1e-10);
    }
}

TEST(MMathFuncLine, PlaneEquationsDifferInTheSignOfD) {
    double const p1[3] = {0, 0, 3}, p2[3] = {2, 0, 3}, p3[3] = {0, 5, 3};
    double a = 9, b = 9, c = 9, d = 9;
    EXPECT_EQ(MMathFunc::mathPlaneEquation(p1, p2, p3, a, b, c, d), 1);
    EXPECT_EQ(c, 1.0);
    EXPECT_EQ(d, -3.0);
    double const p[3] = {4, 4, 10};
    double out[3];
    EXPECT_TRUE(MMathFunc::project_on_plane_normal(p, a, b, c, d, 1e-10, out));
    EXPECT_EQ(out[2], -3.0) << "the mirrored plane";
    EXPECT_TRUE(MMathFunc::project_on_plane_normal(p, a, b, c, -d, 1e-10, out));
    EXPECT_EQ(out[2], 3.0);
    EXPECT_EQ(MMathFunc::mathPlaneEquation(p1, p1, p3, a, b, c, d), 0);
    EXPECT_EQ(c, 0.0);
    EXPECT_EQ(d, 0.0);
    double normal[3] = {0, 0, -4};
    EXPECT_EQ(MMathFunc::mathPlaneEquation(p1, normal, a, b, c, d), 1);
    EXPECT_EQ(normal[2], -1.0);
    EXPECT_EQ(d, 3.0);
}
