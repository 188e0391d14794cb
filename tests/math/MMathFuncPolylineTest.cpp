#include "zvi/math/MMathFunc.h"

#include <algorithm>
#include <climits>
#include <cmath>
#include <random>
#include <vector>

#include <gtest/gtest.h>

using zvi::lib::MMathFunc;

namespace {

struct Pnt {
    double x, y;
    double const *Data() const { return &x; }
};

using Ring = std::vector<Pnt>;

int Count(Ring const &ring) {
    return static_cast<int>(ring.size());
}

double (*Rows(Ring &ring))[2] {
    return reinterpret_cast<double(*)[2]>(ring.data());
}
double const (*Rows(Ring const &ring))[2] {
    return reinterpret_cast<double const(*)[2]>(ring.data());
}

Ring const kSquare = {{0, 0}, {4, 0}, {4, 4}, {0, 4}};
// An L with a reflex corner at (2, 2).
Ring const kCorner = {{0, 0}, {4, 0}, {4, 2}, {2, 2}, {2, 4}, {0, 4}};

Ring Reversed(Ring ring) {
    std::reverse(ring.begin(), ring.end());
    return ring;
}

// Distance of every vertex of the offset ring from the two carriers of its edges, all of the same side.
double SignedDistance(Pnt a, Pnt b, Pnt p) {
    return ((b.x - a.x) * (p.y - a.y) - (b.y - a.y) * (p.x - a.x)) / std::hypot(b.x - a.x, b.y - a.y);
}

// Winding number by the sum of the signed angles at p.
bool IsInsideByAngles(Ring const &ring, Pnt p) {
    double sum = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        Pnt const a = ring[i];
        Pnt const b = ring[(i + 1) % ring.size()];
        sum += std::remainder(std::atan2(b.y - p.y, b.x - p.x) - std::atan2(a.y - p.y, a.x - p.x), 2.0 * M_PI);
    }
    return std::abs(sum) > 3.0;
}

} // namespace

TEST(MMathFuncPolyline, PointBetweenTheEnds) {
    Pnt const a{0, 0}, b{10, 0};
    struct {
        Pnt p;
        int expected;
    } const rows[] = {{{5, 0}, 1},     {{0, 0}, 7},     {{10, 0.9e-10}, 7}, {{10.0000001, 0}, 0}, {{-5, 0}, 0},
                      {{5, 2e-10}, 1}, {{5, 4e-10}, 0}, {{5, 1}, 0},        {{NAN, 0}, 0}};
    for (auto const &row : rows)
        EXPECT_EQ(MMathFunc::mathIsPointOfLine2D(a.Data(), b.Data(), row.p.Data(), 7), row.expected)
            << row.p.x << ' ' << row.p.y;
    Pnt const half{3, 0.5};
    EXPECT_EQ(MMathFunc::mathIncludePointInLine(a.Data(), b.Data(), half.Data(), 0.5), 1);
    EXPECT_EQ(MMathFunc::mathIncludePointInLine(a.Data(), b.Data(), half.Data(), 0.49), 0);
    Pnt const beyond{13, 4};
    EXPECT_EQ(MMathFunc::mathIncludePointInLine(a.Data(), b.Data(), beyond.Data(), 4.9), 0);
    EXPECT_EQ(MMathFunc::mathIncludePointInLine(b.Data(), b.Data(), beyond.Data(), 5.0), 1);
}

