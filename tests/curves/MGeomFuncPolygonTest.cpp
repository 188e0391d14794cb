#include "zvi/curves/MGeomFunc.h"

#include "tests/Rows.h"
#include "tests/curves/PolygonByDefinition.h"
#include "zvi/curves/PreparedPolygon.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace zvi::lib::test {

namespace {

Polygon Reversed(Polygon polygon) {
    std::reverse(polygon.begin(), polygon.end());
    return polygon;
}

/// A block with a notch that goes down to (2, 1).
Polygon const kNotched = {{0, 0}, {4, 0}, {4, 3}, {2, 1}, {0, 3}};

} // namespace

TEST(MGeomFuncTopology, GivesEachCode) {
    T_LINE2D const level = {0, 0, 10, 0};
    T_LINE2D const slanted = {0, 0, 10, 10};
    using Row = std::tuple<T_LINE2D, T_LINE2D, int>;
    for (auto const &[l, m, code] : std::initializer_list<Row>{
             {level, {3, 1, 7, 1}, 0},              // parallel to the left
             {level, {20, -1, 20, 1}, 0},           // beside
             {level, {0, 0, 0, 5}, 1},              // a on c
             {level, {0, 5, 0, 0}, 2},              // a on d
             {level, {0, -1, 0, 1}, 3},             // a inside M
             {level, {10, 0, 12, 5}, 4},            // b on c
             {level, {12, 5, 10, 0}, 5},            // b on d
             {level, {10, -1, 10, 1}, 6},           // b inside M
             {level, {4, 0, 4, 5}, 7},              // a T whose stem starts on L
             {level, {4, 5, 4, 0}, 8},              // a T whose stem ends on L
             {level, {4, -1, 4, 1}, 9},             // an X
             {level, {4, 0, 15, 0}, 10},            // only c within L
             {level, {15, 0, 4, 0}, 11},            // only d within L
             {level, {4, 0, 6, 0}, 12},             // M within L
             {level, {-1, 0, 11, 0}, 13},           // L within M
             {level, {4, 0.0003, 6, -0.0003}, 9},   // a flat X
             {level, {3, -0.00001, 7, 0.00001}, 0}, // flatter than the limit of parallel lines, and still not parallel
             {level, {10 + 9e-7, -1, 10 + 9e-7, 1}, 9}, // a miss within 1e-7 of the length of L meets
             {level, {10 + 2e-6, -1, 10 + 2e-6, 1}, 0},
             // Parallel segments to the right are judged by their boxes alone.
             {level, {3, -1, 7, -1}, 0},
             {slanted, {4, 1, 6, 3}, 12},
             {slanted, {1, 4, 3, 6}, 0},
             {{0, 0, 0, 0}, {0, 0, 0, 0}, 12},
         })
        EXPECT_EQ(MGeomFunc::GetTopologyOfTwoLines(l, m), code) << m.x1 << ' ' << m.y1;
}

TEST(MGeomFuncPolygon, CountsCrossingsOfALine) {
    using Row = std::pair<T_LINE2D, int>;
    for (auto const &[line, count] : std::initializer_list<Row>{
             {{-1, 2, 5, 2}, 4},     // both flanks of both teeth
             {{-1, 1, 5, 1}, 4},     // the outer sides, and the notch's bottom twice
             {{-1, 0.5, 5, 0.5}, 2}, // below the notch
             {{2, -1, 2, 5}, 2},     // upright: the base, and the notch's vertex where it passes
             {{-1, 3, 5, 3}, 4},     // the two tips, each twice
             {{-1, 4, 5, 4}, 0},     // clear of it
             {{1, 2, -1, 2}, 1},     // from an edge outward: the start counts for nothing
         }) {
        EXPECT_EQ(MGeomFunc::GetLinePolygonCrossCount(line, kNotched), count) << line.y1;
        EXPECT_EQ(MGeomFunc::GetLinePolygonCrossCount(line, Reversed(kNotched)), count) << line.y1;
    }
    // Along an edge: its start counts by the sides of its neighbours, its end once more.
    EXPECT_EQ(MGeomFunc::GetLinePolygonCrossCount({-1, 0, 5, 0}, kNotched), 3);
    EXPECT_EQ(MGeomFunc::GetLinePolygonCrossCount({5, 0, -1, 0}, kNotched), 2);
    EXPECT_EQ(MGeomFunc::GetLinePolygonCrossCount({-1, 0, 2, 0}, kNotched), 2) << "ends within the edge";
    EXPECT_EQ(MGeomFunc::GetLinePolygonCrossCount({-1, 0, 5, 0}, {}), 0);
}

TEST(MGeomFuncPolygon, TellsInsideFromOutsideAndBorder) {
    // The fifth is level with the notch's vertex.
    for (auto const &[x, y, open, closed] : Rows<double, double, int, int>(
             "1 1 1 1; 2 0.5 1 1; 2 1.5 0 0; 3.5 2 1 1; 3 1 1 1; 2 1 0 1; 0 0 0 1; 4 1 0 1; 3 2 0 1; 2 1.00001 0 0;"
             "2 0.5e-10 0 1; 4.00000000001 1 0 0; -1 1 0 0"))
        for (Polygon const &polygon : {kNotched, Reversed(kNotched)}) {
            EXPECT_EQ(MGeomFunc::IsPointInPolygon({x, y}, polygon), open) << x << " " << y;
            EXPECT_EQ(MGeomFunc::IsPointInPolygon2({x, y}, polygon, 1), closed) << x << " " << y;
        }
    EXPECT_EQ(MGeomFunc::IsPointInPolygon2({1, 1}, {{0, 0}, {2, 2}}, 1), 0);
    EXPECT_EQ(MGeomFunc::IsPointInPolygon2({std::nan(""), 1}, kNotched, 1), 0);
    EXPECT_EQ(MGeomFunc::IsPointInPolygon2({1, 1}, {}, 1), 0);
}

