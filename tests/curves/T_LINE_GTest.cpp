#include "zvi/curves/T_LINE_G.h"

#include "zvi/curves/MGeomFunc.h"
#include "zvi/curves/T_LINE2D_G.h"
#include "zvi/curves/T_MBR3D.h"
#include "zvi/interface/IUnitCtrl.h"
#include "zvi/units/MUnitCtrl.h"

#include <gtest/gtest.h>

#include <cmath>
#include <cstddef>
#include <random>

using zvi::MArray;
using zvi::lib::MUnitCtrl;
using zvi::lib::T_LINE2D_G;
using zvi::lib::T_LINE_G;
using zvi::lib::T_MBR3D;
using zvi::lib::T_REGION2D_G;
using Vec3 = zvi::MVector<double, 3>;

namespace {

constexpr double kPi = 3.14159265358979323846;
constexpr double kTol = 1e-4;

void ExpectNear(Vec3 const &actual, Vec3 const &expected, double tol = 1e-9) {
    for (std::size_t i = 0; i < 3; ++i)
        EXPECT_NEAR(actual[i], expected[i], tol) << "coordinate " << i;
}

void ExpectBox(T_REGION2D_G const &box, double minX, double minY, double maxX, double maxY) {
    EXPECT_NEAR(box.MinX, minX, 1e-12);
    EXPECT_NEAR(box.MinY, minY, 1e-12);
    EXPECT_NEAR(box.MaxX, maxX, 1e-12);
    EXPECT_NEAR(box.MaxY, maxY, 1e-12);
}

Vec3 OnCircle(Vec3 const &center, double radius, double degrees, double z) {
    return {center[0] + radius * std::cos(degrees * kPi / 180), center[1] + radius * std::sin(degrees * kPi / 180), z};
}

/// A plan-view arc from direction `from` to `to` (degrees), counter-clockwise, or clockwise for a negative `side`.
T_LINE_G PlanArc(Vec3 const &center, double radius, double from, double to, double side = 1.0, double z1 = 0.0,
                 double z2 = 0.0) {
    T_LINE_G arc;
    return arc.Set(OnCircle(center, radius, from, z1), OnCircle(center, radius, to, z2), 1, center, {0, 0, side}, 1,
                   kTol);
}

T_LINE_G Line(Vec3 const &a, Vec3 const &b) {
    T_LINE_G line;
    return line.Set(a, b);
}

T_LINE_G Circle(Vec3 const &center, double radius) {
    T_LINE_G circle;
    return circle.Set(center, radius, {0, 0, 1});
}

/// Gives 2 and then, at each further question, one more as the present factor, and ten times that as the former one.
class CountingUnits : public zvi_interface::IUnitCtrl {
public:
    double GetConvertFactorCurrent(int kind) override { return kind == 1 ? Next() : 0.0; }
    double GetConvertFactorPrevious(int kind) override { return kind == 1 ? 10.0 * Next() : 0.0; }
    void SetNeutralUnit(int) override {}
    int GetNeutralUnit() override { return 0; }
    double ConvValueTgtUnit2CurUnit(int, int, int, double) override { return 0.0; }

private:
    double Next() { return m_next++; }

    double m_next = 2.0;
};

/// Curves of every kind.
MArray<T_LINE_G> Samples() {
    T_LINE_G tilted;
    tilted.Set({2, 0, 0}, {0, 0, 2}, 1, {0, 0, 0}, {0, -1, 0}, 0, kTol);
    return {Line({1, 2, 3}, {4, 6, 3}),          PlanArc({1, 1, 0}, 2, 10, 100),         PlanArc({1, 1, 0}, 2, 10, 300),
            PlanArc({-5, 1, 0}, 3, 200, 20, -1), PlanArc({0, 0, 0}, 5, 0, 90, 1, 0, 10), tilted};
}

} // namespace

