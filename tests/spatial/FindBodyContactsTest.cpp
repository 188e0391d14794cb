#include "zvi/spatial/FindBodyContacts.h"

#include "tests/Rows.h"
#include "tests/spatial/Bodies.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <set>

namespace zvi::lib::test {

namespace {

using Point = MVector<double, 3>;

} // namespace

/// Bodies of strewn triangles: of usual size, large, in one plane and only to touch, small beside the tolerance. Sizes
/// are powers of two, so that distances change with them to the last bit.
TEST(FindBodyContacts, FindsThePairsThatASlowSearchFinds) {
    for (auto const &[side, depth, gapWithin, size] : Rows<4>(
             "0.5 10 0.25  1; 0.5 10 0.25  0x1p-100; 0.5 10 0.25  0x1p100; 2 10 0.25  1; 0.5 0 0  1; 0.02 10 1  1")) {
        SCOPED_TRACE(testing::Message() << side << ' ' << size);
        std::mt19937 random(1);
        std::uniform_real_distribution<double> place(0, 10);
        std::normal_distribution<double> away(0, side);
        double const tolerance = gapWithin * size;
        std::vector<TriangleBody> bodies(3);
        std::map<std::array<int, 2>, std::multiset<double>> gaps;
        for (int i = 0; i < 250; ++i) {
            Point const begin(place(random), place(random), depth * place(random) / 10 + 1024);
            BodyTriangle triangle;
            for (Point &p : triangle)
                p = (begin + Point(away(random), away(random), depth > 0 ? away(random) : 0.0)) * size;
            for (int body = 0; body < 3; ++body) {
                for (BodyTriangle const &other : bodies[static_cast<std::size_t>(body)]) {
                    double const gap = DistanceOf(triangle, other);
                    if (body != i % 3 && gap <= tolerance)
                        gaps[{std::min(body, i % 3), std::max(body, i % 3)}].insert(gap);
                }
            }
            bodies[static_cast<std::size_t>(i % 3)].push_back(triangle);
        }
        BodyContacts const found = FindBodyContacts(bodies, tolerance);
        ASSERT_EQ(found.contacts.size(), 3u);
        for (BodyContact const &contact : found.contacts) {
            EXPECT_EQ(contact.pairCount, gaps[contact.bodies].size());
            EXPECT_EQ(contact.smallestGap, *gaps[contact.bodies].begin());
            Point const d = (contact.nearest[0] - contact.nearest[1]) * (1 / size);
            EXPECT_NEAR(std::hypot(d[0], d[1], d[2]), contact.smallestGap / size, 1e-12);
            std::set<int> used;
            for (ContactPatch const &patch : contact.patches) {
                EXPECT_LE(patch.smallestGap, tolerance);
                for (int const triangle : patch.triangles[0])
                    EXPECT_TRUE(used.insert(triangle).second) << "in two patches";
            }
        }
        EXPECT_FALSE(FindBodyContacts(bodies, tolerance, 3).isComplete);
    }
}

TEST(FindBodyContacts, PutsTrianglesThatHangTogetherIntoOnePatch) {
    // The middle cube stands on two others, 0.25 above them; these are far apart.
    std::vector<TriangleBody> bodies = {CubeAt({0, 0, 2.25}), CubeAt({-1.5, 0, 0}), CubeAt({9, 9, 9})};
    for (BodyTriangle const &triangle : CubeAt({1.5, 0, 0}))
        bodies[1].push_back(triangle);
    BodyContacts const found = FindBodyContacts(bodies, 0.25);
    ASSERT_EQ(found.contacts.size(), 1u);
    BodyContact const &contact = found.contacts[0];
    EXPECT_EQ(contact.bodies, (std::array{0, 1}));
    EXPECT_EQ(contact.smallestGap, 0.25);
    ASSERT_EQ(contact.patches.size(), 1u) << "joined by the cube on top";
    EXPECT_EQ(contact.patches[0].areas, (std::array{20.0, 28.0})) << "10 and 14 triangles have a corner or edge there";
    // Specks before two faces of a cube, whose triangles there have a corner in common or none.
    for (auto const &[x, y, z, u, v, w, patches] : Rows<7>(R"(
            1.125 .5 -.5  .5 -.5 1.125  1; 1.125 .5 -.5  -1.125 -.5 .5  2;
            -.5 1.125 .5  .5 -1.125 -.5  2; .5 -.5 1.125  -.5 .5 -1.125  2)")) {
        Point const one(x, y, z), other(u, v, w);
        BodyContacts const apart = FindBodyContacts({CubeAt({}), {{one, one, one}, {other, other, other}}}, 0.125);
        EXPECT_EQ(static_cast<double>(apart.contacts.at(0).patches.size()), patches) << x << ' ' << u;
    }
}

TEST(FindBodyContacts, AnswersBodiesOfAllKinds) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    TriangleBody const cube = CubeAt({}), beside = CubeAt({2, 0, 0}), point = {{Point(1, 1, 1), {1, 1, 1}, {1, 1, 1}}};
    TriangleBody bad = cube;
    bad[3][1][2] = kNan;
    for (auto const &bodies : std::vector<std::vector<TriangleBody>>{{}, {{}, {}}, {cube}})
        EXPECT_TRUE(FindBodyContacts(bodies, 1).contacts.empty()) << "a body does not touch itself";
    for (auto const &bodies : std::vector<std::vector<TriangleBody>>{{point, point}, {bad, beside}})
        EXPECT_EQ(FindBodyContacts(bodies, 0).contacts.size(), 1u);
    for (double const tolerance : {kNan, -1.0})
        EXPECT_TRUE(FindBodyContacts({cube, beside}, tolerance).contacts.empty());
    for (double const tolerance : {1e300, std::numeric_limits<double>::infinity()})
        EXPECT_EQ(FindBodyContacts({cube, CubeAt({9, 0, 0})}, tolerance).contacts[0].pairCount, 144u);
}

} // namespace zvi::lib::test
