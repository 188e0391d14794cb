#include "zvi/math/func/MMathFunc.h"

#include "tests/math/Near.h"

namespace zvi::lib::test {

TEST(MMathFuncLine, SkewLinesAnswerOnTheSecondLine) {
    Xyz const p1{0, 0, 0}, p2{2, 0, 0}, q1{1, -1, 0.5}, q2{1, 1, 0.5};
    double dist = -1.0;
    Xyz out{9, 9, 9};
    EXPECT_EQ(MMathFunc::mathIntersectLine(p1, p2, q1, q2, 1.0, dist, out), 1);
    EXPECT_EQ(dist, 0.5);
    EXPECT_EQ(out, (Xyz{1, 0, 0.5}));
    EXPECT_EQ(MMathFunc::mathIntersectLine(q1, q2, p1, p2, 1.0, dist, out), 1);
    EXPECT_EQ(out, (Xyz{1, 0, 0}));
    EXPECT_EQ(MMathFunc::mathIntersectLine(p1, p2, q1, q2, 0.4, dist, out), 0);
    EXPECT_EQ(dist, 0.5) << "the distance is told although it is too wide";
    EXPECT_EQ(out, (Xyz{0, 0, 0}));
}

TEST(MMathFuncLine, NearlyParallelLinesDoNotMeet) {
    Xyz const p1{0, 0, 0}, p2{5, 0, 0};
    Xyz out{};
    double dist = 0.0;
    for (auto const &[sine, meets] : Rows<2>("0.00009 0; 0.00011 1")) {
        EXPECT_EQ(MMathFunc::mathIntersectLine(p1, p2, p1, Xyz{1, sine, 0}, 1e9, dist, out), meets) << sine;
        EXPECT_EQ(MMathFunc::mathIntersectLine2D(0, 0, 5, 0, 0, 0, 1, sine, out[0], out[1], 0), meets) << sine;
    }
    EXPECT_EQ(MMathFunc::mathIntersectLine(p1, p1, p1, p2, 1.0, dist, out), 0);
    EXPECT_EQ(MMathFunc::mathIntersectLine2D(0, 0, NAN, 0, 0, -1, 0, 1, out[0], out[1], 0), 0);
    EXPECT_EQ(MMathFunc::mathIntersectLine2D(0, 0, 1, 0, 3, 3, 3, 3, out[0], out[1], 0), 0);
}

TEST(MMathFuncLine, SegmentSlackIsRelativeToEachLength) {
    // The second segment rises over x at the end of the first, which is `length` long.
    for (auto const &[length, x, meets] : Rows<double, double, bool>("100 100.000009 1; 100 100.000011 0; 1 1.000009 0;"
                                                                     "1 -0.9e-7 1; 1 -1.1e-7 0; 1000 -0.9e-4 1")) {
        Xyz const p1{0, 0, 0}, p2{length, 0, 0}, q1{x, -1, 0}, q2{x, 1, 0};
        Xyz out{};
        double dist = 0.0;
        EXPECT_EQ(MMathFunc::mathIntersectLine2(p1, p2, q1, q2, 0.0, dist, out), meets) << x;
        EXPECT_EQ(MMathFunc::mathIntersectLine2(q1, q2, p1, p2, 0.0, dist, out), meets) << x;
        EXPECT_EQ(out[0], meets ? x : 0.0);
        EXPECT_EQ(MMathFunc::mathIntersectLine2D(0, 0, length, 0, x, 1, x, -1, out[0], out[1], 1), meets);
        EXPECT_EQ(MMathFunc::mathIntersectLine2D(0, 0, length, 0, x, 1, x, -1, out[0], out[1], 0), 1);
        EXPECT_EQ(out[0], x);
    }
}

TEST(MMathFuncLine, CrossingSegmentsInSpaceMeetInBothOrders) {
    Random number(77, -10.0, 10.0), part(78, -0.5, 1.5);
    for (int run = 0; run < 500; ++run) {
        SCOPED_TRACE(run);
        Xyz const meeting = number.Space();
        Xyz u = number.Space(), w = number.Space();
        u[run % 3] = w[run % 3] = 0.0; // the directions share a coordinate plane
        double const s = part(), t = part();
        Xyz const p1 = meeting - s * u, p2 = p1 + u, q1 = meeting - t * w, q2 = q1 + w;
        int const within = s > 0.0 && s < 1.0 && t > 0.0 && t < 1.0;
        double dist = 0.0;
        Xyz out{};
        EXPECT_EQ(MMathFunc::mathIntersectLine2(p1, p2, q1, q2, 1e-8, dist, out), within);
        EXPECT_EQ(MMathFunc::mathIntersectLine2(q2, q1, p1, p2, 1e-8, dist, out), within);
        ASSERT_EQ(MMathFunc::mathIntersectLine(p1, p2, q1, q2, 1e-8, dist, out), 1);
        ExpectNear(out, meeting, 1e-9);
        for (int segment = 0; run % 3 == 2 && segment < 2; ++segment) {
            EXPECT_EQ(MMathFunc::mathIntersectLine2D(p1[0], p1[1], p2[0], p2[1], q1[0], q1[1], q2[0], q2[1], out[0],
                                                     out[1], segment),
                      within || !segment);
            ExpectNear(out, within || !segment ? meeting : out, 1e-9);
        }
    }
}

TEST(MMathFuncLine, FootOfAPoint) {
    Xyz foot{};
    double &x = foot[0], &y = foot[1], &z = foot[2], t = 0.0;
    EXPECT_EQ(MMathFunc::mathPLCrossPoint(1, -1, 2, 0, 2, 2, 5, 3, 4, x, y, z, t), 1.5);
    EXPECT_EQ(t, 1.5);
    EXPECT_EQ(foot, (Xyz{1, 2, 5}));
    EXPECT_TRUE(std::isnan(MMathFunc::mathPLCrossPoint(1, 0, 0, 0, 0, 0, 5, 3, 5, x, y, z)));
    EXPECT_DOUBLE_EQ(MMathFunc::mathPLCrossPoint2D(1, -2, 4, 2, 8, -1, x, y), 5.0);
    ExpectNear(foot, Xy{4, 2}, 1e-14);
    MMathFunc::mathPLCrossPoint2D(2, 2, 2, 2, 7, 1, x, y);
    EXPECT_TRUE(std::isnan(x));
}

TEST(MMathFuncLine, PlaneEquationHoldsForItsPoints) {
    Random number(31, -10.0, 10.0);
    for (int run = 0; run < 100; ++run) {
        Xyz const p[3] = {number.Space(), number.Space(), number.Space()};
        Xyz n{}, again{};
        double d = 0.0, sameD = 0.0;
        ASSERT_EQ(MMathFunc::mathPlaneEquation(p[0], p[1], p[2], n[0], n[1], n[2], d), 1);
        EXPECT_NEAR(Length(n), 1.0, 1e-12);
        for (Xyz const &point : p)
            EXPECT_NEAR(Dot(n, point) + d, 0.0, 1e-10);
        // The triangle is seen counter-clockwise from the head of the normal.
        EXPECT_GT(Dot(Cross(p[1] - p[0], p[2] - p[0]), n), 0.0);
        MMathFunc::mathPlaneEquation(p[2], 3.0 * n, again[0], again[1], again[2], sameD);
        EXPECT_NEAR(sameD, d, 1e-10);
        ExpectNear(again, n);
    }
}

TEST(MMathFuncLine, PlaneEquationsDifferInTheSignOfD) {
    Xyz const p1{0, 0, 3}, p2{2, 0, 3}, p3{0, 5, 3}, p{4, 4, 10};
    Xyz n{9, 9, 9}, out{}, normal{0, 0, -4};
    double d = 9;
    EXPECT_EQ(MMathFunc::mathPlaneEquation(p1, p2, p3, n[0], n[1], n[2], d), 1);
    EXPECT_EQ(n, (Xyz{0, 0, 1}));
    EXPECT_EQ(d, -3.0);
    EXPECT_TRUE(MMathFunc::project_on_plane_normal(p, n[0], n[1], n[2], d, 1e-10, out));
    EXPECT_EQ(out, (Xyz{4, 4, -3})) << "the mirrored plane";
    EXPECT_TRUE(MMathFunc::project_on_plane_normal(p, n[0], n[1], n[2], -d, 1e-10, out));
    EXPECT_EQ(out, (Xyz{4, 4, 3}));
    EXPECT_EQ(MMathFunc::mathPlaneEquation(p1, p1, p3, n[0], n[1], n[2], d), 0);
    EXPECT_EQ(n, (Xyz{0, 0, 0}));
    EXPECT_EQ(d, 0.0);
    EXPECT_EQ(MMathFunc::mathPlaneEquation(p1, normal, n[0], n[1], n[2], d), 1);
    EXPECT_EQ(normal, (Xyz{0, 0, -1}));
    EXPECT_EQ(d, 3.0);
}

} // namespace zvi::lib::test