TEST(MMathFuncPolyline, SegmentsCrossTouchOrMiss) {
    struct {
        Pnt a, b, c, d;
        int expected;
    } const rows[] = {
        {{0, 0}, {4, 4}, {0, 4}, {4, 0}, 1},   // crossing
        {{0, 0}, {4, 0}, {2, 0}, {2, 3}, 0},   // an end on the other
        {{0, 0}, {4, 0}, {5, 0}, {5, 3}, -1},  // an end on the other's line, beyond it
        {{0, 0}, {0, 4}, {0, 4}, {3, 9}, 0},   // a common end, vertical
        {{0, 0}, {0, 4}, {0, 5}, {3, 9}, -1},  // on the vertical's line, beyond it
        {{0, 0}, {4, 0}, {3, 0}, {9, 0}, 0},   // collinear, overlapping
        {{0, 0}, {4, 0}, {4, 0}, {9, 0}, 0},   // collinear, end to end
        {{0, 0}, {4, 0}, {5, 0}, {9, 0}, -1},  // collinear, apart
        {{0, 0}, {0, 4}, {0, 5}, {0, 9}, -1},  // collinear and vertical, apart
        {{0, 0}, {0, 4}, {0, 3}, {0, 9}, 0},   // collinear and vertical, overlapping
        {{0, 0}, {4, 0}, {0, 1}, {4, 1}, -1},  // parallel
        {{0, 0}, {4, 0}, {5, -1}, {5, 1}, -1}, // one side only
        {{2, 2}, {2, 2}, {0, 0}, {4, 4}, 0},   // a single point on a segment
        {{2, 1}, {2, 1}, {0, 0}, {4, 4}, -1},  // a single point beside it
        {{2, 1}, {2, 1}, {9, 1}, {9, 1}, -1},  // two single points of one height
    };
    for (auto const &row : rows)
        for (int turn = 0; turn < 8; ++turn) {
            Pnt const &a = turn & 1 ? row.b : row.a, &b = turn & 1 ? row.a : row.b;
            Pnt const &c = turn & 2 ? row.d : row.c, &d = turn & 2 ? row.c : row.d;
            int const got = turn & 4 ? MMathFunc::mathIntersect_ccw2D(c.Data(), d.Data(), a.Data(), b.Data())
                                     : MMathFunc::mathIntersect_ccw2D(a.Data(), b.Data(), c.Data(), d.Data());
            EXPECT_EQ(got, row.expected) << &row - rows << " turned " << turn;
        }
}

TEST(MMathFuncPolyline, InsideARing) {
    struct {
        Pnt p;
        int open, closed;
    } const rows[] = {{{1, 1}, 1, 1},  {{3, 3}, 0, 0}, {{1, 2}, 1, 1},     {{-1, 2}, 0, 0}, {{-1, 4}, 0, 0},
                      {{-1, 0}, 0, 0}, {{4, 1}, 0, 1}, {{2, 3}, 0, 1},     {{0, 0}, 0, 1},  {{2, 2}, 0, 1},
                      {{3, 2}, 0, 1},  {{5, 2}, 0, 0}, {{3, 1.9999}, 1, 1}};
    for (Ring const &ring : {kCorner, Reversed(kCorner)})
        for (auto const &row : rows) {
            EXPECT_EQ(MMathFunc::mathIsInsidePoint2D(row.p.Data(), Count(ring), Rows(ring), 0), row.open)
                << row.p.x << ' ' << row.p.y;
            EXPECT_EQ(MMathFunc::mathIsInsidePoint2D(row.p.Data(), Count(ring), Rows(ring), 5), row.closed)
                << row.p.x << ' ' << row.p.y;
        }
    EXPECT_EQ(MMathFunc::mathIsInsidePoint2D(kSquare[0].Data(), 0, Rows(kSquare), 1), 0);
    // Within 1e-11 of the edge's length from its end, farther than 1e-10, and level with it.
    Ring const tall = {{0, 0}, {5, 0}, {5, 1000}, {0, 1000}};
    Pnt const beside{-5e-9, 0};
    EXPECT_EQ(MMathFunc::mathIsInsidePoint2D(beside.Data(), 4, Rows(tall), 1), 1);
    EXPECT_EQ(MMathFunc::mathIsInsidePoint2D(beside.Data(), 4, Rows(tall), 0), 0);
    Ring const wide = {{0, 0}, {3e11, 0}, {3e11, 4}, {0, 4}};
    Pnt const middle{1, 1};
    EXPECT_EQ(MMathFunc::mathIsInsidePoint2D(middle.Data(), 4, Rows(wide), 1), 1);
}

TEST(MMathFuncPolyline, InsideAgreesWithTheWindingAngle) {
    std::mt19937 random(99);
    std::uniform_real_distribution<double> number(0.0, 1.0);
    for (int run = 0; run < 300; ++run) {
        Ring star; // a star about the origin with whole coordinates, so that rays pass through vertices
        for (int i = 0; i < 12; ++i) {
            double const angle = (i + number(random)) * M_PI / 6.0;
            double const r = 3.0 + 12.0 * number(random);
            star.push_back({std::round(r * std::cos(angle)), std::round(r * std::sin(angle))});
        }
        Pnt const p{std::round(30.0 * number(random) - 15.0) + 0.5, std::round(30.0 * number(random) - 15.0)};
        bool onEdge = false;
        for (std::size_t i = 0; i < star.size(); ++i)
            onEdge |=
                MMathFunc::mathIncludePointInLine(star[i].Data(), star[(i + 1) % 12].Data(), p.Data(), 1e-10) != 0;
        int const expected = onEdge || IsInsideByAngles(star, p);
        EXPECT_EQ(MMathFunc::mathIsInsidePoint2D(p.Data(), 12, Rows(star), 1), expected) << "run " << run;
    }
}