TEST(T_LINE_G, StartsEmptyWithANormalThatPointsUp) {
    T_LINE_G line = PlanArc({1, 1, 0}, 2, 10, 100, -1);
    line.Initialize();
    EXPECT_EQ(line.Radius, 0);
    EXPECT_EQ(line.IsCurv, 0);
    ExpectNear(line.Normal, {0, 0, 1}, 0);
    EXPECT_LT(offsetof(T_LINE_G, IsCircle), offsetof(T_LINE_G, Radius));
    EXPECT_LT(offsetof(T_LINE_G, Normal), offsetof(T_LINE_G, Is2D));
    EXPECT_EQ(sizeof(zvi::lib::T_ARC2D_INFO), 32u);
    EXPECT_EQ(sizeof(T_LINE2D_G), 64u);
}

TEST(T_LINE_G, MeasuresArcsOfEveryAngle) {
    struct Row {
        double from;
        double to;
        double side;
        double angle;
        double width;
        double area;
    };
    double const r = 2.0;
    double const sqrt2 = std::sqrt(2.0);
    Row const rows[] = {
        {0, 90, 1, 90, r - sqrt2, kPi - 2},
        {0, 180, 1, 180, r, 2 * kPi},
        {90, 0, 1, 270, r + sqrt2, 3 * kPi + 2},
        {90, 0, -1, 90, r - sqrt2, kPi - 2},
        {0, 90, -1, 270, r + sqrt2, 3 * kPi + 2},
        {350, 10, 1, 20, r - r * std::cos(kPi / 18), r * r * (kPi / 9 - std::sin(kPi / 9)) / 2},
    };
    for (Row const &row : rows) {
        T_LINE_G const arc = PlanArc({3, -1, 0}, r, row.from, row.to, row.side);
        double width = -1;
        EXPECT_NEAR(arc.GetLineAngle(), row.angle, 1e-9);
        EXPECT_NEAR(arc.GetLineLength(0), r * row.angle * kPi / 180, 1e-9);
        EXPECT_EQ(arc.GetLineWidth(width), 1);
        EXPECT_NEAR(width, row.width, 1e-9);
        EXPECT_NEAR(arc.GetLineArea(), row.area, 1e-8);
        Vec3 middle;
        ASSERT_EQ(arc.GetLineCenter(middle), 1);
        ExpectNear(middle, OnCircle({3, -1, 0}, r, row.from + row.side * row.angle / 2, 0));
    }
}

TEST(T_LINE_G, AFullCircleHasItsOwnRules) {
    T_LINE_G circle = Circle({3, -1, 2}, 2);
    double width = 0;
    T_REGION2D_G box;
    EXPECT_EQ(circle.GetLineAngle(), 360);
    EXPECT_DOUBLE_EQ(circle.GetLineLength(0), 4 * kPi);
    EXPECT_NEAR(circle.GetLineArea(), 4 * kPi, 1e-12);
    EXPECT_EQ(circle.GetLineWidth(width), 1);
    EXPECT_DOUBLE_EQ(width, 4);
    ExpectNear(circle.Pos1, {5, -1, 2}, 0);
    ExpectNear(circle.Pos2, {5, -1, 2}, 0);
    circle.GetMBR2D(box, 0.5);
    ExpectBox(box, 1, -3, 5, 1);
    double distance = 0;
    EXPECT_EQ(circle.GetDistOnChordFromP1_2D({3, 1, 2}, distance), 1);
    EXPECT_NEAR(distance, 4 * kPi, 1e-12);
    EXPECT_EQ(circle.MoveTo({10, 0, 0}, {10, 0, 0}), 1);
    ExpectNear(circle.Center, {8, 0, 0}, 0);
    circle.ReverseDir();
    EXPECT_EQ(circle.IsCurv, 0);
    EXPECT_EQ(circle.GetLineLength(0), 0);
    EXPECT_EQ(T_LINE_G().Set({0, 0, 0}, 1, {0, 0, -3}).BetaAng, 180);
    EXPECT_EQ(T_LINE_G().Set({0, 0, 0}, 1, {0, 2, 0}).BetaAng, 0);
}

