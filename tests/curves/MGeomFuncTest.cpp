#include "zvi/curves/MGeomFunc.h"

#include "zvi/core/MVector.h"
#include "zvi/math/MMathFunc.h"
#include "zvi/math/MMatrixLib.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

using zvi::MArray;
using zvi::lib::MGeomFunc;
using zvi::lib::MMathFunc;
using zvi::lib::MMatrixLib;
using zvi::lib::T_POINT2D;
using zvi::lib::T_POINT3D;
using Vec3 = zvi::MVector<double, 3>;

namespace {

void ExpectRow(double const *row, double x, double y, double z) {
    EXPECT_NEAR(row[0], x, 1e-9);
    EXPECT_NEAR(row[1], y, 1e-9);
    EXPECT_NEAR(row[2], z, 1e-9);
}

} // namespace

TEST(MGeomFuncAxes, TellsVerticalAndHorizontalLines) {
    struct Row {
        double end[3];
        int vertical;
        int horizontal;
    };
    Row const rows[] = {
        {{0, 0, 5}, 1, 0},      {{3, 4, 0}, 0, 1},      {{1, 0, 1}, 0, 0},    {{0.0099, 0, 1}, 1, 0},
        {{0.0101, 0, 1}, 0, 0}, {{1, 0, 0.0099}, 0, 1}, {{0, 0, 1e-9}, 0, 0}, {{1e-9, 0, 0}, 0, 0},
    };
    double const start[3] = {0, 0, 0};
    for (Row const &row : rows) {
        bool const isShort = row.end[0] + row.end[2] < 1e-8;
        EXPECT_EQ(MGeomFunc::IsVerticalLine(start, row.end), row.vertical);
        EXPECT_EQ(MGeomFunc::IsHorizontalLine(start, row.end), row.horizontal);
        EXPECT_EQ(MGeomFunc::IsVertical(start, row.end, 0), row.vertical);
        EXPECT_EQ(MGeomFunc::IsVertical(start, row.end, 1), isShort ? 0 : 1 - row.horizontal);
    }
}

TEST(MGeomFuncAxes, GivesTheLocalAxesOfALine) {
    double const a[3] = {1, 1, 1};
    double const along[3] = {5, 1, 1};
    double const up[3] = {1, 1, 4};
    double const slanted[3] = {2, 1, 2};
    double m[3][3];
    int vertical = -1;
    int other = -1;
    ASSERT_EQ(MGeomFunc::calcLineLocalVector(a, along, 0, m, 0, &vertical, &other), 1);
    EXPECT_EQ(vertical, 0);
    EXPECT_EQ(other, 0);
    ExpectRow(m[0], 1, 0, 0);
    ExpectRow(m[1], 0, 1, 0);
    ExpectRow(m[2], 0, 0, 1);
    ASSERT_EQ(MGeomFunc::calcLineLocalVector(a, along, 90, m, 0, nullptr, nullptr), 1);
    ExpectRow(m[1], 0, 0, 1);
    ExpectRow(m[2], 0, -1, 0);
    ASSERT_EQ(MGeomFunc::calcLineLocalVector(a, up, 0, m, 0, &vertical, nullptr), 1);
    EXPECT_EQ(vertical, 1);
    ExpectRow(m[0], 0, 0, 1);
    ExpectRow(m[1], 0, 1, 0);
    ExpectRow(m[2], -1, 0, 0);
    double const h = std::sqrt(0.5);
    ASSERT_EQ(MGeomFunc::calcLineLocalVector(a, slanted, 0, m, 1, &vertical, &other), 1);
    EXPECT_EQ(vertical, 1);
    EXPECT_EQ(other, 1);
    ExpectRow(m[2], -h, 0, h);
    ASSERT_EQ(MGeomFunc::calcLineLocalVector(T_POINT3D{1, 1, 1}, T_POINT3D{2, 1, 2}, 0, m, 0, &vertical), 1);
    EXPECT_EQ(vertical, 0);
    float const narrowA[3] = {1, 1, 1};
    float const narrowB[3] = {1, 3, 1};
    float narrow[3][3] = {};
    ASSERT_EQ(MGeomFunc::calcLineLocalVector(narrowA, narrowB, 0, narrow, 0, nullptr, nullptr), 1);
    EXPECT_EQ(narrow[1][0], -1.0f);
    m[0][0] = 42;
    EXPECT_EQ(MGeomFunc::calcLineLocalVector(a, a, 0, m, 0, nullptr, nullptr), 0);
    EXPECT_EQ(m[0][0], 42);
}

