#include "zvi/math/func/MMathFunc.h"

#include "tests/math/Near.h"

#include <algorithm>
#include <numbers>

namespace zvi::lib::test {

namespace {

using Ring = std::vector<Xy>;

int Count(Ring const &ring) {
    return static_cast<int>(ring.size());
}
double (*Points(Ring &ring))[2] {
    return reinterpret_cast<double(*)[2]>(ring.data());
}
double const (*Points(Ring const &ring))[2] {
    return reinterpret_cast<double const(*)[2]>(ring.data());
}

Ring const kSquare = {{0, 0}, {4, 0}, {4, 4}, {0, 4}};
// An L with a reflex corner at (2, 2).
Ring const kCorner = {{0, 0}, {4, 0}, {4, 2}, {2, 2}, {2, 4}, {0, 4}};

Ring Reversed(Ring ring) {
    std::reverse(ring.begin(), ring.end());
    return ring;
}

// A star about the origin with one corner in each of `count` sectors.
Ring Star(int count, double inner, double outer, Random &unit) {
    Ring star;
    for (int i = 0; i < count; ++i) {
        double const angle = (i + unit()) * 2.0 * std::numbers::pi / count, r = inner + (outer - inner) * unit();
        star.push_back({r * std::cos(angle), r * std::sin(angle)});
    }
    return star;
}

double AreaWithSign(Ring const &ring) {
    return MMathFunc::mathArea2d(Count(ring), Points(ring));
}

int IsInside(Xy const &p, Ring const &ring, int closed) {
    return MMathFunc::mathIsInsidePoint2D(p, Count(ring), Points(ring), closed);
}

// By the winding number, the sum of the signed angles at p.
bool IsInsideByAngles(Ring const &ring, Xy const &p) {
    double sum = 0.0;
    for (std::size_t i = 0; i < ring.size(); ++i) {
        Xy const a = ring[i] - p, b = ring[(i + 1) % ring.size()] - p;
        sum += std::remainder(std::atan2(b[1], b[0]) - std::atan2(a[1], a[0]), 2.0 * std::numbers::pi);
    }
    return std::abs(sum) > 3.0;
}

} // namespace

TEST(MMathFuncPolyline, PointBetweenTheEnds) {
    Xy const a{-5, 2}, b{5, 2};
    for (auto const &[p, expected] :
         Rows<Xy, int>("0 2 1; -5 2 7; 5 2.00000000009 7; 5.0000001 2 0; -10 2 0; 0 2.0000000002 1; 0 2.0000000004 0;"
                       "0 3 0; nan 2 0"))
        EXPECT_EQ(MMathFunc::mathIsPointOfLine2D(a, b, p, 7), expected) << p;
    for (auto const &[start, p, tol, expected] :
         Rows<Xy, Xy, double, int>("-5 2  0 2.5  0.5 1; -5 2  0 2.5  0.49 0; -5 2  8 6  4.9 0; 5 2  8 6  5 1"))
        EXPECT_EQ(MMathFunc::mathIncludePointInLine(start, b, p, tol), expected) << p << tol;
}

TEST(MMathFuncPolyline, SegmentsCrossTouchOrMiss) {
    for (
        auto const &[a, b, c, d, expected] : Rows<Xy, Xy, Xy, Xy, int>(
            // Crossing; an end on the other, and on its line beyond it; the same of an upright one.
            "0 0 4 4  0 4 4 0  1; 0 0 4 0  2 0 2 3  0; 0 0 4 0  5 0 5 3  -1; 0 0 0 4  0 4 3 9  0; 0 0 0 4  0 5 3 9  -1;"
            // Collinear: overlapping, end to end, apart; upright: apart, overlapping.
            "0 0 4 0  3 0 9 0  0; 0 0 4 0  4 0 9 0  0; 0 0 4 0  5 0 9 0  -1; 0 0 0 4  0 5 0 9  -1; 0 0 0 4  0 3 0 9  0;"
            // Parallel; on one side only; a single point on a segment and beside it; two of one height.
            "0 0 4 0  0 1 4 1  -1; 0 0 4 0  5 -1 5 1  -1; 2 2 2 2  0 0 4 4  0; 2 1 2 1  0 0 4 4  -1;"
            "2 1 2 1  9 1 9 1  -1"))
        for (auto const &[p, q] : {std::pair{a, b}, {b, a}})
            for (auto const &[r, s] : {std::pair{c, d}, {d, c}}) {
                EXPECT_EQ(MMathFunc::mathIntersect_ccw2D(p, q, r, s), expected) << p << q << r << s;
                EXPECT_EQ(MMathFunc::mathIntersect_ccw2D(r, s, p, q), expected) << p << q << r << s;
            }
}

TEST(MMathFuncPolyline, InsideARing) {
    for (Ring const &ring : {kCorner, Reversed(kCorner)})
        for (auto const &[p, open, closed] : Rows<Xy, int, int>(
                 "1 1 1 1; 3 3 0 0; 1 2 1 1; -1 2 0 0; -1 4 0 0; -1 0 0 0; 4 1 0 1; 2 3 0 1; 0 0 0 1; 2 2 0 1; 3 2 0 1;"
                 "5 2 0 0; 3 1.9999 1 1")) {
            EXPECT_EQ(IsInside(p, ring, 0), open) << p;
            EXPECT_EQ(IsInside(p, ring, 5), closed) << p;
        }
    EXPECT_EQ(IsInside({0, 0}, {}, 1), 0);
    // Within 1e-11 of the edge's length from its end, farther than 1e-10, and level with it.
    Ring const tall = {{0, 0}, {5, 0}, {5, 1000}, {0, 1000}};
    EXPECT_EQ(IsInside({-5e-9, 0}, tall, 1), 1);
    EXPECT_EQ(IsInside({-5e-9, 0}, tall, 0), 0);
    EXPECT_EQ(IsInside({1, 1}, {{0, 0}, {3e11, 0}, {3e11, 4}, {0, 4}}, 1), 1);
}

TEST(MMathFuncPolyline, InsideAgreesWithTheWindingAngle) {
    Random unit(99, 0.0, 1.0);
    for (int run = 0; run < 300; ++run) {
        Ring star = Star(12, 3.0, 15.0, unit);
        for (Xy &corner : star) // whole coordinates, so that rays pass through vertices
            corner = {std::round(corner[0]), std::round(corner[1])};
        Xy const p{std::round(30.0 * unit() - 15.0) + 0.5, std::round(30.0 * unit() - 15.0)};
        bool expected = IsInsideByAngles(star, p);
        for (std::size_t i = 0; i < 12; ++i)
            expected |= MMathFunc::mathIncludePointInLine(star[i], star[(i + 1) % 12], p, 1e-10) != 0;
        EXPECT_EQ(IsInside(p, star, 1), expected) << "run " << run;
    }
}

TEST(MMathFuncPolyline, LinesCross) {
    double const rising[2][2] = {{0, 0}, {1, 1}}, falling[2][2] = {{-1, 5}, {1, 3}};
    double const nearly[2][2] = {{0, 1}, {1, 2.00000000005}}, point[2][2] = {{3, 3}, {3, 3}};
    Xy out{9, 9};
    EXPECT_EQ(MMathFunc::mathLineLineCross2D(rising, falling, out, 0), 1);
    ExpectNear(out, Xy{2, 2}, 1e-14);
    EXPECT_EQ(MMathFunc::mathLineLineCross2D(rising, nearly, out, 0), 0);
    EXPECT_EQ(out, (Xy{0, 0}));
    EXPECT_EQ(MMathFunc::mathLineLineCross2D(rising, nearly, out, 1), 1) << "the strict limit is the smaller one";
    EXPECT_LT(out[0], -1e10);
    EXPECT_EQ(MMathFunc::mathLineLineCross2D(rising, point, out, 1), 0);
    EXPECT_EQ(MMathFunc::mathLineSegCross2D(rising, Xy{0, 5}, Xy{5, 0}, out), 1);
    EXPECT_EQ(MMathFunc::mathLineSegCross2D(rising, Xy{0, 5}, Xy{2, 3}, out), 0);
    ExpectNear(out, Xy{2.5, 2.5}, 1e-14);
}

TEST(MMathFuncPolyline, SideAndDistanceOfALine) {
    Xy const a{1, 2}, b{5, 2};
    int where = -1;
    for (auto const &[p, distance, expected, side] :
         Rows<Xy, double, int, int>("-2 6  4 0 1; 3 1  1 1 0; 10 2  0 2 2; 5 4  2 1 1; 3 0x2.0000004p0  0x1p-26 1 2")) {
        EXPECT_EQ(MMathFunc::mathDistanceFromIntersectPointToLine2D(a, b, p, where), distance) << p;
        EXPECT_EQ(where, expected) << p;
        EXPECT_EQ(MMathFunc::Get2DPointPosByLine(p, a, b), side) << p;
    }
    EXPECT_EQ(MMathFunc::mathDistanceFromIntersectPointToLine2D(a, a, Xy{-2, 6}, where), 5.0);
    EXPECT_EQ(where, 1);
}

TEST(MMathFuncPolyline, BulgeAndCentreBelongTogether) {
    double const chord[2][2] = {{0, 0}, {8, 0}};
    Xy center{};
    for (auto const &[radius, minor, bulge] :
         Rows<double, int, double>("5 1 2; 5 0 8; -5 1 -2; -5 0 -8; 4 1 4; -4 0 -4; 3.9 1 0")) {
        EXPECT_EQ(MMathFunc::GetBulge(chord, radius, minor), bulge) << radius;
        EXPECT_EQ(MMathFunc::GetCenter_Bulge(chord, bulge, center), bulge != 0.0);
        // The unit vector from the second end to the first is (-1, 0): a positive move goes to +y.
        ExpectNear(center, Xy{4.0, bulge == 0.0 ? center[1] : (16.0 - bulge * bulge) / (2.0 * bulge)});
    }
    double const slanted[2][2] = {{7.4, 5.8}, {1, 1}}; // the same length, its left normal (0.6, -0.8)
    EXPECT_EQ(MMathFunc::GetCenter_Bulge(slanted, 2.0, center), 1);
    ExpectNear(center, Xy{4.2 + 3.0 * 0.6, 3.4 - 3.0 * 0.8});
}

TEST(MMathFuncPolyline, WholeNumbersAround) {
    for (auto const &[value, up, down] : Rows<3>("3 3 2; 3.5 4 3; -2.5 -1 -2; 0 0 -1; 1e99 2147483647 2147483647;"
                                                 "-1e99 -2147483648 -2147483648")) {
        int upper = 0, lower = 0;
        EXPECT_EQ(MMathFunc::GetDivideNum(value, upper, lower), 1);
        EXPECT_EQ(upper, up) << value;
        EXPECT_EQ(lower, down) << value;
    }
}

TEST(MMathFuncPolyline, RingsOverlapWhereTheirBoxesMeet) {
    auto const expectOverlap = [](Ring const &a, Ring const &b, int expected) {
        EXPECT_EQ(MMathFunc::IsOverLap_Polyline(Count(a), Points(a), Count(b), Points(b)), expected) << b[0];
        EXPECT_EQ(MMathFunc::IsOverLap_Polyline(Count(b), Points(b), Count(a), Points(a)), expected) << b[0];
    };
    for (auto const &[offset, expected] : Rows<Xy, int>("1 1 1; 4 4 1; 9 0 0; 0 -4.1 0; 1e-16 4 1; 4.0000001 0 0")) {
        Ring moved = kSquare;
        for (Xy &p : moved)
            p = p + offset;
        expectOverlap(kSquare, moved, expected);
    }
    // The closing edge along x = 0 counts a vertex as touching whose double area with it is below 1e-10.
    expectOverlap(kSquare, {{-1e-11, 1}, {-4, 1}, {-4, 3}}, 1);
    expectOverlap({}, kSquare, 0);
}

TEST(MMathFuncPolyline, OffsetRingKeepsItsDistanceAtEveryCorner) {
    // Both rings have a perimeter of 16; moved outward by d, convex and reflex right angles alike, A + P d + 4 d^2.
    for (Ring const &start : {kSquare, kCorner, Reversed(kSquare), Reversed(kCorner)})
        for (double const d : {0.5, -0.5}) {
            Ring ring = start;
            ASSERT_EQ(MMathFunc::mathOffsetOfPolyline(d, Count(ring), Points(ring), 0), 1);
            EXPECT_NEAR(std::abs(AreaWithSign(ring)), std::abs(AreaWithSign(start)) + 16 * d + 4 * d * d, 1e-12);
        }
    Random unit(5, 0.0, 1.0);
    for (int run = 0; run < 200; ++run) {
        Ring const ring = Star(9, 1.0, 10.0, unit);
        Ring moved = ring;
        int const side = 1 + run % 2;
        ASSERT_EQ(MMathFunc::mathOffsetOfPolyline(0.25, 9, Points(moved), side), 1);
        for (std::size_t i = 0; i < 9; ++i)
            for (std::size_t const end : {i, (i + 1) % 9}) {
                Xy const edge = ring[(i + 1) % 9] - ring[i], toEnd = moved[end] - ring[i];
                double const distance = (edge[0] * toEnd[1] - edge[1] * toEnd[0]) / Length(edge);
                EXPECT_NEAR(distance, side == 1 ? -0.25 : 0.25, 1e-9) << "run " << run;
            }
    }
}

TEST(MMathFuncPolyline, RepeatedPointsMoveWithTheirNeighbour) {
    Ring ring = {{7, 1}, {7, 1}, {9, 1}, {9, 4}, {9, 4}, {9, 4}, {7, 4}, {7, 1}, {7, 1}};
    Ring const expected = {{6, 0}, {6, 0}, {10, 0}, {10, 5}, {10, 5}, {10, 5}, {6, 5}, {6, 0}, {6, 0}};
    ASSERT_EQ(MMathFunc::mathOffsetOfPolyline(1.0, Count(ring), Points(ring), -3), 1);
    for (std::size_t i = 0; i < ring.size(); ++i)
        ExpectNear(ring[i], expected[i], 1e-14);
    for (Ring const &bad : {Ring{{0, 0}, {2, 0}, {4, 0}, {4, 4}}, Ring{{0, 0}, {1, 0}}, Ring{{3, 3}, {3, 3}, {3, 3}},
                            Ring{{0, 0}, {4, 0}, {0, 0}, {4, 0}}, Ring{{0, 0}, {4, 0}, {NAN, 3}}}) {
        Ring kept = bad;
        EXPECT_EQ(MMathFunc::mathOffsetOfPolyline(1.0, Count(kept), Points(kept), 0), 0);
        EXPECT_EQ(kept[1], bad[1]) << "a failure leaves the points";
    }
}

TEST(MMathFuncPolyline, CircleAndArcThroughThreePoints) {
    Xy const east{1e6 + 5, 2}, north{1e6, 7}, south{1e6, -3};
    Xy center{7, 7};
    double radius = 7, start = 7, end = 7;
    EXPECT_EQ(MMathFunc::mathCircleForm3Point(north, south, south, center, radius), 0);
    EXPECT_EQ(radius, 7.0);
    // Clockwise from the south over the north is counter-clockwise from the east.
    for (auto const &[first, last] : {std::pair{east, south}, {south, east}}) {
        EXPECT_EQ(MMathFunc::mathArcForm3Point(first, north, last, center, radius, start, end), 1);
        ExpectNear(center, Xy{1e6, 2}, 1e-9);
        EXPECT_NEAR(radius, 5.0, 1e-9);
        EXPECT_NEAR(start, 0.0, 1e-7);
        EXPECT_NEAR(end, 270.0, 1e-7);
    }
}

TEST(MMathFuncPolyline, AreaAndCentroid) {
    Xy out{};
    double area = 0.0;
    // The square 4 x 4 about (2, 2) less the square 2 x 2 about (3, 3).
    for (auto const &[ring, expected] : {std::pair{kCorner, 12.0}, {Reversed(kCorner), -12.0}}) {
        EXPECT_EQ(MMathFunc::mathPolyCentroid(6, Points(ring), out, area), 1);
        EXPECT_EQ(area, expected);
        ExpectNear(out, Xy{5.0 / 3.0, 5.0 / 3.0}, 1e-14);
    }
    Ring const flat = {{0, 0}, {2, 2}, {4, 4}};
    EXPECT_EQ(MMathFunc::mathPolyCentroid(3, Points(flat), out, area), 0);
    EXPECT_EQ(out, (Xy{2, 2}));
    EXPECT_EQ(MMathFunc::mathArea2d(2, Points(flat)), 0.0);
    double const tilted[4][3] = {{1, 2, 3}, {4, 2, 7}, {4, 4, 7}, {1, 4, 3}};
    EXPECT_EQ(MMathFunc::mathArea(4, tilted), 10.0);
    EXPECT_EQ(MMathFunc::mathArea(tilted[0], tilted[1], tilted[2]), 5.0);
    EXPECT_EQ(MMathFunc::mathArea2d(tilted[0], tilted[2], tilted[1]), -3.0);
}

} // namespace zvi::lib::test
