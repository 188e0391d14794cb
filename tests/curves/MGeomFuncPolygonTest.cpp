#include "zvi/curves/MGeomFunc.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <random>

using zvi::MArray;
using zvi::lib::MGeomFunc;
using zvi::lib::T_LINE2D;
using zvi::lib::T_POINT2D;
using zvi::lib::T_REGION2D;

namespace {

using Polygon = MArray<T_POINT2D>;

double DistanceToSegment(T_POINT2D const &a, T_POINT2D const &b, T_POINT2D const &p) {
    double const dx = b.x - a.x;
    double const dy = b.y - a.y;
    double const squared = dx * dx + dy * dy;
    double t = squared > 0.0 ? ((p.x - a.x) * dx + (p.y - a.y) * dy) / squared : 0.0;
    t = std::clamp(t, 0.0, 1.0);
    return std::hypot((p.x - a.x) - t * dx, (p.y - a.y) - t * dy);
}

/// How far the point is from the nearest edge.
double DistanceToBorder(T_POINT2D const &p, Polygon const &polygon) {
    double nearest = HUGE_VAL;
    for (std::size_t i = 0; i < polygon.Size(); ++i)
        nearest = std::min(nearest, DistanceToSegment(polygon[i], polygon[(i + 1) % polygon.Size()], p));
    return nearest;
}

/// The test by its definition: box, distance to every edge, parity of the crossings of the ray with every edge.
int ContainsByDefinition(T_POINT2D const &p, Polygon const &polygon, int closed) {
    T_REGION2D box;
    if (polygon.Size() < 3 || MGeomFunc::GetMBR(polygon, box) == 0 || MGeomFunc::IsPointInRegion2(p, box, closed) == 0)
        return 0;
    if (DistanceToBorder(p, polygon) <= 1e-10)
        return closed != 0 ? 1 : 0;
    return MGeomFunc::GetLinePolygonCrossCount({p.x, p.y, box.MinX - 1.0, p.y}, polygon) % 2;
}

/// How the coordinates of a random polygon are drawn.
enum class Shape { kGeneral, kLattice, kNearLattice, kThin, kStar };

class PolygonSource {
public:
    PolygonSource(unsigned seed, double scale, double offset) : m_random(seed), m_scale(scale), m_offset(offset) {}

    Polygon Make(Shape shape) {
        Polygon polygon;
        std::size_t const count = 3 + m_random() % 12;
        for (std::size_t i = 0; i < count; ++i)
            polygon.PushBack(Vertex(shape, i, count));
        return polygon;
    }

    /// A point that has something to do with the polygon: a vertex, its height, a place on or next to an edge, or
    /// anywhere in the box.
    T_POINT2D Point(Polygon const &polygon, Shape shape) {
        T_POINT2D const &a = polygon[m_random() % polygon.Size()];
        T_POINT2D const &b = polygon[m_random() % polygon.Size()];
        double const t = Unit();
        double const nudge = m_scale * std::pow(10.0, -14.0 * Unit()) * (Unit() < 0.5 ? -1.0 : 1.0);
        switch (m_random() % 6) {
        case 0:
            return a;
        case 1:
            return {b.x + t * m_scale, a.y};
        case 2:
            return {a.x + t * (b.x - a.x), a.y + t * (b.y - a.y)};
        case 3:
            return {a.x + t * (b.x - a.x) + nudge, a.y + t * (b.y - a.y)};
        case 4:
            return {b.x, a.y + nudge};
        default:
            return Vertex(shape, 0, 1);
        }
    }

private:
    double Unit() { return std::uniform_real_distribution<double>(0.0, 1.0)(m_random); }

    T_POINT2D Vertex(Shape shape, std::size_t index, std::size_t count) {
        double x = Unit();
        double y = Unit();
        if (shape == Shape::kLattice || shape == Shape::kNearLattice) {
            x = std::floor(x * 5.0) / 5.0;
            y = std::floor(y * 5.0) / 5.0;
        }
        if (shape == Shape::kNearLattice) {
            x += std::pow(10.0, -5.0 - 10.0 * Unit());
            y -= std::pow(10.0, -5.0 - 10.0 * Unit());
        }
        if (shape == Shape::kThin)
            y *= 1e-7;
        if (shape == Shape::kStar) {
            double const angle = 2.0 * 3.14159265358979 * static_cast<double>(index) / static_cast<double>(count);
            double const radius = 0.2 + 0.3 * x;
            x = 0.5 + radius * std::cos(angle);
            y = 0.5 + radius * std::sin(angle);
        }
        return {m_offset + m_scale * x, m_offset - m_scale * y};
    }