TEST(MGeomFuncAxes, LocalAngleFindsTheTurnOfTheAxes) {
    double const a[3] = {1, 2, 3};
    double const ends[][3] = {{5, 2, 3}, {1, 7, 3}, {2, 3, 5}, {1, 2, 9}};
    for (auto const &b : ends) {
        for (double const beta : {0.0, 25.0, 90.0, -130.0, 179.0}) {
            double m[3][3];
            ASSERT_EQ(MGeomFunc::calcLineLocalVector(a, b, beta, m, 0, nullptr, nullptr), 1);
            EXPECT_NEAR(MGeomFunc::calcLineLocalAngle(a, b, m), beta, 1e-6);
        }
    }
    double const noAxes[3][3] = {};
    EXPECT_EQ(MGeomFunc::calcLineLocalAngle(a, ends[0], noAxes), 90.0);
    EXPECT_EQ(MGeomFunc::calcLineLocalAngle(a, a, noAxes), 0.0);
}

TEST(MGeomFuncAxes, CircleThroughThreePoints) {
    double const a[3] = {3, 0, 7};
    double const b[3] = {0, 3, 9};
    double const c[3] = {-3, 0, 8};
    double center[3];
    double m[3][3];
    ASSERT_EQ(MGeomFunc::CalcCurvInfoFrom3P(a, b, c, center, m, 1), 1);
    ExpectRow(center, 0, 0, 7);
    ExpectRow(m[0], -1, 0, 0);
    ExpectRow(m[1], 0, -1, 0);
    ExpectRow(m[2], 0, 0, 1);
    ASSERT_EQ(MGeomFunc::CalcCurvInfoFrom3P(a, b, c, center, m, 0), 1);
    for (double const *p : {a, b, c})
        EXPECT_NEAR(MMathFunc::PointSquareDistance(p, center), MMathFunc::PointSquareDistance(a, center), 1e-9);
    double width = 0;
    double beta = -1;
    ASSERT_EQ(MGeomFunc::CalcCurvInfoFrom3P(a, b, c, width, beta, 1), 1);
    EXPECT_NEAR(width, 3, 1e-9);
    EXPECT_NEAR(beta, 0, 1e-9);
    ASSERT_EQ(MGeomFunc::CalcCurvInfoFrom3P(c, b, a, width, beta, 1), 1);
    EXPECT_NEAR(std::fabs(beta), 180, 1e-6);
    double const line[3] = {0, 0, 7};
    center[0] = 42;
    EXPECT_EQ(MGeomFunc::CalcCurvInfoFrom3P(a, line, c, center, m, 1), 0);
    EXPECT_EQ(center[0], 42);
}

TEST(MGeomFuncAxes, PlateAxes) {
    double const quad[4][3] = {{0, 0, 0}, {4, 0, 0}, {5, 3, 0}, {1, 3, 0}};
    double m[3][3];
    ASSERT_EQ(MGeomFunc::calcPlaneLocalVector(4, quad, m), 1);
    ExpectRow(m[0], 1, 0, 0);
    ExpectRow(m[1], 0, 1, 0);
    ExpectRow(m[2], 0, 0, 1);
    double const triangle[3][3] = {{0, 0, 0}, {0, 2, 0}, {0, 2, 5}};
    ASSERT_EQ(MGeomFunc::calcPlaneLocalVector(3, triangle, m), 1);
    ExpectRow(m[0], 0, 1, 0);
    ExpectRow(m[2], 1, 0, 0);
    EXPECT_EQ(MGeomFunc::calcPlaneLocalVector(2, quad, m), 0);
    double const flat[3][3] = {{0, 0, 0}, {0, 0, 0}, {0, 2, 5}};
    EXPECT_EQ(MGeomFunc::calcPlaneLocalVector(3, flat, m), 0);
}