TEST(T_LINE_G, SetByCentreKeepsBetaOfExistingRecords) {
    struct Row {
        Vec3 p2;
        Vec3 normal;
        int is2D;
        double beta;
    };
    Row const rows[] = {
        {{0, 1, 0}, {0, 0, 2}, 0, 0},    {{0, 1, 0}, {0, 0, -2}, 0, 180}, {{0, 1, 0}, {0, 0, 0}, 0, 0},
        {{0, 1, 5}, {0, 0, -1}, 1, 180}, {{0, 1, 5}, {0, 0, 1}, 0, 90},   {{0, 0, 1}, {0, -1, 0}, 0, 90},
    };
    for (Row const &row : rows) {
        T_LINE_G arc;
        arc.Set({1, 0, 0}, row.p2, 1, {0, 0, 0}, row.normal, row.is2D, kTol);
        EXPECT_EQ(arc.BetaAng, row.beta);
        EXPECT_EQ(arc.Radius, 1);
    }
    T_LINE_G plan;
    plan.Set({1, 0, 0}, {0, 1, 0}, 1, {0, 0, 7}, {1, 0, -1e-3}, 1, kTol);
    ExpectNear(plan.Normal, {0, 0, -1}, 0);
    EXPECT_EQ(plan.Radius, 1);
}

TEST(T_LINE_G, ShortChordsMakeLines) {
    T_LINE_G arc;
    arc.Set({0, 0, 0}, {0.5e-4, 0, 0}, 1, {0, 1, 0}, {0, 0, 1}, 0, kTol);
    EXPECT_EQ(arc.IsCurv, 0);
    EXPECT_EQ(arc.Radius, 0);
    arc.Set({0, 0, 0}, {0.5e-4, 0, 0}, 1, 1.0, 0.0, 0, kTol);
    EXPECT_EQ(arc.IsCurv, 0);
    arc.Set({0, 0, 0}, {4, 0, 0}, 1, 0.0, 0.0, 0, kTol);
    EXPECT_EQ(arc.IsCurv, 0);
    ExpectNear(arc.Pos2, {4, 0, 0}, 0);
}

TEST(T_LINE_G, SetByRiseAndTheCircleThroughThreePointsAgree) {
    for (double const beta : {0.0, 30.0, 90.0, -60.0}) {
        for (double const width : {0.5, 2.0, 3.0}) {
            T_LINE_G arc;
            arc.Set({1, 2, 3}, {5, 2, 3}, 1, width, beta, 0, kTol);
            double rise = 0;
            Vec3 top;
            ASSERT_EQ(arc.GetLineWidth(rise), 1);
            EXPECT_NEAR(rise, width, 1e-9);
            ASSERT_EQ(arc.GetLineCenter(top), 1);
            double const radians = beta * kPi / 180;
            ExpectNear(top, {3, 2 - width * std::cos(radians), 3 - width * std::sin(radians)}, 1e-8);
            Vec3 center;
            Vec3 normal;
            ASSERT_EQ(zvi::lib::MGeomFunc::CalcCurvInfoFrom3P(arc.Pos1.Data(), top.Data(), arc.Pos2.Data(),
                                                              center.Data(), normal.Data(), 0),
                      1);
            ExpectNear(center, arc.Center, 1e-7);
            ExpectNear(normal, arc.Normal, 1e-7);
        }
    }
    T_LINE_G plan;
    plan.Set({0, 0, 1}, {4, 0, 5}, 1, 2.0, 0.0, 1, kTol);
    ExpectNear(plan.Center, {2, 0, 3});
    EXPECT_NEAR(plan.Radius, 2, 1e-12);
}

TEST(T_LINE_G, BoxesFollowTheExtentOfTheArc) {
    struct Row {
        double from;
        double to;
        double side;
        double box[4];
    };
    double const h = std::sqrt(0.5);
    Row const rows[] = {
        {45, 135, 1, {-h, h, h, 1}},
        {135, 45, 1, {-1, -1, 1, h}},
        {45, 135, -1, {-1, -1, 1, h}},
        {135, 45, -1, {-h, h, h, 1}},
        {0, 90, 1, {0, 0, 1, 1}},
        {90, 0, 1, {-1, -1, 1, 1}},
        {60, 30, 1, {-1, -1, 1, 1}},
        {30, 60, 1, {0.5, 0.5, std::sqrt(0.75), std::sqrt(0.75)}},
        {300, 60, 1, {0.5, -std::sqrt(0.75), 1, std::sqrt(0.75)}},
        {0, 180, 1, {-1, 0, 1, 1}},
    };
    for (Row const &row : rows) {
        T_REGION2D_G box;
        PlanArc({0, 0, 0}, 1, row.from, row.to, row.side).GetMBR2D(box, 0.25);
        ExpectBox(box, row.box[0] - 0.25, row.box[1] - 0.25, row.box[2] + 0.25, row.box[3] + 0.25);
    }
    T_REGION2D_G box;
    Line({3, 1, 0}, {-1, 2, 9}).GetMBR2D(box, 1);
    ExpectBox(box, -2, 0, 4, 3);
}