    std::mt19937 m_random;
    double m_scale;
    double m_offset;
};

Polygon Reversed(Polygon polygon) {
    std::reverse(polygon.begin(), polygon.end());
    return polygon;
}

/// A block with a notch that goes down to (2, 1).
Polygon const kNotched = {{0, 0}, {4, 0}, {4, 3}, {2, 1}, {0, 3}};

} // namespace

TEST(MGeomFuncTopology, GivesEachCode) {
    T_LINE2D const l = {0, 0, 10, 0};
    struct Row {
        T_LINE2D m;
        int code;
    };
    Row const rows[] = {
        {{3, 1, 7, 1}, 0},                  // parallel to the left
        {{20, -1, 20, 1}, 0},               // beside
        {{0, 0, 0, 5}, 1},                  // a on c
        {{0, 5, 0, 0}, 2},                  // a on d
        {{0, -1, 0, 1}, 3},                 // a inside M
        {{10, 0, 12, 5}, 4},                // b on c
        {{12, 5, 10, 0}, 5},                // b on d
        {{10, -1, 10, 1}, 6},               // b inside M
        {{4, 0, 4, 5}, 7},                  // a T whose stem starts on L
        {{4, 5, 4, 0}, 8},                  // a T whose stem ends on L
        {{4, -1, 4, 1}, 9},                 // an X
        {{4, 0, 15, 0}, 10},                // only c within L
        {{15, 0, 4, 0}, 11},                // only d within L
        {{4, 0, 6, 0}, 12},                 // M within L
        {{-1, 0, 11, 0}, 13},               // L within M
        {{4, 0.0003, 6, -0.0003}, 9},       // a flat X
        {{3, -0.00001, 7, 0.00001}, 0},     // flatter than the limit of parallel lines, and still not parallel
        {{10 + 9e-7, -1, 10 + 9e-7, 1}, 9}, // a miss within 1e-7 of the length of L meets
        {{10 + 2e-6, -1, 10 + 2e-6, 1}, 0},
    };
    for (Row const &row : rows)
        EXPECT_EQ(MGeomFunc::GetTopologyOfTwoLines(l, row.m), row.code) << row.m.x1 << " " << row.m.y1;
}

TEST(MGeomFuncTopology, JudgesParallelSegmentsToTheRightByTheirBoxes) {
    T_LINE2D const slanted = {0, 0, 10, 10};
    EXPECT_EQ(MGeomFunc::GetTopologyOfTwoLines(slanted, {4, 1, 6, 3}), 12);
    EXPECT_EQ(MGeomFunc::GetTopologyOfTwoLines(slanted, {1, 4, 3, 6}), 0);
    EXPECT_EQ(MGeomFunc::GetTopologyOfTwoLines({0, 0, 10, 0}, {3, -1, 7, -1}), 0);
    EXPECT_EQ(MGeomFunc::GetTopologyOfTwoLines({0, 0, 0, 0}, {0, 0, 0, 0}), 12);
}

TEST(MGeomFuncPolygon, CountsCrossingsOfALine) {
    struct Row {
        T_LINE2D line;
        int count;
    };
    Row const rows[] = {
        {{-1, 2, 5, 2}, 4},     // both flanks of both teeth
        {{-1, 1, 5, 1}, 4},     // the outer sides, and the notch's bottom twice
        {{-1, 0.5, 5, 0.5}, 2}, // below the notch
        {{2, -1, 2, 5}, 2},     // upright: the base, and the notch's vertex where it passes
        {{-1, 3, 5, 3}, 4},     // the two tips, each twice
        {{-1, 4, 5, 4}, 0},     // clear of it
        {{1, 2, -1, 2}, 1},     // from an edge outward: the start counts for nothing
    };
    for (Row const &row : rows) {
        EXPECT_EQ(MGeomFunc::GetLinePolygonCrossCount(row.line, kNotched), row.count) << row.line.y1;
        EXPECT_EQ(MGeomFunc::GetLinePolygonCrossCount(row.line, Reversed(kNotched)), row.count) << row.line.y1;
    }
    // Along an edge: its start counts by the sides of its neighbours, its end once more.
    EXPECT_EQ(MGeomFunc::GetLinePolygonCrossCount({-1, 0, 5, 0}, kNotched), 3);
    EXPECT_EQ(MGeomFunc::GetLinePolygonCrossCount({5, 0, -1, 0}, kNotched), 2);
    EXPECT_EQ(MGeomFunc::GetLinePolygonCrossCount({-1, 0, 5, 0}, {}), 0);
}