TEST(MGeomFuncPolygon, AgreesWithItsDefinitionAlsoPrepared) {
    unsigned seed = 0;
    double const frames[][2] = {{1, 0}, {1e3, 0}, {1e-3, 0}, {1, 1e5}, {1e6, 1e6}, {10, 1e9}, {1e13, 0}, {1e150, 0}};
    for (auto const &[scale, offset] : frames) {
        for (Shape const shape : {Shape::kGeneral, Shape::kLattice, Shape::kNearLattice, Shape::kThin, Shape::kStar}) {
            PolygonSource source(++seed, scale, offset);
            for (int i = 0; i < 1600; ++i) {
                Polygon polygon = source.Make(shape);
                PreparedPolygon const prepared(polygon);
                for (int k = 0; k < 4; ++k) {
                    SCOPED_TRACE(testing::Message() << "seed " << seed << " polygon " << i << " point " << k);
                    T_POINT2D const p = source.Point(polygon, shape);
                    int const answer = MGeomFunc::IsPointInPolygon2(p, polygon, k % 2);
                    ASSERT_EQ(prepared.IsPointInPolygon2(p, k % 2), answer);
                    // The two distances may differ by rounding.
                    if (std::fabs(DistanceToBorder(p, polygon) - 1e-10) >= 1e-15 * (scale + offset)) {
                        ASSERT_EQ(answer, ContainsByDefinition(p, polygon, k % 2));
                    }
                }
                polygon.PushBack({0.0, std::nan("")});
                T_POINT2D const p = source.Point(polygon, shape);
                ASSERT_EQ(PreparedPolygon(polygon).IsPointInPolygon2(p, 1),
                          MGeomFunc::IsPointInPolygon2(p, polygon, 1));
            }
        }
    }
    for (Polygon const &flat : {Polygon(), Polygon{{1, 1}}, Polygon{{0, 0}, {2, 2}}})
        EXPECT_EQ(PreparedPolygon(flat).IsPointInPolygon2({1, 1}, 1), 0);
}

TEST(MGeomFuncPolygon, BoxesAreOpenOrClosed) {
    T_REGION2D box;
    EXPECT_EQ(MGeomFunc::GetMBR({}, box), 0);
    ASSERT_EQ(MGeomFunc::GetMBR({{3, 1}, {-2, 5}, {0, -7}, {1, 1}}, box), 1);
    for (auto const &[x, y, open, closed] :
         Rows<double, double, int, int>("0 0 1 1; -2 0 0 1; 3 0 0 1; 0 -7 0 1; 0 5 0 1; 3.0001 0 0 0; 0 5.0001 0 0")) {
        EXPECT_EQ(MGeomFunc::IsPointInRegion({x, y}, box), open) << x << " " << y;
        EXPECT_EQ(MGeomFunc::IsPointInRegion2({x, y}, box, 0), open) << x << " " << y;
        EXPECT_EQ(MGeomFunc::IsPointInRegion2({x, y}, box, 1), closed) << x << " " << y;
    }
}

TEST(MGeomFuncPolygon, AreaTakesHolesOffWhicheverWayTheyRun) {
    Polygon const outer = {{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}};
    Polygon const hole = {{1, 1}, {2, 1}, {2, 3}, {1, 3}, {1, 1}};
    EXPECT_DOUBLE_EQ(MGeomFunc::CalcPolyArea({outer, {hole}}), 14);
    EXPECT_DOUBLE_EQ(MGeomFunc::CalcPolyArea({Reversed(outer), {hole, Reversed(hole)}}), 12);
    EXPECT_DOUBLE_EQ(MGeomFunc::CalcPolyArea({{{0, 0}, {1, 0}, {0, 1}}, {}}), 0) << "a ring that is not closed";
    EXPECT_DOUBLE_EQ(MGeomFunc::CalcPolyArea({}), 0);
}

TEST(MGeomFuncPolygon, HullTestFollowsItsDotProducts) {
    using Row = std::tuple<Polygon, T_POINT2D, int>;
    Polygon const wide = {{-10, -10}, {10, -10}, {10, 10}, {-10, 10}};
    for (auto const &[points, p, inside] : std::initializer_list<Row>{
             {{}, {0, 0}, 0},
             {{{1, 1}}, {1, 1}, 1},
             {{{1, 1}}, {2, 1}, 0},
             {wide, {3, -2}, 1},
             {wide, {30, -2}, 0},
             {wide, {10, 10}, 1},
             // Opposite the first point, with a product of the lengths of exactly 1.
             {{{-1, 0}, {1, 0}}, {0, 0}, 1},
             {{{-5, 0}, {5, 0}}, {0, 0}, 1},
             {{{0, 0}, {3, -0.5}}, {1, 0}, 1}, // one side alone, as far as can be
         })
        EXPECT_EQ(MGeomFunc::CheckInsideConvexHull(points, p), inside) << p.x << ' ' << p.y;
}

} // namespace zvi::lib::test