TEST(T_LINE_G, BoxesHoldEveryPointOfRandomArcs) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> angle(0, 360);
    for (int i = 0; i < 300; ++i) {
        // Every third arc starts or ends on an axis, or as good as.
        double const from = i % 3 == 0 ? 90.0 * (i % 4) + 1e-9 * (i % 5 - 2) : angle(random);
        double const to = i % 3 == 1 ? 90.0 * (i % 4) : angle(random);
        T_LINE_G const arc = PlanArc({2, 3, 0}, 5, from, to, i % 2 == 0 ? 1 : -1);
        T_REGION2D_G box;
        arc.GetMBR2D(box, 0);
        double sides[4] = {1e9, 1e9, -1e9, -1e9};
        for (int k = 0; k <= 720; ++k) {
            Vec3 p;
            ASSERT_EQ(arc.GetPosByRatio(p, k / 720.0), 1);
            sides[0] = std::min(sides[0], p[0]);
            sides[1] = std::min(sides[1], p[1]);
            sides[2] = std::max(sides[2], p[0]);
            sides[3] = std::max(sides[3], p[1]);
        }
        EXPECT_NEAR(box.MinX, sides[0], 2e-4) << from << " " << to;
        EXPECT_NEAR(box.MinY, sides[1], 2e-4) << from << " " << to;
        EXPECT_NEAR(box.MaxX, sides[2], 2e-4) << from << " " << to;
        EXPECT_NEAR(box.MaxY, sides[3], 2e-4) << from << " " << to;
    }
}

TEST(T_LINE_G, DistancesLeadBackToPositions) {
    for (T_LINE_G const &curve : Samples()) {
        double const length = curve.GetLineLength(0);
        for (double const ratio : {0.001, 0.25, 0.5, 0.9}) {
            Vec3 p;
            ASSERT_EQ(curve.GetPosByLength(p, length * ratio, 0), 1);
            EXPECT_NEAR(curve.GetDistance(p), 0, 1e-9);
            double distance = 0;
            ASSERT_EQ(curve.GetDistOnChordFromP1_2D(p, distance), 1);
            EXPECT_NEAR(distance, length * ratio, 1e-7);
            double back = 0;
            ASSERT_EQ(curve.GetDistOnChord_2D(p, curve.Pos1, back), 1);
            EXPECT_NEAR(back, -length * ratio, 1e-7);
            Vec3 byRatio;
            ASSERT_EQ(curve.GetPosByRatio(byRatio, ratio), 1);
            ExpectNear(byRatio, p, 1e-8);
        }
    }
}

TEST(T_LINE_G, PositionsBeyondTheEnds) {
    Vec3 p = {7, 7, 7};
    T_LINE_G const line = Line({0, 0, 0}, {2, 0, 4});
    EXPECT_EQ(line.GetPosByRatio(p, -0.1), 0);
    ExpectNear(p, {7, 7, 7}, 0);
    EXPECT_EQ(line.GetPosByRatio(p, 1.5), 1);
    ExpectNear(p, {3, 0, 6});
    EXPECT_EQ(line.GetPosByLength(p, 1, 1), 1);
    ExpectNear(p, {1, 0, 2});
    EXPECT_EQ(line.GetPosByAngle(p, 10), 0);
    EXPECT_EQ(Line({1, 1, 1}, {1, 1, 5}).GetPosByLength(p, 1, 1), 0);
    EXPECT_EQ(Line({1, 1, 1}, {1, 1, 5}).GetPosByLength(p, 0, 1), 1);
    T_LINE_G const helix = PlanArc({0, 0, 0}, 5, 0, 90, 1, 0, 10);
    ASSERT_EQ(helix.GetPosByAngle(p, 45), 1);
    ExpectNear(p, OnCircle({0, 0, 0}, 5, 45, 5));
    EXPECT_NEAR(helix.GetLineLength(0), std::hypot(2.5 * kPi, 10), 1e-9);
    EXPECT_NEAR(helix.GetLineLength(1), 2.5 * kPi, 1e-9);
    ASSERT_EQ(helix.GetLineCenter(p), 1);
    EXPECT_NEAR(p[2], 5, 1e-12);
}