TEST(MGeomFuncPolygon, TellsInsideFromOutsideAndBorder) {
    struct Row {
        T_POINT2D p;
        int open;
        int closed;
    };
    Row const rows[] = {
        {{1, 1}, 1, 1},       {{2, 0.5}, 1, 1},     {{2, 1.5}, 0, 0},       {{3.5, 2}, 1, 1},
        {{3, 1}, 1, 1}, // level with the notch's vertex
        {{2, 1}, 0, 1},       {{0, 0}, 0, 1},       {{4, 1}, 0, 1},         {{3, 2}, 0, 1},
        {{2, 1.00001}, 0, 0}, {{2, 0.5e-10}, 0, 1}, {{4 + 1e-11, 1}, 0, 0}, {{-1, 1}, 0, 0},
    };
    for (Row const &row : rows) {
        for (Polygon const &polygon : {kNotched, Reversed(kNotched)}) {
            EXPECT_EQ(MGeomFunc::IsPointInPolygon(row.p, polygon), row.open) << row.p.x << " " << row.p.y;
            EXPECT_EQ(MGeomFunc::IsPointInPolygon2(row.p, polygon, 1), row.closed) << row.p.x << " " << row.p.y;
        }
    }
    EXPECT_EQ(MGeomFunc::IsPointInPolygon2({1, 1}, {{0, 0}, {2, 2}}, 1), 0);
    EXPECT_EQ(MGeomFunc::IsPointInPolygon2({std::nan(""), 1}, kNotched, 1), 0);
    EXPECT_EQ(MGeomFunc::IsPointInPolygon2({1, 1}, {}, 1), 0);
}

TEST(MGeomFuncPolygon, AgreesWithItsDefinitionOnRandomPolygons) {
    struct Frame {
        double scale;
        double offset;
    };
    Frame const frames[] = {{1, 0}, {1000, 0}, {1e-3, 0}, {1, 1e5}, {1e6, 1e6}, {10, 1e9}, {1e13, 0}, {1e150, 0}};
    unsigned seed = 1;
    for (Frame const &frame : frames) {
        for (Shape const shape : {Shape::kGeneral, Shape::kLattice, Shape::kNearLattice, Shape::kThin, Shape::kStar}) {
            PolygonSource source(++seed, frame.scale, frame.offset);
            for (int i = 0; i < 400; ++i) {
                Polygon const polygon = source.Make(shape);
                for (int j = 0; j < 16; ++j) {
                    T_POINT2D const p = source.Point(polygon, shape);
                    int const closed = j % 2;
                    // The two distances may differ by rounding.
                    if (std::fabs(DistanceToBorder(p, polygon) - 1e-10) < 1e-15 * (frame.scale + frame.offset))
                        continue;
                    ASSERT_EQ(MGeomFunc::IsPointInPolygon2(p, polygon, closed),
                              ContainsByDefinition(p, polygon, closed))
                        << "seed " << seed << " polygon " << i << " point " << j;
                }
            }
        }
    }
}