TEST(MMathFuncPolyline, LinesCross) {
    double const l1[2][2] = {{0, 0}, {1, 1}};
    double const l2[2][2] = {{-1, 5}, {1, 3}};
    double const nearly[2][2] = {{0, 1}, {1, 2.00000000005}};
    double out[2] = {9, 9};
    EXPECT_EQ(MMathFunc::mathLineLineCross2D(l1, l2, out, 0), 1);
    EXPECT_NEAR(out[0], 2.0, 1e-14);
    EXPECT_NEAR(out[1], 2.0, 1e-14);
    EXPECT_EQ(MMathFunc::mathLineLineCross2D(l1, nearly, out, 0), 0);
    EXPECT_EQ(out[0], 0.0);
    EXPECT_EQ(MMathFunc::mathLineLineCross2D(l1, nearly, out, 1), 1) << "the strict limit is the smaller one";
    EXPECT_LT(out[0], -1e10);
    double const point[2][2] = {{3, 3}, {3, 3}};
    EXPECT_EQ(MMathFunc::mathLineLineCross2D(l1, point, out, 1), 0);
    Pnt const s1{0, 5}, s2{5, 0}, s3{2, 3};
    EXPECT_EQ(MMathFunc::mathLineSegCross2D(l1, s1.Data(), s2.Data(), out), 1);
    EXPECT_EQ(MMathFunc::mathLineSegCross2D(l1, s1.Data(), s3.Data(), out), 0);
    EXPECT_NEAR(out[0], 2.5, 1e-14);
}

TEST(MMathFuncPolyline, SideAndDistanceOfALine) {
    Pnt const a{1, 2}, b{5, 2};
    struct {
        Pnt p;
        double distance;
        int where, side;
    } const rows[] = {{{-2, 6}, 4, 0, 1},
                      {{3, 1}, 1, 1, 0},
                      {{10, 2}, 0, 2, 2},
                      {{5, 4}, 2, 1, 1},
                      {{3, 2 + 0x1p-26}, 0x1p-26, 1, 2}};
    for (auto const &row : rows) {
        int where = -1;
        EXPECT_EQ(MMathFunc::mathDistanceFromIntersectPointToLine2D(a.Data(), b.Data(), row.p.Data(), where),
                  row.distance);
        EXPECT_EQ(where, row.where) << row.p.x;
        EXPECT_EQ(MMathFunc::Get2DPointPosByLine(row.p.Data(), a.Data(), b.Data()), row.side) << row.p.x;
    }
    int where = -1;
    EXPECT_EQ(MMathFunc::mathDistanceFromIntersectPointToLine2D(a.Data(), a.Data(), rows[0].p.Data(), where), 5.0);
    EXPECT_EQ(where, 1);
}

TEST(MMathFuncPolyline, BulgeAndCentreBelongTogether) {
    double const chord[2][2] = {{0, 0}, {8, 0}};
    struct {
        double radius;
        int minor;
        double bulge;
    } const rows[] = {{5, 1, 2}, {5, 0, 8}, {-5, 1, -2}, {-5, 0, -8}, {4, 1, 4}, {-4, 0, -4}};
    for (auto const &row : rows) {
        double const bulge = MMathFunc::GetBulge(chord, row.radius, row.minor);
        EXPECT_EQ(bulge, row.bulge);
        double center[2];
        EXPECT_EQ(MMathFunc::GetCenter_Bulge(chord, bulge, center), 1);
        EXPECT_NEAR(std::hypot(center[0], center[1]), std::abs(row.radius), 1e-12);
        // The unit vector from the second end to the first is (-1, 0): a positive move goes to +y.
        EXPECT_NEAR(center[1], (16.0 - bulge * bulge) / (2.0 * bulge), 1e-12);
    }
    EXPECT_EQ(MMathFunc::GetBulge(chord, 3.9, 1), 0.0);
    double const slanted[2][2] = {{7.4, 5.8}, {1, 1}}; // the same length, its left normal (0.6, -0.8)
    double center[2];
    EXPECT_EQ(MMathFunc::GetCenter_Bulge(slanted, 2.0, center), 1);
    EXPECT_NEAR(center[0], 4.2 + 3.0 * 0.6, 1e-12);
    EXPECT_NEAR(center[1], 3.4 - 3.0 * 0.8, 1e-12);
    EXPECT_EQ(MMathFunc::GetCenter_Bulge(chord, 0.0, center), 0);
    EXPECT_EQ(center[0], 4.0);
}