TEST(MGeomFuncPolyline, SegmentsTouchOrCross) {
    struct Row {
        double p[4][3];
        int any;
        int strict;
    };
    Row const rows[] = {
        {{{0, 0, 0}, {2, 2, 0}, {0, 2, 0}, {2, 0, 0}}, 1, 1},     // an X
        {{{0, 0, 0}, {2, 0, 0}, {2, 0, 0}, {3, 3, 0}}, 1, 0},     // a shared end
        {{{0, 0, 0}, {2, 0, 0}, {1, 0, 0}, {1, 3, 0}}, 1, 1},     // a T
        {{{0, 0, 0}, {3, 0, 0}, {1, 0, 0}, {2, 0, 0}}, 1, 1},     // one within the other
        {{{0, 0, 0}, {2, 2, 0}, {0, 2, 1}, {2, 0, 1}}, 0, 0},     // one over the other
        {{{0, 0, 0}, {2, 0, 0}, {2, 5e-11, 0}, {3, 3, 0}}, 1, 1}, // ends that are near, but not the same
    };
    for (Row const &row : rows) {
        EXPECT_EQ(MGeomFunc::CheckLineIntersection(row.p[0], row.p[1], row.p[2], row.p[3], 1), row.any);
        EXPECT_EQ(MGeomFunc::CheckLineIntersection(row.p[0], row.p[1], row.p[2], row.p[3], 0), row.strict);
        EXPECT_EQ(MGeomFunc::CheckLineIntersection(row.p[3], row.p[2], row.p[1], row.p[0], 0), row.strict);
    }
}

TEST(MGeomFuncPolyline, AgreesWithItsDefinitionOnRandomSegments) {
    auto const isNear = [](Vec3 const &a, Vec3 const &b, Vec3 const &p) {
        Vec3 const d = b - a;
        double const squared = MMathFunc::Dot(d.Data(), d.Data());
        double const t = squared > 0 ? MMathFunc::Dot((p - a).Data(), d.Data()) / squared : 0.0;
        Vec3 const foot = a + std::clamp(t, 0.0, 1.0) * d;
        return MMathFunc::PointSquareDistance(p.Data(), foot.Data()) < 1e-20 ? 1 : 0;
    };
    std::mt19937 random(3);
    std::uniform_real_distribution<double> nudge(-1e-6, 1e-6);
    int hits = 0;
    for (int i = 0; i < 20000; ++i) {
        // On a small lattice, some a little off it, so that ends and crossings are near the limits.
        Vec3 p[4];
        for (Vec3 &point : p) {
            double const x = static_cast<int>(random() % 4);
            double const y = static_cast<int>(random() % 4);
            point = {x, y, random() % 16 == 0 ? 1.0 : 0.0};
            if (random() % 3 == 0)
                point[0] += nudge(random);
        }
        int const touching =
            isNear(p[0], p[1], p[2]) + isNear(p[0], p[1], p[3]) + isNear(p[2], p[3], p[0]) + isNear(p[2], p[3], p[1]);
        bool const isShared = p[0] == p[2] || p[0] == p[3] || p[1] == p[2] || p[1] == p[3];
        double gap = 0;
        Vec3 at;
        int expected = touching == 2 && isShared ? 0 : 1;
        if (touching == 0)
            expected =
                MMathFunc::mathIntersectLine2(p[0].Data(), p[1].Data(), p[2].Data(), p[3].Data(), 0, gap, at.Data());
        ASSERT_EQ(MGeomFunc::CheckLineIntersection(p[0].Data(), p[1].Data(), p[2].Data(), p[3].Data(), 0), expected)
            << i;
        hits += expected;
    }
    EXPECT_GT(hits, 2000);
}

