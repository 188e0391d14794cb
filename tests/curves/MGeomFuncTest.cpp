#include "zvi/curves/MGeomFunc.h"

#include "tests/Rows.h"
#include "tests/curves/CurveFixtures.h"
#include "zvi/math/func/MMathFunc.h"

#include <algorithm>
#include <cmath>
#include <random>
#include <tuple>

namespace zvi::lib::test {

namespace {

void ExpectRows(double const m[3][3], Vec3 const &along, Vec3 const &side, Vec3 const &up) {
    ExpectNear(Vec3::FromArray(m[0]), along);
    ExpectNear(Vec3::FromArray(m[1]), side);
    ExpectNear(Vec3::FromArray(m[2]), up);
}

} // namespace

TEST(MGeomFuncAxes, TellsVerticalAndHorizontalLines) {
    double const start[3] = {0, 0, 0};
    for (auto const &[x, y, z, vertical, horizontal, notHorizontal] :
         Rows<6>("0 0 5 1 0 1; 3 4 0 0 1 0; 1 0 1 0 0 1; 0.0099 0 1 1 0 1; 0.0101 0 1 0 0 1; 1 0 0.0099 0 1 0;"
                 "0 0 1e-9 0 0 0; 1e-9 0 0 0 0 0")) {
        double const end[] = {x, y, z};
        EXPECT_EQ(MGeomFunc::IsVerticalLine(start, end), vertical);
        EXPECT_EQ(MGeomFunc::IsHorizontalLine(start, end), horizontal);
        EXPECT_EQ(MGeomFunc::IsVertical(start, end, 0), vertical);
        EXPECT_EQ(MGeomFunc::IsVertical(start, end, 1), notHorizontal);
    }
}

TEST(MGeomFuncAxes, GivesTheLocalAxesOfALine) {
    double const h = std::sqrt(0.5);
    struct Row {
        double end[3];
        double beta = 0;
        int mode = 0, vertical = 0, other = 0;
        Vec3 along, side, up;
    };
    Row const rows[] = {
        {.end = {5, 1, 1}, .along = {1, 0, 0}, .side = {0, 1, 0}, .up = {0, 0, 1}},
        {.end = {5, 1, 1}, .mode = 1, .along = {1, 0, 0}, .side = {0, 1, 0}, .up = {0, 0, 1}},
        {.end = {5, 1, 1}, .beta = 90, .along = {1, 0, 0}, .side = {0, 0, 1}, .up = {0, -1, 0}},
        {.end = {1, 3, 1}, .along = {0, 1, 0}, .side = {-1, 0, 0}, .up = {0, 0, 1}},
        {.end = {1, 1, 4}, .vertical = 1, .along = {0, 0, 1}, .side = {0, 1, 0}, .up = {-1, 0, 0}},
        {.end = {1, 1, 4}, .mode = 1, .vertical = 1, .along = {0, 0, 1}, .side = {0, 1, 0}, .up = {-1, 0, 0}},
        {.end = {2, 1, 2}, .along = {h, 0, h}, .side = {0, 1, 0}, .up = {-h, 0, h}},
        {.end = {2, 1, 2},
         .mode = 1,
         .vertical = 1,
         .other = 1,
         .along = {h, 0, h},
         .side = {0, 1, 0},
         .up = {-h, 0, h}}, // vertical by the other rule alone
    };
    double const a[3] = {1, 1, 1};
    float const narrowA[3] = {1, 1, 1};
    double m[3][3];
    for (Row const &row : rows) {
        int vertical = -1, other = -1;
        ASSERT_EQ(MGeomFunc::calcLineLocalVector(a, row.end, row.beta, m, row.mode, &vertical, &other), 1);
        EXPECT_EQ(vertical, row.vertical);
        EXPECT_EQ(other, row.other);
        ExpectRows(m, row.along, row.side, row.up);
        T_POINT3D const end = {row.end[0], row.end[1], row.end[2]};
        ASSERT_EQ(MGeomFunc::calcLineLocalVector({1, 1, 1}, end, row.beta, m, row.mode, &vertical), 1);
        ExpectRows(m, row.along, row.side, row.up);
        float const narrowB[3] = {float(end.x), float(end.y), float(end.z)};
        float narrow[3][3];
        ASSERT_EQ(MGeomFunc::calcLineLocalVector(narrowA, narrowB, row.beta, narrow, row.mode, nullptr, nullptr), 1);
        ExpectNear({narrow[1][0], narrow[1][1], narrow[1][2]}, row.side, 1e-7);
    }
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
    Vec3 const a = {3, 0, 7}, b = {0, 3, 9}, c = {-3, 0, 8}, onChord = {0, 0, 7};
    Vec3 center;
    double m[3][3];
    ASSERT_EQ(MGeomFunc::CalcCurvInfoFrom3P(a.Data(), b.Data(), c.Data(), center.Data(), m, 1), 1);
    ExpectNear(center, {0, 0, 7});
    ExpectRows(m, {-1, 0, 0}, {0, -1, 0}, {0, 0, 1});
    ASSERT_EQ(MGeomFunc::CalcCurvInfoFrom3P(a.Data(), b.Data(), c.Data(), center.Data(), m, 0), 1);
    EXPECT_NEAR(Distance(b, center), Distance(a, center), 1e-9);
    EXPECT_NEAR(Distance(c, center), Distance(a, center), 1e-9);
    double width = 0, beta = -1;
    ASSERT_EQ(MGeomFunc::CalcCurvInfoFrom3P(a.Data(), b.Data(), c.Data(), width, beta, 1), 1);
    EXPECT_NEAR(width, 3, 1e-9);
    EXPECT_NEAR(beta, 0, 1e-9);
    ASSERT_EQ(MGeomFunc::CalcCurvInfoFrom3P(c.Data(), b.Data(), a.Data(), width, beta, 1), 1);
    EXPECT_NEAR(std::fabs(beta), 180, 1e-6);
    center[0] = 42;
    EXPECT_EQ(MGeomFunc::CalcCurvInfoFrom3P(a.Data(), onChord.Data(), c.Data(), center.Data(), m, 1), 0);
    EXPECT_EQ(center[0], 42);
}

TEST(MGeomFuncAxes, PlateAxes) {
    double const quad[4][3] = {{0, 0, 0}, {4, 0, 0}, {5, 3, 0}, {1, 3, 0}};
    double const warped[4][3] = {{0, 0, 0}, {4, 0, 0}, {4, 4, 2}, {0, 4, 0}};
    double const triangle[3][3] = {{0, 0, 0}, {0, 2, 0}, {0, 2, 5}};
    double const flat[3][3] = {{0, 0, 0}, {0, 0, 0}, {0, 2, 5}};
    double m[3][3];
    ASSERT_EQ(MGeomFunc::calcPlaneLocalVector(4, quad, m), 1);
    ExpectRows(m, {1, 0, 0}, {0, 1, 0}, {0, 0, 1});
    ASSERT_EQ(MGeomFunc::calcPlaneLocalVector(4, warped, m), 1);
    ExpectNear(Vec3::FromArray(m[2]), Vec3(-1, -1, 4) / std::sqrt(18.0));
    ASSERT_EQ(MGeomFunc::calcPlaneLocalVector(3, triangle, m), 1);
    ExpectRows(m, {0, 1, 0}, {0, 0, 1}, {1, 0, 0});
    EXPECT_EQ(MGeomFunc::calcPlaneLocalVector(2, quad, m), 0);
    EXPECT_EQ(MGeomFunc::calcPlaneLocalVector(3, flat, m), 0);
}

TEST(MGeomFuncPolyline, SegmentsTouchOrCrossByTheDefinition) {
    auto const isNear = [](Vec3 const &a, Vec3 const &b, Vec3 const &p) {
        Vec3 const d = b - a;
        double const squared = MMathFunc::Dot(d.Data(), d.Data());
        double const t = squared > 0 ? MMathFunc::Dot((p - a).Data(), d.Data()) / squared : 0.0;
        return Distance(p, a + std::clamp(t, 0.0, 1.0) * d) < 1e-10 ? 1 : 0;
    };
    std::mt19937 random(3);
    std::uniform_real_distribution<double> nudge(-1e-6, 1e-6);
    auto const pick = [&](unsigned count) { return static_cast<int>(random() % count); };
    int hits = 0;
    for (int i = 0; i < 20000; ++i) {
        // On a small lattice, some a little off it or less than the limit, so that ends and crossings are near the
        // limits.
        Vec3 p[4];
        for (Vec3 &point : p) {
            double const offsets[] = {nudge(random), 5e-11, 0, 0, 0, 0};
            point = {pick(4) + offsets[pick(6)], pick(4), pick(16) == 0 ? 1 : 0};
        }
        int const touching =
            isNear(p[0], p[1], p[2]) + isNear(p[0], p[1], p[3]) + isNear(p[2], p[3], p[0]) + isNear(p[2], p[3], p[1]);
        bool const isShared = p[0] == p[2] || p[0] == p[3] || p[1] == p[2] || p[1] == p[3];
        double gap = 0;
        Vec3 at;
        double const *const ends[] = {p[0].Data(), p[1].Data(), p[2].Data(), p[3].Data()};
        int const crosses = MMathFunc::mathIntersectLine2(ends[0], ends[1], ends[2], ends[3], 0, gap, at.Data());
        for (int const any : {0, 1}) {
            int const expected = touching == 0 ? crosses : touching == 2 && isShared ? any : 1;
            ASSERT_EQ(MGeomFunc::CheckLineIntersection(ends[0], ends[1], ends[2], ends[3], any), expected) << i;
            hits += expected;
        }
    }
    EXPECT_GT(hits, 4000);
}

TEST(MGeomFuncPolyline, PolylinesMeetThemselvesAndOthers) {
    using Self = std::pair<MArray<T_POINT3D>, int>;
    for (auto const &[points, meets] :
         {Self{{{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {0, 2, 0}}, 0}, Self{{{0, 0, 0}, {2, 0, 0}, {2, 2, 0}, {1, -1, 0}}, 1},
          Self{{{0, 0, 0}, {2, 0, 0}}, 0}, Self{{{0, 0, 0}, {2, 0, 0}, {1, 0, 0}}, 1}, // straight back
          // Back over an inner vertex, and back to it exactly.
          Self{{{0, 0, 0}, {2, 0, 0}, {4, 0, 0}, {4, 2, 0}, {1, -1, 0}}, 1},
          Self{{{0, 0, 0}, {2, 0, 0}, {4, 0, 0}, {4, 2, 0}, {2, 0, 0}}, 0}})
        EXPECT_EQ(MGeomFunc::CheckPolylineSelfIntersection(points), meets) << points.Size();
    using Cross = std::tuple<MArray<T_POINT2D>, int, int>;
    for (auto const &[other, meetsInSpace, meetsInPlan] :
         {Cross{{{1, 1}, {1, -1}}, 1, 1}, Cross{{{1, 1}, {1, 0.5}}, 0, 0}, Cross{{{1, 1}}, 0, 0},
          Cross{{{3, 0}, {9, 0}}, 1, 1}, Cross{{{-1, 0}, {5, 0}}, 1, 1},
          // The end of the first polyline lies on the second, which is as good as parallel: that counts in space
          // alone.
          Cross{{{2, 1e-4}, {6, -1e-4}}, 1, 0}}) {
        MArray<T_POINT3D> inSpace;
        for (T_POINT2D const &p : other)
            inSpace.PushBack({p.x, p.y, 0});
        EXPECT_EQ(MGeomFunc::CheckPolylineCrossIntersection({{0, 0, 0}, {4, 0, 0}}, inSpace), meetsInSpace);
        EXPECT_EQ(MGeomFunc::CheckPolylineCrossIntersection({{0, 0}, {4, 0}}, other), meetsInPlan);
    }
}

} // namespace zvi::lib::test