TEST(T_LINE_G, ProjectsAndMeasuresDistances) {
    Vec3 p = {5, 3, 1};
    Line({0, 0, 0}, {2, 0, 0}).ProjectToLine(p);
    ExpectNear(p, {5, 0, 0});
    EXPECT_DOUBLE_EQ(Line({0, 0, 0}, {2, 0, 0}).GetDistance({5, 4, 0}), 5);
    EXPECT_DOUBLE_EQ(Line({0, 0, 0}, {2, 0, 0}).GetDistance({-3, 4, 0}), 5);
    EXPECT_DOUBLE_EQ(Line({0, 0, 0}, {2, 0, 0}).GetDistance({1, 4, 0}), 4);
    T_LINE_G const helix = PlanArc({0, 0, 0}, 5, 0, 90, 1, 0, 10);
    p = {1, 1, 77};
    helix.ProjectToLine(p);
    ExpectNear(p, OnCircle({0, 0, 0}, 5, 45, 5));
    // The extent of the arc plays no part.
    EXPECT_DOUBLE_EQ(helix.GetDistance({-8, 0, 3}), 3);
    T_LINE_G space;
    space.Set({5, 0, 0}, {0, 5, 0}, 1, {0, 0, 0}, {0, 0, 1}, 0, kTol);
    p = {3, 0, 4};
    EXPECT_DOUBLE_EQ(space.GetDistance(p), 2);
    space.ProjectToLine(p);
    ExpectNear(p, {5, 0, 0});
}

TEST(T_LINE_G, Tangents) {
    Vec3 t = {9, 9, 9};
    double const h = std::sqrt(0.5);
    EXPECT_EQ(Line({0, 0, 0}, {0, 3, 4}).GetTagentVectorByLength(1, t, 0), 1);
    ExpectNear(t, {0, h, h});
    EXPECT_EQ(Line({0, 0, 0}, {0, 0, 4}).GetTagentVectorByLength(1, t, 0), 0);
    ExpectNear(t, {0, h, h});
    EXPECT_EQ(PlanArc({0, 0, 0}, 5, 0, 90).GetTagentVectorByRatio(0.5, t), 1);
    ExpectNear(t, {-h, h, 0});
    EXPECT_EQ(PlanArc({0, 0, 0}, 5, 90, 0, -1).GetTagentVectorByRatio(0.5, t), 1);
    ExpectNear(t, {h, -h, 0});
    EXPECT_EQ(PlanArc({0, 0, 0}, 5, 0, 90).GetTagentVectorByRatio(1.01, t), 0);
}

TEST(T_LINE_G, SortsPointsAlongTheCurve) {
    T_LINE_G const ccw = PlanArc({0, 0, 0}, 5, 350, 200);
    double const degrees[] = {100, 355, 349.9999999999, 10, 199, 340};
    MArray<Vec3> points;
    for (double const d : degrees)
        points.PushBack(OnCircle({0, 0, 0}, 5, d, 0));
    MArray<Vec3> along = points;
    MArray<int> order = {42};
    EXPECT_EQ(ccw.SortByDist(along, 1e-9, order), 1);
    EXPECT_EQ(order, (MArray<int>{2, 1, 3, 0, 4, 5}));
    ExpectNear(along[1], points[1], 0);
    along = points;
    EXPECT_EQ(PlanArc({0, 0, 0}, 5, 350, 200, -1).SortByDist(along, 1e-9, order), 1);
    EXPECT_EQ(order, (MArray<int>{5, 4, 0, 3, 1, 2}));
    along = {{3, 0, 0}, {1, 7, 0}, {2, -4, 0}, {1, 0, 0}};
    EXPECT_EQ(Line({9, 0, 0}, {0, 0, 0}).SortByDist(along, 0, order), 1);
    EXPECT_EQ(order, (MArray<int>{0, 2, 1, 3}));
    along = {{1, 1, 1}};
    EXPECT_EQ(ccw.SortByDist(along, 0, order), 1);
    EXPECT_EQ(order, (MArray<int>{0, 2, 1, 3, 0}));
    along = points;
    EXPECT_EQ(Line({1, 1, 1}, {1, 1, 1}).SortByDist(along, 0, order), 0);
    EXPECT_EQ(order.Size(), 5u);
}

