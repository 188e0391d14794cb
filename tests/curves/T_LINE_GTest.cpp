#include "zvi/curves/T_LINE_G.h"

#include "tests/curves/CurveFixtures.h"
#include "zvi/curves/MGeomFunc.h"
#include "zvi/curves/T_LINE2D_G.h"
#include "zvi/curves/T_MBR3D.h"
#include "zvi/interface/IUnitCtrl.h"
#include "zvi/units/MUnitCtrl.h"

#include <algorithm>
#include <cstddef>
#include <random>
#include <tuple>

namespace zvi::lib::test {

namespace {

Vec3 const kNone = {7, 7, 7};

/// The point that `ask` gives; `kNone` when it has none to give and leaves its argument alone.
template <typename Ask>
Vec3 Answer(Ask ask) {
    Vec3 p = kNone;
    int const isFound = ask(p);
    EXPECT_EQ(isFound, p == kNone ? 0 : 1);
    return p;
}

Vec3 AtRatio(T_LINE_G const &curve, double ratio) {
    return Answer([&](Vec3 &p) { return curve.GetPosByRatio(p, ratio); });
}

Vec3 AtLength(T_LINE_G const &curve, double length, int plan) {
    return Answer([&](Vec3 &p) { return curve.GetPosByLength(p, length, plan); });
}

Vec3 AtAngle(T_LINE_G const &curve, double degrees) {
    return Answer([&](Vec3 &p) { return curve.GetPosByAngle(p, degrees); });
}

Vec3 Tangent(T_LINE_G const &curve, double ratio) {
    return Answer([&](Vec3 &p) { return curve.GetTagentVectorByRatio(ratio, p); });
}

Vec3 Middle(T_LINE_G const &curve) {
    return Answer([&](Vec3 &p) { return curve.GetLineCenter(p); });
}

Vec3 Projected(T_LINE_G const &curve, Vec3 p) {
    EXPECT_EQ(curve.ProjectToLine(p), 1);
    return p;
}

double Width(T_LINE_G const &curve) {
    double width = -1;
    EXPECT_EQ(curve.GetLineWidth(width), 1);
    return width;
}

T_REGION2D_G Box(T_LINE_G const &curve, double tol) {
    T_REGION2D_G box;
    EXPECT_EQ(curve.GetMBR2D(box, tol), 1);
    return box;
}

void ExpectBox(T_REGION2D_G const &box, double minX, double minY, double maxX, double maxY, double tol = 1e-12) {
    EXPECT_NEAR(box.MinX, minX, tol);
    EXPECT_NEAR(box.MinY, minY, tol);
    EXPECT_NEAR(box.MaxX, maxX, tol);
    EXPECT_NEAR(box.MaxY, maxY, tol);
}

/// Gives 2 and then, at each further question, one more as the present factor, and ten times that as the former one.
class CountingUnits : public zvi_interface::IUnitCtrl {
public:
    double GetConvertFactorCurrent(int kind) override { return kind == 1 ? m_next++ : 0.0; }
    double GetConvertFactorPrevious(int kind) override { return kind == 1 ? 10.0 * m_next++ : 0.0; }
    void SetNeutralUnit(int) override {}
    int GetNeutralUnit() override { return 0; }
    double ConvValueTgtUnit2CurUnit(int, int, int, double) override { return 0.0; }

private:
    double m_next = 2.0;
};

T_LINE_G const kHelix = Helix({0, 0, 0}, 5, 0, 90, 1, 0, 10);

/// Curves of every kind.
MArray<T_LINE_G> Samples() {
    T_LINE_G const tilted = T_LINE_G().Set({2, 0, 0}, {0, 0, 2}, 1, {0, 0, 0}, {0, -1, 0}, 0, kTol);
    return {Line({1, 2, 3}, {4, 6, 3}),
            Arc({1, 1, 0}, 2, 10, 100),
            Arc({1, 1, 0}, 2, 10, 300),
            Arc({-5, 1, 0}, 3, 200, 20, -1),
            kHelix,
            tilted};
}

} // namespace

TEST(T_LINE_G, StartsEmptyWithANormalThatPointsUp) {
    T_LINE_G line = Arc({1, 1, 0}, 2, 10, 100, -1);
    line.Initialize();
    EXPECT_EQ(line.Radius, 0);
    EXPECT_EQ(line.IsCurv, 0);
    ExpectNear(line.Normal, {0, 0, 1}, 0);
    // Clients store these records.
    EXPECT_LT(offsetof(T_LINE_G, IsCircle), offsetof(T_LINE_G, Radius));
    EXPECT_LT(offsetof(T_LINE_G, Normal), offsetof(T_LINE_G, Is2D));
    EXPECT_EQ(sizeof(T_ARC2D_INFO), 32u);
    EXPECT_EQ(sizeof(T_LINE2D_G), 64u);
}

TEST(T_LINE_G, MeasuresArcsOfEveryAngle) {
    struct Row {
        double from, to, side, angle, width, area;
    };
    double const sqrt2 = std::sqrt(2.0);
    double const sliver = 2 * (kPi / 9 - std::sin(kPi / 9));
    Row const rows[] = {
        {.from = 0, .to = 90, .side = 1, .angle = 90, .width = 2 - sqrt2, .area = kPi - 2},
        {.from = 0, .to = 180, .side = 1, .angle = 180, .width = 2, .area = 2 * kPi},
        {.from = 90, .to = 0, .side = 1, .angle = 270, .width = 2 + sqrt2, .area = 3 * kPi + 2},
        {.from = 90, .to = 0, .side = -1, .angle = 90, .width = 2 - sqrt2, .area = kPi - 2},
        {.from = 0, .to = 90, .side = -1, .angle = 270, .width = 2 + sqrt2, .area = 3 * kPi + 2},
        {.from = 350, .to = 10, .side = 1, .angle = 20, .width = 2 - 2 * std::cos(kPi / 18), .area = sliver},
    };
    for (Row const &row : rows) {
        T_LINE_G const arc = Arc({3, -1, 0}, 2, row.from, row.to, row.side);
        EXPECT_NEAR(arc.GetLineAngle(), row.angle, 1e-9);
        EXPECT_NEAR(arc.GetLineLength(0), row.angle * kPi / 90, 1e-9);
        EXPECT_NEAR(Width(arc), row.width, 1e-9);
        EXPECT_NEAR(arc.GetLineArea(), row.area, 1e-8);
        ExpectNear(Middle(arc), OnCircle({3, -1, 0}, 2, row.from + row.side * row.angle / 2, 0));
    }
    EXPECT_NEAR(kHelix.GetLineLength(0), std::hypot(2.5 * kPi, 10), 1e-9);
    EXPECT_NEAR(kHelix.GetLineLength(1), 2.5 * kPi, 1e-9);
    ExpectNear(Middle(kHelix), OnCircle({0, 0, 0}, 5, 45, 5));
}

TEST(T_LINE_G, AFullCircleHasItsOwnRules) {
    T_LINE_G circle = Circle({3, -1, 2}, 2);
    EXPECT_EQ(circle.GetLineAngle(), 360);
    EXPECT_DOUBLE_EQ(circle.GetLineLength(0), 4 * kPi);
    EXPECT_NEAR(circle.GetLineArea(), 4 * kPi, 1e-12);
    EXPECT_DOUBLE_EQ(Width(circle), 4);
    ExpectNear(circle.Pos1, {5, -1, 2}, 0);
    ExpectNear(circle.Pos2, {5, -1, 2}, 0);
    ExpectBox(Box(circle, 0.5), 1, -3, 5, 1);
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
    using Row = std::tuple<Vec3, Vec3, int, double>;
    for (auto const &[p2, normal, is2D, beta] : std::initializer_list<Row>{
             {{0, 1, 0}, {0, 0, 2}, 0, 0},
             {{0, 1, 0}, {0, 0, -2}, 0, 180},
             {{0, 1, 0}, {0, 0, 0}, 0, 0},
             {{0, 1, 5}, {0, 0, -1}, 1, 180},
             {{0, 1, 5}, {0, 0, 1}, 0, 90},
             {{0, 0, 1}, {0, -1, 0}, 0, 90},
         }) {
        T_LINE_G const arc = T_LINE_G().Set({1, 0, 0}, p2, 1, {0, 0, 0}, normal, is2D, kTol);
        EXPECT_EQ(arc.BetaAng, beta);
        EXPECT_EQ(arc.Radius, 1);
    }
    T_LINE_G const plan = T_LINE_G().Set({1, 0, 0}, {0, 1, 0}, 1, {0, 0, 7}, {1, 0, -1e-3}, 1, kTol);
    ExpectNear(plan.Normal, {0, 0, -1}, 0);
    EXPECT_EQ(plan.Radius, 1);
    ExpectNear(T_LINE_G().Set({1, 0, 0}, {0, 1, 0}, 1, {0, 0, 0}, {1, 0, 0}, 1, kTol).Normal, {0, 0, 1}, 0);
}

TEST(T_LINE_G, ShortChordsAndFlatArcsMakeLines) {
    Vec3 const near = {0.5e-4, 0, 0};
    for (T_LINE_G const &line : {T_LINE_G().Set({0, 0, 0}, near, 1, {0, 1, 0}, {0, 0, 1}, 0, kTol),
                                 T_LINE_G().Set({0, 0, 0}, near, 1, 1.0, 0.0, 0, kTol),
                                 T_LINE_G().Set({0, 0, 0}, near, 1, 0.0, 0.0, 0, 0.0)}) {
        EXPECT_EQ(line.IsCurv, 0);
        EXPECT_EQ(line.Radius, 0);
        ExpectNear(line.Pos2, near, 0);
    }
}

TEST(T_LINE_G, SetByRiseAndTheCircleThroughThreePointsAgree) {
    for (double const beta : {0.0, 30.0, 90.0, -60.0}) {
        for (double const width : {0.5, 2.0, 3.0}) {
            T_LINE_G const arc = T_LINE_G().Set({1, 2, 3}, {5, 2, 3}, 1, width, beta, 0, kTol);
            Vec3 const top = Middle(arc);
            double const radians = beta * kPi / 180;
            EXPECT_NEAR(Width(arc), width, 1e-9);
            ExpectNear(top, {3, 2 - width * std::cos(radians), 3 - width * std::sin(radians)}, 1e-8);
            Vec3 center, normal;
            ASSERT_EQ(MGeomFunc::CalcCurvInfoFrom3P(arc.Pos1.Data(), top.Data(), arc.Pos2.Data(), center.Data(),
                                                    normal.Data(), 0),
                      1);
            ExpectNear(center, arc.Center, 1e-7);
            ExpectNear(normal, arc.Normal, 1e-7);
        }
    }
    T_LINE_G const plan = T_LINE_G().Set({0, 0, 1}, {4, 0, 5}, 1, 2.0, 0.0, 1, kTol);
    ExpectNear(plan.Center, {2, 0, 3});
    EXPECT_NEAR(plan.Radius, 2, 1e-12);
    // A fall keeps the normal of the axes of its chord.
    ExpectNear(T_LINE_G().Set({0, 0, 0}, {4, 0, 0}, 1, -1.0, 0.0, 0, kTol).Normal, {0, 0, 1});
}

TEST(T_LINE_G, BoxesHoldTheCurveAndNoMore) {
    std::mt19937 random(5);
    std::uniform_real_distribution<double> angle(0, 360);
    for (int i = 0; i < 300; ++i) {
        // Every third arc starts or ends on an axis, or as good as.
        double const from = i % 3 == 0 ? 90.0 * (i % 4) + 1e-9 * (i % 5 - 2) : angle(random);
        double const to = i % 3 == 1 ? 90.0 * (i % 4) : angle(random);
        T_LINE_G const arc = Arc({2, 3, 0}, 5, from, to, i % 2 == 0 ? 1 : -1);
        double sides[4] = {1e9, 1e9, -1e9, -1e9};
        for (int k = 0; k <= 720; ++k) {
            Vec3 const p = AtRatio(arc, k / 720.0);
            sides[0] = std::min(sides[0], p[0] - 0.25);
            sides[1] = std::min(sides[1], p[1] - 0.25);
            sides[2] = std::max(sides[2], p[0] + 0.25);
            sides[3] = std::max(sides[3], p[1] + 0.25);
        }
        SCOPED_TRACE(testing::Message() << from << " to " << to);
        ExpectBox(Box(arc, 0.25), sides[0], sides[1], sides[2], sides[3], 2e-4);
    }
    ExpectBox(Box(Line({3, 1, 0}, {-1, 2, 9}), 1), -2, 0, 4, 3);
}

TEST(T_LINE_G, DistancesLeadBackToPositions) {
    for (T_LINE_G const &curve : Samples()) {
        double const length = curve.GetLineLength(0);
        for (double const ratio : {0.001, 0.25, 0.5, 0.9}) {
            Vec3 const p = AtLength(curve, length * ratio, 0);
            EXPECT_NEAR(curve.GetDistance(p), 0, 1e-9);
            double distance = 0;
            ASSERT_EQ(curve.GetDistOnChordFromP1_2D(p, distance), 1);
            EXPECT_NEAR(distance, length * ratio, 1e-7);
            ASSERT_EQ(curve.GetDistOnChord_2D(p, curve.Pos1, distance), 1);
            EXPECT_NEAR(distance, -length * ratio, 1e-7);
            ExpectNear(AtRatio(curve, ratio), p, 1e-8);
        }
    }
}

TEST(T_LINE_G, FindsPositionsTangentsAndFeet) {
    T_LINE_G const line = Line({0, 0, 0}, {2, 0, 4});
    T_LINE_G const level = Line({0, 0, 0}, {2, 0, 0});
    T_LINE_G const upright = Line({1, 1, 1}, {1, 1, 5});
    T_LINE_G const arc = Arc({0, 0, 0}, 5, 0, 90);
    T_LINE_G const space = T_LINE_G().Set({5, 0, 0}, {0, 5, 0}, 1, {0, 0, 0}, {0, 0, 1}, 0, kTol);
    double const h = std::sqrt(0.5);
    using Row = std::pair<Vec3, Vec3>;
    for (auto const &[actual, expected] : std::initializer_list<Row>{
             {AtRatio(line, -0.1), kNone},
             {AtRatio(line, 1.5), {3, 0, 6}},
             {AtLength(line, 1, 1), {1, 0, 2}},
             {AtAngle(line, 10), kNone},
             {AtLength(upright, 1, 1), kNone},
             {AtLength(upright, 0, 1), {1, 1, 1}},
             {AtAngle(kHelix, 45), OnCircle({0, 0, 0}, 5, 45, 5)},
             {Tangent(Line({0, 0, 0}, {0, 3, 4}), 0.2), {0, h, h}}, // the rise counts as much as the y difference
             {Tangent(upright, 0.2), kNone},
             {Tangent(arc, 0.5), {-h, h, 0}},
             {Tangent(Arc({0, 0, 0}, 5, 90, 0, -1), 0.5), {h, -h, 0}},
             {Tangent(arc, 1.01), kNone},
             {Projected(level, {5, 3, 1}), {5, 0, 0}},
             {Projected(kHelix, {1, 1, 77}), OnCircle({0, 0, 0}, 5, 45, 5)},
             {Projected(space, {3, 0, 4}), {5, 0, 0}},
         }) {
        SCOPED_TRACE(testing::Message() << expected[0] << ' ' << expected[1] << ' ' << expected[2]);
        ExpectNear(actual, expected);
    }
    EXPECT_DOUBLE_EQ(level.GetDistance({2.75, 1, 0}), 1.25);
    EXPECT_DOUBLE_EQ(level.GetDistance({-0.75, 1, 0}), 1.25);
    EXPECT_DOUBLE_EQ(level.GetDistance({1, 4, 0}), 4);
    EXPECT_DOUBLE_EQ(kHelix.GetDistance({-8, 0, 3}), 3) << "the extent of the arc plays no part";
    EXPECT_DOUBLE_EQ(space.GetDistance({3, 0, 4}), 2);
}

TEST(T_LINE_G, SortsPointsAlongTheCurve) {
    T_LINE_G const ccw = Arc({0, 0, 0}, 5, 350, 200);
    Points points;
    for (double const degrees : {100.0, 355.0, 349.99999, 10.0, 199.0, 340.0})
        points.PushBack(OnCircle({0, 0, 0}, 5, degrees, 0));
    using Row = std::tuple<T_LINE_G, Points, double, MArray<int>>;
    MArray<int> order = {42};
    for (auto const &[curve, given, tol, expected] :
         {Row{ccw, points, 1e-6, {2, 1, 3, 0, 4, 5}},
          Row{Arc({0, 0, 0}, 5, 350, 200, -1), points, 1e-6, {5, 4, 0, 3, 1, 2}},
          Row{Line({9, 0, 0}, {0, 0, 0}), {{3, 0, 0}, {1, 7, 0}, {2, -4, 0}, {1, 0, 0}}, 0, {0, 2, 1, 3}}}) {
        Points along = given;
        EXPECT_EQ(curve.SortByDist(along, tol, order), 1);
        EXPECT_EQ(order, expected);
        for (std::size_t i = 0; i < along.Size(); ++i)
            EXPECT_EQ(along[i], given[static_cast<std::size_t>(order[i])]);
    }
    Points one = {{1, 1, 1}};
    EXPECT_EQ(ccw.SortByDist(one, 0, order), 1);
    EXPECT_EQ(order, (MArray<int>{0, 2, 1, 3, 0})) << "a single point is added to the order";
    EXPECT_EQ(Line({1, 1, 1}, {1, 1, 1}).SortByDist(points, 0, order), 0);
    EXPECT_EQ(order.Size(), 5u);
}

TEST(T_LINE_G, TellsSameAndContinuousCurves) {
    T_LINE_G const line = Line({0, 0, 0}, {2, 0, 0});
    T_LINE_G const arc = Arc({1, 0, 0}, 5, 0, 90);
    T_LINE_G const chord = Line(arc.Pos1, arc.Pos2);
    T_LINE_G reversed = arc;
    T_LINE_G mirrored = arc;
    reversed.ReverseDir();
    mirrored.MirrorCurv();
    struct Row {
        T_LINE_G const &curve;
        T_LINE_G other;
        int same = 0, sameWay = 0, continuous = 0, headToTail = 0;
    };
    Row const rows[] = {
        {.curve = line, .other = Line({2, 0, 0}, {5, 0, 0}), .continuous = 1, .headToTail = 1},
        {.curve = line, .other = Line({-1, 0, 0}, {0, 0, 0}), .continuous = 1, .headToTail = 1},
        {.curve = line, .other = Line({5, 0, 0}, {2, 0, 0}), .continuous = 1},
        {.curve = line, .other = Line({0, 0, 0}, {-3, 0, 0})},
        {.curve = line, .other = Line({2, 0, 0}, {5, 1, 0})},
        {.curve = line, .other = Line({3, 0, 0}, {5, 0, 0})},
        {.curve = line, .other = Line({2, 0, 0}, {0, 0, 0}), .same = 1, .continuous = 1, .headToTail = 1},
        {.curve = line, .other = line, .same = 1, .sameWay = 1, .continuous = 1},
        {.curve = arc, .other = Arc({1, 0, 0}, 5, 90, 200), .continuous = 1, .headToTail = 1},
        {.curve = arc, .other = Arc({1, 2.5, 0}, 2.5, 90, 200)},
        {.curve = arc, .other = arc, .same = 1, .sameWay = 1, .continuous = 1},
        {.curve = arc, .other = reversed, .same = 1, .continuous = 1, .headToTail = 1},
        {.curve = arc, .other = mirrored},
        {.curve = arc, .other = chord},
        {.curve = arc, .other = Arc({1, 0, 0}, 5, 90, 0), .continuous = 1, .headToTail = 1},
    };
    for (Row const &row : rows) {
        SCOPED_TRACE(testing::Message() << "row " << &row - rows);
        EXPECT_EQ(row.curve.IsSameLine(row.other, 1e-6, 0), row.same);
        EXPECT_EQ(row.curve.IsSameLine(row.other, 1e-6, 1), row.sameWay);
        EXPECT_EQ(row.curve.IsContinuousLine(row.other, 1e-6, 0), row.continuous);
        EXPECT_EQ(row.curve.IsContinuousLine(row.other, 1e-6, 1), row.headToTail);
    }
    EXPECT_EQ(chord.IsSameLine(chord, 0, 0), 0);
}

TEST(T_LINE_G, CutsCurvesIntoMultiplesOfEight) {
    T_LINE_G const arc = Arc({0, 0, 0}, 5, 0, 100);
    Points points;
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
    for (auto const &[step, expected] : {std::pair{0.0, -1}, {12.5, 8}, {12.4, 16}}) {
        T_LINE_G::CalcArcUnitAngle(100, step, unit, count);
        EXPECT_EQ(count, expected);
    }
    EXPECT_EQ(unit, 6.25);
}

TEST(T_LINE_G, MovingKeepsTheRise) {
    for (double const side : {1.0, -1.0}) {
        T_LINE_G arc = Arc({0, 0, 0}, 5, 0, 90, side);
        double const before = Width(arc);
        ASSERT_EQ(arc.MoveTo({1, 1, 0}, {30, 2, 0}), 1);
        EXPECT_NEAR(Width(arc), before, 1e-9);
        EXPECT_EQ(arc.MoveTo({3, 3, 3}, {3, 3, 3}), 1);
        ExpectNear(arc.Pos2, {30, 2, 0}, 0);
    }
    T_LINE_G line = Line({0, 0, 0}, {1, 0, 0});
    EXPECT_EQ(line.MoveTo(line.Pos2, line.Pos1), 1);
    EXPECT_EQ(line.IsSameLine(Line({1, 0, 0}, {0, 0, 0}), 1e-12, 1), 1);
}

TEST(T_LINE_G, ReversingAndMirroringTwiceGiveTheCurveBack) {
    for (T_LINE_G const &curve : Samples()) {
        T_LINE_G twice = curve;
        twice.ReverseDir();
        EXPECT_NEAR(twice.GetLineAngle(), curve.GetLineAngle(), 1e-9);
        twice.ReverseDir();
        EXPECT_EQ(twice.IsSameLine(curve, 1e-9, 1), 1);
    }
    T_LINE_G const arc = T_LINE_G().Set({0, 0, 0}, {4, 0, 0}, 1, 1.0, 0.0, 0, kTol);
    T_LINE_G mirrored = arc;
    mirrored.MirrorCurv();
    ExpectNear(Middle(mirrored), {2, 1, 0}, 1e-8);
    EXPECT_EQ(mirrored.BetaAng, 180);
    mirrored.MirrorCurv();
    EXPECT_EQ(mirrored.IsSameLine(arc, 1e-8, 1), 1);
    EXPECT_EQ(mirrored.BetaAng, 360);
}

TEST(T_LINE_G, LocalAxesAndBreadth) {
    double m[3][3];
    double const h = std::sqrt(0.5);
    Vec3 const axes[] = {{-h, h, 0}, {h, h, 0}, {0, 0, -1}};
    ASSERT_EQ(Arc({0, 0, 0}, 5, 0, 90, -1).GetLineLocalAxis(m), 1);
    for (int i = 0; i < 3; ++i)
        ExpectNear(Vec3::FromArray(m[i]), axes[i]);
    ASSERT_EQ(Line({0, 0, 0}, {0, 2, 0}).GetLineLocalAxis(m), 1);
    ExpectNear(Vec3::FromArray(m[1]), {-1, 0, 0});
    using Row = std::tuple<T_LINE_G, Vec3, Vec3>;
    // An arc is measured along normal x axis: y for the axis x.
    for (auto const &[curve, first, second] :
         {Row{Arc({0, 0, 0}, 5, 30, 135), {0, 5, 0}, OnCircle({0, 0, 0}, 5, 30, 0)},
          Row{Line({3, 0, 0}, {1, 2, 0}), {3, 0, 0}, {1, 2, 0}}, Row{Circle({0, 0, 0}, 5), {0, 5, 0}, {0, 5, 0}}}) {
        Points out = {{1, 1, 1}};
        EXPECT_EQ(curve.GetLineBreadth(0.0, out), 1);
        ASSERT_EQ(out.Size(), 2u);
        ExpectNear(out[0], first);
        ExpectNear(out[1], second);
    }
}

TEST(T_LINE_G, UnitsScaleThePlanAloneAndAreAskedAnewForEachValue) {
    T_LINE_G arc = Helix({1, 1, 3}, 1, 0, 90, 1, 4, 8);
    CountingUnits in, out, former;
    arc.ConvertUnitIn(nullptr);
    arc.ConvertUnitIn(&in);
    ExpectNear(arc.Pos1, {2 * 2, 1 * 3, 4});
    ExpectNear(arc.Pos2, {1 * 4, 2 * 5, 8});
    ExpectNear(arc.Center, {6, 7, 3});
    EXPECT_DOUBLE_EQ(arc.Radius, 8);
    EXPECT_EQ(in.GetConvertFactorCurrent(1), 9) << "no other value asks";
    arc.ConvertUnitOut(&out);
    ExpectNear(arc.Center, {1, 1, 3});
    arc.ConvertUnitPrev(&former);
    ExpectNear(arc.Center, {60, 70, 3});
    EXPECT_DOUBLE_EQ(arc.Radius, 80);
    MUnitCtrl units(nullptr);
    units.Initialize(1, 2, 0, 2);  // centimetres; values are kept in millimetres
    arc.ConvertCurUnit(&units, 2); // metres
    EXPECT_DOUBLE_EQ(arc.Radius, 8000);
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
    line.GetMBR2D(box, 0.5);
    ExpectBox(box, -0.5, -0.5, 1.5, 1.5);
}

TEST(T_MBR3D, GrowsByItsTolerance) {
    T_MBR3D box, other;
    box.Set({1, 5, -1}, {0, 7, 2}, 0.5);
    EXPECT_EQ(box.MinX, -0.5);
    EXPECT_EQ(box.IsInnerPoint({1.5, 4.5, 2.5}), 1);
    EXPECT_EQ(box.IsInnerPoint({1.5, 4.5, 2.6}), 0);
    for (auto const &[y, overlaps] : {std::pair{7.5, 1}, {7.6, 0}}) {
        other.Set({1.5, y, 2.5}, {9, 9, 9}, 0);
        EXPECT_EQ(box.IsOverlap(other), overlaps);
        EXPECT_EQ(other.IsOverlap(box), overlaps);
    }
    box.UpdateWith(1, 5, 0, 3);
    EXPECT_EQ(box.MaxX, 1.5);
    box.UpdateWith(2, 5, -4, 3);
    EXPECT_EQ(box.MaxX, 5);
    EXPECT_EQ(box.MinZ, -7);
    box.SetWithCurv({3, 4, 100}, {0, 0, 0}, 1, {0, 0, 10});
    EXPECT_EQ(box.MaxX, 6);
    EXPECT_EQ(box.MinZ, 4);
    EXPECT_EQ(box.MaxZ, 16);
}

} // namespace zvi::lib::test