TEST(MGeomFuncPolygon, AgreesWithTheAngleSumInGeneralPosition) {
    PolygonSource source(77, 10.0, 3.0);
    int tested = 0;
    for (int i = 0; i < 1000; ++i) {
        Polygon const polygon = source.Make(Shape::kStar);
        T_POINT2D const p = source.Point(polygon, Shape::kGeneral);
        double turn = 0.0;
        // Ends within 1e-7 of an edge's length over or under the ray count twice, so such points are left out.
        double clearance = DistanceToBorder(p, polygon);
        for (std::size_t k = 0; k < polygon.Size(); ++k) {
            T_POINT2D const &a = polygon[k];
            T_POINT2D const &b = polygon[(k + 1) % polygon.Size()];
            clearance = std::min(clearance, a.y == p.y ? HUGE_VAL : std::fabs(a.y - p.y));
            turn += std::atan2((a.x - p.x) * (b.y - p.y) - (a.y - p.y) * (b.x - p.x),
                               (a.x - p.x) * (b.x - p.x) + (a.y - p.y) * (b.y - p.y));
        }
        if (clearance > 1e-5) {
            EXPECT_EQ(MGeomFunc::IsPointInPolygon(p, polygon), std::fabs(turn) > 3.0 ? 1 : 0) << i;
            ++tested;
        }
    }
    EXPECT_GT(tested, 400);
}

TEST(MGeomFuncPolygon, BoxesAreOpenOrClosed) {
    T_REGION2D box;
    EXPECT_EQ(MGeomFunc::GetMBR({}, box), 0);
    ASSERT_EQ(MGeomFunc::GetMBR({{3, 1}, {-2, 5}, {0, -7}, {1, 1}}, box), 1);
    EXPECT_EQ(box.MinX, -2);
    EXPECT_EQ(box.MinY, -7);
    EXPECT_EQ(box.MaxX, 3);
    EXPECT_EQ(box.MaxY, 5);
    for (T_POINT2D const &corner : {T_POINT2D{-2, 0}, T_POINT2D{3, 5}, T_POINT2D{0, -7}}) {
        EXPECT_EQ(MGeomFunc::IsPointInRegion(corner, box), 0);
        EXPECT_EQ(MGeomFunc::IsPointInRegion2(corner, box, 0), 0);
        EXPECT_EQ(MGeomFunc::IsPointInRegion2(corner, box, 1), 1);
    }
    EXPECT_EQ(MGeomFunc::IsPointInRegion({0, 0}, box), 1);
    EXPECT_EQ(MGeomFunc::IsPointInRegion2({3.0001, 0}, box, 1), 0);
}

TEST(MGeomFuncPolygon, AreaTakesHolesOffWhicheverWayTheyRun) {
    Polygon const outer = {{0, 0}, {4, 0}, {4, 4}, {0, 4}, {0, 0}};
    Polygon const hole = {{1, 1}, {2, 1}, {2, 3}, {1, 3}, {1, 1}};
    EXPECT_DOUBLE_EQ(MGeomFunc::CalcPolyArea({outer, {hole}}), 14);
    EXPECT_DOUBLE_EQ(MGeomFunc::CalcPolyArea({Reversed(outer), {hole, Reversed(hole)}}), 12);
    EXPECT_DOUBLE_EQ(MGeomFunc::CalcPolyArea({{{0, 0}, {1, 0}, {0, 0}}, {}}), 0);
    EXPECT_DOUBLE_EQ(MGeomFunc::CalcPolyArea({}), 0);
}

TEST(MGeomFuncPolygon, HullTestFollowsItsDotProducts) {
    Polygon const wide = {{-10, -10}, {10, -10}, {10, 10}, {-10, 10}};
    EXPECT_EQ(MGeomFunc::CheckInsideConvexHull({}, {0, 0}), 0);
    EXPECT_EQ(MGeomFunc::CheckInsideConvexHull({{1, 1}}, {1, 1}), 1);
    EXPECT_EQ(MGeomFunc::CheckInsideConvexHull({{1, 1}}, {2, 1}), 0);
    EXPECT_EQ(MGeomFunc::CheckInsideConvexHull(wide, {3, -2}), 1);
    EXPECT_EQ(MGeomFunc::CheckInsideConvexHull(wide, {30, -2}), 0);
    EXPECT_EQ(MGeomFunc::CheckInsideConvexHull(wide, {10, 10}), 1);
    // Opposite the first point, with a product of the lengths of exactly 1.
    EXPECT_EQ(MGeomFunc::CheckInsideConvexHull({{-1, 0}, {1, 0}}, {0, 0}), 1);
}