TEST(T_LINE_G, ComparesCurves) {
    T_LINE_G const arc = PlanArc({0, 0, 0}, 5, 0, 90);
    T_LINE_G reversed = arc;
    reversed.ReverseDir();
    ExpectNear(reversed.Normal, {0, 0, -1}, 0);
    T_LINE_G other = arc;
    other.MirrorCurv();
    T_LINE_G const chord = Line(arc.Pos1, arc.Pos2);
    EXPECT_EQ(arc.IsSameLine(arc, 1e-6, 1), 1);
    EXPECT_EQ(arc.IsSameLine(reversed, 1e-6, 0), 1);
    EXPECT_EQ(arc.IsSameLine(reversed, 1e-6, 1), 0);
    EXPECT_EQ(arc.IsSameLine(other, 1e-6, 0), 0);
    EXPECT_EQ(arc.IsSameLine(chord, 1e-6, 0), 0);
    EXPECT_EQ(arc.IsSameLine(PlanArc({0, 0, 0}, 5, 90, 0), 1e-6, 0), 0);
    EXPECT_EQ(chord.IsSameLine(Line(arc.Pos2, arc.Pos1), 1e-6, 0), 1);
    EXPECT_EQ(chord.IsSameLine(chord, 0, 0), 0);
}

TEST(T_LINE_G, ContinuousCurvesShareACarrierAndAnEnd) {
    T_LINE_G const line = Line({0, 0, 0}, {2, 0, 0});
    struct Row {
        T_LINE_G other;
        int any;
        int headToTail;
    };
    Row const rows[] = {
        {Line({2, 0, 0}, {5, 0, 0}), 1, 1},  {Line({-1, 0, 0}, {0, 0, 0}), 1, 1}, {Line({5, 0, 0}, {2, 0, 0}), 1, 0},
        {Line({0, 0, 0}, {-3, 0, 0}), 0, 0}, {Line({2, 0, 0}, {5, 1, 0}), 0, 0},  {Line({3, 0, 0}, {5, 0, 0}), 0, 0},
    };
    for (Row const &row : rows) {
        EXPECT_EQ(line.IsContinuousLine(row.other, 1e-6, 0), row.any);
        EXPECT_EQ(line.IsContinuousLine(row.other, 1e-6, 1), row.headToTail);
    }
    T_LINE_G const arc = PlanArc({1, 0, 0}, 5, 0, 90);
    EXPECT_EQ(arc.IsContinuousLine(PlanArc({1, 0, 0}, 5, 90, 200), 1e-6, 1), 1);
    EXPECT_EQ(arc.IsContinuousLine(PlanArc({1, 2.5, 0}, 2.5, 90, 200), 1e-6, 0), 0);
    EXPECT_EQ(arc.IsContinuousLine(line, 1e-6, 0), 0);
}

TEST(T_LINE_G, CutsCurvesIntoMultiplesOfEight) {
    T_LINE_G const arc = PlanArc({0, 0, 0}, 5, 0, 100);
    MArray<Vec3> points;
    CArray<double> lengths;
    EXPECT_EQ(arc.MakeCurvPoints(points, 1, 30, &lengths, 0), 1);
    ASSERT_EQ(points.Size(), 9u);
    ASSERT_EQ(lengths.GetSize(), 9);
    EXPECT_NEAR(lengths[3], arc.GetLineLength(0) * 3 / 8, 1e-12);
    ExpectNear(points[3], OnCircle({0, 0, 0}, 5, 37.5, 0));
    arc.MakeCurvPoints(points, 0, 30, nullptr, 3);
    EXPECT_EQ(points.Size(), 2u);
    Line({0, 0, 0}, {1, 0, 0}).MakeCurvPoints(points, 1, 30, &lengths, 0);
    EXPECT_EQ(points.Size(), 2u);
    double unit = -1;
    int count = -1;
    T_LINE_G::CalcArcUnitAngle(100, 0, unit, count);
    EXPECT_EQ(count, -1);
    T_LINE_G::CalcArcUnitAngle(100, 12.5, unit, count);
    EXPECT_EQ(count, 8);
    T_LINE_G::CalcArcUnitAngle(100, 12.4, unit, count);
    EXPECT_EQ(count, 16);
    EXPECT_EQ(unit, 6.25);
}