TEST(MMathFuncPolyline, WholeNumbersAround) {
    struct {
        double value;
        int upper, lower;
    } const rows[] = {
        {3.0, 3, 2}, {3.5, 4, 3}, {-2.5, -1, -2}, {0.0, 0, -1}, {1e99, INT_MAX, INT_MAX}, {-1e99, INT_MIN, INT_MIN}};
    for (auto const &row : rows) {
        int upper = 0;
        int lower = 0;
        EXPECT_EQ(MMathFunc::GetDivideNum(row.value, upper, lower), 1);
        EXPECT_EQ(upper, row.upper) << row.value;
        EXPECT_EQ(lower, row.lower) << row.value;
    }
}

TEST(MMathFuncPolyline, RingsOverlapWhereTheirBoxesMeet) {
    auto const moved = [](double dx, double dy) {
        Ring ring = kSquare;
        for (Pnt &p : ring)
            p = {p.x + dx, p.y + dy};
        return ring;
    };
    struct {
        double dx, dy;
        int expected;
    } const rows[] = {{1, 1, 1}, {4, 4, 1}, {9, 0, 0}, {0, -4.1, 0}, {1e-16, 4, 1}, {4.0000001, 0, 0}};
    for (auto const &row : rows) {
        Ring const other = moved(row.dx, row.dy);
        EXPECT_EQ(MMathFunc::IsOverLap_Polyline(4, Rows(kSquare), 4, Rows(other)), row.expected) << row.dx;
        EXPECT_EQ(MMathFunc::IsOverLap_Polyline(4, Rows(other), 4, Rows(kSquare)), row.expected) << row.dx;
    }
    // The closing edge along x = 0 counts a vertex as touching whose double area with it is below 1e-10.
    Ring const beside = {{-1e-11, 1}, {-4, 1}, {-4, 3}};
    EXPECT_EQ(MMathFunc::IsOverLap_Polyline(4, Rows(kSquare), 3, Rows(beside)), 1);
    EXPECT_EQ(MMathFunc::IsOverLap_Polyline(3, Rows(beside), 4, Rows(kSquare)), 1);
    EXPECT_EQ(MMathFunc::IsOverLap_Polyline(0, Rows(kSquare), 3, Rows(beside)), 0);
}

TEST(MMathFuncPolyline, OffsetRingKeepsItsDistanceAtEveryCorner) {
    // Area of the ring moved outward by d, convex and reflex right angles alike: A + P d + 4 d^2.
    struct {
        Ring ring;
        double perimeter;
    } const rows[] = {{kSquare, 16}, {kCorner, 16}};
    for (auto const &row : rows)
        for (bool const clockwise : {false, true})
            for (double const d : {0.5, -0.5}) {
                Ring ring = clockwise ? Reversed(row.ring) : row.ring;
                double const area = std::abs(MMathFunc::mathArea2d(Count(ring), Rows(ring)));
                ASSERT_EQ(MMathFunc::mathOffsetOfPolyline(d, Count(ring), Rows(ring), 0), 1);
                EXPECT_NEAR(std::abs(MMathFunc::mathArea2d(Count(ring), Rows(ring))),
                            area + row.perimeter * d + 4 * d * d, 1e-12);
            }
    std::mt19937 random(5);
    std::uniform_real_distribution<double> number(0.0, 1.0);
    for (int run = 0; run < 200; ++run) {
        Ring ring;
        for (int i = 0; i < 9; ++i) {
            double const angle = (i + number(random)) * M_PI / 4.5;
            double const r = 1.0 + 9.0 * number(random);
            ring.push_back({r * std::cos(angle), r * std::sin(angle)});
        }
        Ring moved = ring;
        int const side = 1 + run % 2;
        ASSERT_EQ(MMathFunc::mathOffsetOfPolyline(0.25, 9, Rows(moved), side), 1);
        for (std::size_t i = 0; i < 9; ++i)
            for (std::size_t const end : {i, (i + 1) % 9})
                EXPECT_NEAR(SignedDistance(ring[i], ring[(i + 1) % 9], moved[end]), side == 1 ? -0.25 : 0.25, 1e-9);
    }
}

