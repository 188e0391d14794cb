#include "zvi/math/free/TriangleDistance.h"

#include "tests/Rows.h"

#include "zvi/core/MVector.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <limits>
#include <random>

namespace zvi::lib::test {

namespace {

using Point = MVector<double, 3>;
using Corners = std::array<Point, 3>;

double Distance(Corners const &t, Corners const &u, Point &onFirst, Point &onSecond) {
    return distance_triangles_3d(t[0].Data(), t[1].Data(), t[2].Data(), u[0].Data(), u[1].Data(), u[2].Data(),
                                 onFirst.Data(), onSecond.Data());
}

double Norm(Point const &p) {
    return std::sqrt(p[0] * p[0] + p[1] * p[1] + p[2] * p[2]);
}

constexpr int kParts = 16;

/// The smallest distance of places strewn evenly over both.
double SampledDistance(Corners const &t, Corners const &u) {
    auto const placeOn = [](Corners const &c, int i, int j) {
        return c[0] + (c[1] - c[0]) * (double(i) / kParts) + (c[2] - c[0]) * (double(j) / kParts);
    };
    double smallest = std::numeric_limits<double>::infinity();
    for (int i = 0; i <= kParts; ++i) {
        for (int j = 0; j <= kParts - i; ++j) {
            for (int k = 0; k <= kParts; ++k) {
                for (int l = 0; l <= kParts - k; ++l)
                    smallest = std::min(smallest, Norm(placeOn(t, i, j) - placeOn(u, k, l)));
            }
        }
    }
    return smallest;
}

} // namespace

/// Against the triangle (0 0 0) (4 0 0) (0 4 0).
TEST(TriangleDistance, IsTheSmallestInEveryCase) {
    Corners const base = {Point(0, 0, 0), {4, 0, 0}, {0, 4, 0}};
    for (auto const &[ax, ay, az, bx, by, bz, cx, cy, cz, expected] : Rows<10>(R"(
            1 1 3   2 1 5  1 2 5   3;  1 1 -2  1 1 -2  1 1 -2  2;  -3 -4 0  -5 -6 1  -5 -6 -1  5;
            1 1 -1  1 1 1  9 9 9   0;  1 1 0  2 1 0  1 2 0  0;  -9 -9 0  30 -9 0  -9 30 0  0;
            4 4 0   9 4 0  4 9 0   2.8284271247461903;  -1 2 -1  -1 2 1  -9 2 0  1;  4 0 0  8 0 0  8 0 1  0;
            2 -1 -5 2 -1 5 2 -9 0  1;  1 1 2  3 3 2  5 5 2  2;  2 2 0  9 9 0  9 9 1  0;
            -1 1 2  5 1 2  2 1 9   2;  1 1 0  1 1 5  1 1 9  0;  7 4 0  7 4 0  7 4 0  4.949747468305833)")) {
        for (int turn = 0; turn < 3; ++turn) {
            Corners other = {Point(ax, ay, az), {bx, by, bz}, {cx, cy, cz}};
            std::rotate(other.begin(), other.begin() + turn, other.end());
            Point p, q;
            EXPECT_DOUBLE_EQ(Distance(base, other, p, q), expected) << ax << ' ' << ay << ' ' << az;
            EXPECT_NEAR(Norm(p - q), expected, 1e-14);
            EXPECT_DOUBLE_EQ(Distance(other, base, q, p), expected) << "the other way round";
            EXPECT_NEAR(Norm(p - q), expected, 1e-14);
        }
    }
}

TEST(TriangleDistance, IsWhatSamplesOfBothComeNearTo) {
    constexpr unsigned kSeed = 17;
    SCOPED_TRACE(kSeed);
    std::mt19937 random(kSeed);
    std::normal_distribution<double> place(0, 1);
    int apart = 0;
    for (int i = 0; i < 400; ++i) {
        Corners t, u;
        Point const shift(place(random) * 1.5, place(random) * 1.5, 0);
        for (std::size_t corner = 0; corner < 3; ++corner) {
            t[corner] = {place(random), place(random), place(random)};
            u[corner] = shift + Point(place(random), place(random), place(random) * (i % 4 == 0 ? 1e-9 : 1));
        }
        if (i % 7 == 0)
            u[2] = u[0] + (u[1] - u[0]) * 0.3; // a segment
        double step = 0;
        for (std::size_t corner = 0; corner < 3; ++corner)
            step = std::max({step, Norm(t[corner] - t[(corner + 1) % 3]), Norm(u[corner] - u[(corner + 1) % 3])});
        Point p, q;
        double const distance = Distance(t, u, p, q);
        double const sampled = SampledDistance(t, u);
        EXPECT_LE(distance, sampled + 1e-12) << i;
        EXPECT_GE(distance, sampled - 2 * step / kParts) << i;
        EXPECT_NEAR(Norm(p - q), distance, 1e-12) << i;
        apart += distance > 0 ? 1 : 0;
    }
    EXPECT_GT(apart, 100);
    EXPECT_LT(apart, 390);
}

TEST(TriangleDistance, TellsWhatIsNoNumber) {
    Point p, q;
    for (double const bad : {std::numeric_limits<double>::quiet_NaN(), std::numeric_limits<double>::infinity()}) {
        EXPECT_TRUE(std::isnan(Distance({Point(0, bad, 0), {}, {}}, {}, p, q)) && std::isnan(p[0]) && std::isnan(q[2]));
    }
    EXPECT_EQ(Distance({Point(-1e300, 0, 0), {}, {}}, {Point(1e300, 1e300, 0), {1e300, 0, 0}, {9e299, 0, 0}}, p, q),
              std::numeric_limits<double>::infinity());
}

} // namespace zvi::lib::test