TEST(T_LINE_G, MovingKeepsTheRise) {
    for (double const side : {1.0, -1.0}) {
        T_LINE_G arc = PlanArc({0, 0, 0}, 5, 0, 90, side);
        double before = 0;
        double after = 0;
        arc.GetLineWidth(before);
        ASSERT_EQ(arc.MoveTo({1, 1, 0}, {30, 2, 0}), 1);
        arc.GetLineWidth(after);
        EXPECT_NEAR(after, before, 1e-9);
        ExpectNear(arc.Pos2, {30, 2, 0}, 0);
        EXPECT_EQ(arc.MoveTo({3, 3, 3}, {3, 3, 3}), 1);
        ExpectNear(arc.Pos2, {30, 2, 0}, 0);
    }
    T_LINE_G line = Line({0, 0, 0}, {1, 0, 0});
    EXPECT_EQ(line.MoveTo(line.Pos2, line.Pos1), 1);
    ExpectNear(line.Pos1, {1, 0, 0}, 0);
    ExpectNear(line.Pos2, {0, 0, 0}, 0);
}

TEST(T_LINE_G, ReversingAndMirroringTwiceGiveTheCurveBack) {
    for (T_LINE_G const &curve : Samples()) {
        T_LINE_G twice = curve;
        twice.ReverseDir();
        EXPECT_NEAR(twice.GetLineAngle(), curve.GetLineAngle(), 1e-9);
        twice.ReverseDir();
        EXPECT_EQ(twice.IsSameLine(curve, 1e-9, 1), 1);
    }
    T_LINE_G arc;
    arc.Set({0, 0, 0}, {4, 0, 0}, 1, 1.0, 0.0, 0, kTol);
    T_LINE_G mirrored = arc;
    mirrored.MirrorCurv();
    Vec3 top;
    mirrored.GetLineCenter(top);
    ExpectNear(top, {2, 1, 0}, 1e-8);
    EXPECT_EQ(mirrored.BetaAng, 180);
    mirrored.MirrorCurv();
    EXPECT_EQ(mirrored.IsSameLine(arc, 1e-8, 1), 1);
    EXPECT_EQ(mirrored.BetaAng, 360);
}

TEST(T_LINE_G, LocalAxesAndBreadth) {
    double m[3][3];
    ASSERT_EQ(PlanArc({0, 0, 0}, 5, 0, 90, -1).GetLineLocalAxis(m), 1);
    double const h = std::sqrt(0.5);
    ExpectNear(Vec3::FromArray(m[0]), {-h, h, 0});
    ExpectNear(Vec3::FromArray(m[1]), {h, h, 0});
    ExpectNear(Vec3::FromArray(m[2]), {0, 0, -1});
    ASSERT_EQ(Line({0, 0, 0}, {0, 2, 0}).GetLineLocalAxis(m), 1);
    ExpectNear(Vec3::FromArray(m[1]), {-1, 0, 0});
    MArray<Vec3> out = {{1, 1, 1}};
    // An arc is measured along normal x axis: y for the axis x.
    EXPECT_EQ(PlanArc({0, 0, 0}, 5, 30, 135).GetLineBreadth(0.0, out), 1);
    ASSERT_EQ(out.Size(), 2u);
    ExpectNear(out[0], {0, 5, 0});
    ExpectNear(out[1], OnCircle({0, 0, 0}, 5, 30, 0));
    Line({3, 0, 0}, {1, 2, 0}).GetLineBreadth(0.0, out);
    ExpectNear(out[1], {1, 2, 0}, 0);
    Circle({0, 0, 0}, 5).GetLineBreadth(0.0, out);
    ExpectNear(out[0], {0, 5, 0});
    ExpectNear(out[1], {0, 5, 0});
}