TEST(MMathFuncPolyline, RepeatedPointsMoveWithTheirNeighbour) {
    Ring ring = {{7, 1}, {7, 1}, {9, 1}, {9, 4}, {9, 4}, {9, 4}, {7, 4}, {7, 1}, {7, 1}};
    Ring const expected = {{6, 0}, {6, 0}, {10, 0}, {10, 5}, {10, 5}, {10, 5}, {6, 5}, {6, 0}, {6, 0}};
    ASSERT_EQ(MMathFunc::mathOffsetOfPolyline(1.0, Count(ring), Rows(ring), -3), 1);
    for (std::size_t i = 0; i < ring.size(); ++i) {
        EXPECT_NEAR(ring[i].x, expected[i].x, 1e-14) << i;
        EXPECT_NEAR(ring[i].y, expected[i].y, 1e-14) << i;
    }
    for (Ring const &bad : {Ring{{0, 0}, {2, 0}, {4, 0}, {4, 4}}, Ring{{0, 0}, {1, 0}}, Ring{{3, 3}, {3, 3}, {3, 3}},
                            Ring{{0, 0}, {4, 0}, {0, 0}, {4, 0}}, Ring{{0, 0}, {4, 0}, {NAN, 3}}}) {
        Ring kept = bad;
        EXPECT_EQ(MMathFunc::mathOffsetOfPolyline(1.0, Count(kept), Rows(kept), 0), 0);
        EXPECT_EQ(kept[1].x, bad[1].x) << "a failure leaves the points";
        EXPECT_EQ(kept[1].y, bad[1].y);
    }
}

TEST(MMathFuncPolyline, CircleAndArcThroughThreePoints) {
    double center[2] = {7, 7};
    double radius = 7, start = 7, end = 7;
    Pnt const east{1e6 + 5, 2}, north{1e6, 7}, south{1e6, -3};
    EXPECT_EQ(MMathFunc::mathCircleForm3Point(north.Data(), south.Data(), south.Data(), center, radius), 0);
    EXPECT_EQ(radius, 7.0);
    EXPECT_EQ(MMathFunc::mathArcForm3Point(east.Data(), north.Data(), south.Data(), center, radius, start, end), 1);
    EXPECT_NEAR(center[0], 1e6, 1e-9);
    EXPECT_NEAR(center[1], 2.0, 1e-9);
    EXPECT_NEAR(radius, 5.0, 1e-9);
    EXPECT_NEAR(start, 0.0, 1e-7);
    EXPECT_NEAR(end, 270.0, 1e-7);
    EXPECT_EQ(MMathFunc::mathArcForm3Point(south.Data(), north.Data(), east.Data(), center, radius, start, end), 1);
    EXPECT_NEAR(start, 0.0, 1e-7) << "clockwise from the south over the north: counter-clockwise from the east";
    EXPECT_NEAR(end, 270.0, 1e-7);
}

TEST(MMathFuncPolyline, AreaAndCentroid) {
    double out[2];
    double area = 0.0;
    EXPECT_EQ(MMathFunc::mathPolyCentroid(6, Rows(kCorner), out, area), 1);
    EXPECT_EQ(area, 12.0);
    // The square 4 x 4 about (2, 2) less the square 2 x 2 about (3, 3).
    EXPECT_NEAR(out[0], (16.0 * 2.0 - 4.0 * 3.0) / 12.0, 1e-14);
    EXPECT_NEAR(out[1], out[0], 1e-14);
    Ring const clockwise = Reversed(kCorner);
    EXPECT_EQ(MMathFunc::mathPolyCentroid(6, Rows(clockwise), out, area), 1);
    EXPECT_EQ(area, -12.0);
    EXPECT_NEAR(out[0], 5.0 / 3.0, 1e-14);
    Ring const flat = {{0, 0}, {2, 2}, {4, 4}};
    EXPECT_EQ(MMathFunc::mathPolyCentroid(3, Rows(flat), out, area), 0);
    EXPECT_EQ(out[0], 2.0);
    EXPECT_EQ(MMathFunc::mathArea2d(2, Rows(flat)), 0.0);
    double const tilted[4][3] = {{1, 2, 3}, {4, 2, 7}, {4, 4, 7}, {1, 4, 3}};
    EXPECT_EQ(MMathFunc::mathArea(4, tilted), 10.0);
    EXPECT_EQ(MMathFunc::mathArea(tilted[0], tilted[1], tilted[2]), 5.0);
    EXPECT_EQ(MMathFunc::mathArea2d(tilted[0], tilted[2], tilted[1]), -3.0);
}