TEST(MGeomFuncPolyline, PolylinesMeetThemselvesAndOthers) {
    using Polyline = MArray<T_POINT3D>;
    EXPECT_EQ(MGeomFunc::CheckPolylineSelfIntersection(Polyline{{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}}), 0);
    EXPECT_EQ(MGeomFunc::CheckPolylineSelfIntersection(Polyline{{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {1, -1, 0}}), 1);
    // Back over an inner vertex, and back to it exactly.
    Polyline back = {{0, 0, 0}, {2, 0, 0}, {4, 0, 0}, {4, 2, 0}, {1, -1, 0}};
    EXPECT_EQ(MGeomFunc::CheckPolylineSelfIntersection(back), 1);
    back[4] = back[1];
    EXPECT_EQ(MGeomFunc::CheckPolylineSelfIntersection(back), 0);
    EXPECT_EQ(MGeomFunc::CheckPolylineSelfIntersection(Polyline{{0, 0, 0}, {2, 0, 0}}), 0);
    Polyline const base = {{0, 0, 0}, {4, 0, 0}};
    EXPECT_EQ(MGeomFunc::CheckPolylineCrossIntersection(base, Polyline{{1, 1, 0}, {1, -1, 0}}), 1);
    EXPECT_EQ(MGeomFunc::CheckPolylineCrossIntersection(base, Polyline{{1, 1, 0}, {1, 0.5, 0}}), 0);
    EXPECT_EQ(MGeomFunc::CheckPolylineCrossIntersection(base, Polyline{{1, 1, 0}}), 0);
    EXPECT_EQ(MGeomFunc::CheckPolylineCrossIntersection(base, Polyline{{3, 0, 0}, {9, 0, 0}}), 1);
    // The end of the first polyline lies on the second, which is as good as parallel: that counts in space alone.
    EXPECT_EQ(MGeomFunc::CheckPolylineCrossIntersection(base, Polyline{{2, 1e-4, 0}, {6, -1e-4, 0}}), 1);
    EXPECT_EQ(MGeomFunc::CheckPolylineCrossIntersection(MArray<T_POINT2D>{{0, 0}, {4, 0}},
                                                        MArray<T_POINT2D>{{2, 1e-4}, {6, -1e-4}}),
              0);
    EXPECT_EQ(MGeomFunc::CheckPolylineCrossIntersection(MArray<T_POINT2D>{{0, 0}, {4, 0}},
                                                        MArray<T_POINT2D>{{2, 1}, {2, -1}}),
              1);
}

TEST(MMatrixLib, TurnsALineOntoTheXAxis) {
    double const lines[][4] = {{1, 2, 5, 2}, {1, 2, 1, 9}, {1, 2, -3, 2}, {1, 2, 1, -4}, {1, 2, 4, 6}, {1, 2, -3, -1}};
    double const angles[] = {
        0, 90, 180, 270, std::atan2(4.0, 3.0) * 57.29577951308232, 180 + std::atan2(3.0, 4.0) * 57.29577951308232};
    for (int i = 0; i < 6; ++i) {
        double const *const l = lines[i];
        double const angle = MMatrixLib::CalcAngleDegLineAndAxisX(l[0], l[1], l[2], l[3]);
        EXPECT_NEAR(angle, angles[i], 1e-12);
        double m[3][3];
        MMatrixLib::RotateM2D(-angle, l[0], l[1], m);
        double const x = l[2] * m[0][0] + l[3] * m[1][0] + m[2][0];
        double const y = l[2] * m[0][1] + l[3] * m[1][1] + m[2][1];
        EXPECT_NEAR(x, l[0] + std::hypot(l[2] - l[0], l[3] - l[1]), 1e-12);
        EXPECT_NEAR(y, l[1], 1e-12);
    }
    double m[3][3];
    MMatrixLib::RotateM2D(270, 0, 0, m);
    EXPECT_EQ(m[0][0], 0);
    EXPECT_EQ(m[0][1], -1);
}