TEST(T_LINE_G, UnitsScaleThePlanAlone) {
    MUnitCtrl units(nullptr);
    units.Initialize(1, 2, 0, 2); // centimetres; values are kept in millimetres
    T_LINE_G arc = PlanArc({1, 2, 3}, 5, 0, 90, 1, 4, 8);
    T_LINE_G const former = arc;
    arc.ConvertUnitIn(&units);
    EXPECT_DOUBLE_EQ(arc.Pos1[0], former.Pos1[0] * 10);
    EXPECT_DOUBLE_EQ(arc.Center[1], 20);
    EXPECT_DOUBLE_EQ(arc.Radius, 50);
    EXPECT_EQ(arc.Pos2[2], 8);
    EXPECT_EQ(arc.Center[2], 3);
    arc.ConvertUnitOut(&units);
    EXPECT_EQ(arc.IsSameLine(former, 1e-9, 1), 1);
    arc.ConvertCurUnit(&units, 2); // metres
    EXPECT_DOUBLE_EQ(arc.Radius, 500);
}

TEST(T_LINE_G, AsksForTheLengthFactorAnewForEachValue) {
    T_LINE_G arc = PlanArc({1, 1, 3}, 1, 0, 90);
    CountingUnits in;
    arc.ConvertUnitIn(&in);
    ExpectNear(arc.Pos1, {2 * 2, 1 * 3, 0});
    ExpectNear(arc.Pos2, {1 * 4, 2 * 5, 0});
    ExpectNear(arc.Center, {6, 7, 3});
    EXPECT_DOUBLE_EQ(arc.Radius, 8);
    EXPECT_EQ(in.GetConvertFactorCurrent(1), 9) << "no other value asks";
    CountingUnits out;
    arc.ConvertUnitOut(&out);
    ExpectNear(arc.Center, {1, 1, 3});
    CountingUnits former;
    arc.ConvertUnitPrev(&former);
    ExpectNear(arc.Center, {60, 70, 3});
    EXPECT_DOUBLE_EQ(arc.Radius, 80);
}

TEST(T_LINE2D_G, KeepsItsPointsOnInitialize) {
    double const p1[] = {1, 0};
    double const p2[] = {0, 1};
    double const center[] = {0, 0};
    T_LINE2D_G line;
    line.Set(p1, p2, 1, center, 0);
    // The plus makes a copy: the fields of a packed record have no aligned address.
    EXPECT_EQ(+line.Radius, 1);
    T_REGION2D_G box;
    EXPECT_EQ(line.GetMBR2D(box, 0), 1);
    ExpectBox(box, -1, -1, 1, 1);
    line.Initialize();
    EXPECT_EQ(+line.IsCCW, 1);
    EXPECT_EQ(+line.Pos1[0], 1);
    line.GetMBR2D(box, 0.5);
    ExpectBox(box, -0.5, -0.5, 1.5, 1.5);
}

TEST(T_MBR3D, GrowsByItsTolerance) {
    T_MBR3D box;
    box.Set({1, 5, -1}, {0, 7, 2}, 0.5);
    EXPECT_EQ(box.MinX, -0.5);
    EXPECT_EQ(box.MaxY, 7.5);
    EXPECT_EQ(box.MaxZ, 2.5);
    EXPECT_EQ(box.IsInnerPoint({1.5, 4.5, 2.5}), 1);
    EXPECT_EQ(box.IsInnerPoint({1.5, 4.5, 2.6}), 0);
    T_MBR3D other;
    other.Set({1.5, 7.5, 2.5}, {9, 9, 9}, 0);
    EXPECT_EQ(box.IsOverlap(other), 1);
    other.Set({1.5, 7.6, 2.5}, {9, 9, 9}, 0);
    EXPECT_EQ(box.IsOverlap(other), 0);
    box.UpdateWith(1, 5, 0, 3);
    EXPECT_EQ(box.MaxX, 1.5);
    box.UpdateWith(2, 5, -4, 3);
    EXPECT_EQ(box.MaxX, 5);
    EXPECT_EQ(box.MinZ, -7);
    box.SetWithCurv({3, 4, 100}, {0, 0, 0}, 1, {0, 0, 10});
    EXPECT_EQ(box.MaxX, 6);
    EXPECT_EQ(box.MinZ, 4);
}
