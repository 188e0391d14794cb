#include "zvi/spatial/FindBodyContacts.h"

#include "tests/spatial/Bodies.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <random>
#include <set>

namespace zvi::lib::test {

namespace {

using Point = MVector<double, 3>;

} // namespace

TEST(FindBodyContacts, FindsWhatComparingAllTrianglesFinds) {
    for (double const size : {1.0, 1e-30, 1e30}) {
        std::mt19937 random(21);
        std::uniform_real_distribution<double> place(-20, 20);
        std::normal_distribution<double> side(0, 2);
        std::vector<TriangleBody> bodies(4);
        std::vector<std::pair<int, BodyTriangle>> all;
        for (int i = 0; i < 300; ++i) {
            Point const begin(place(random), place(random), 1e3 + place(random) / 4);
            auto const corner = [&] { return (begin + Point(side(random), side(random), side(random))) * size; };
            all.emplace_back(i % 4, BodyTriangle{corner(), corner(), corner()});
            bodies[static_cast<std::size_t>(i) % 4].push_back(all.back().second);
        }
        double const tolerance = 0.7 * size;
        std::map<std::array<int, 2>, std::uint64_t> pairs;
        std::map<std::array<int, 2>, double> gaps;
        for (auto const &[a, t] : all) {
            for (auto const &[b, u] : all) {
                double const distance = a < b ? DistanceOf(t, u) : HUGE_VAL;
                if (distance > tolerance)
                    continue;
                ++pairs[{a, b}];
                gaps[{a, b}] = std::min(gaps.try_emplace({a, b}, distance).first->second, distance);
            }
        }
        BodyContacts const found = FindBodyContacts(bodies, tolerance);
        ASSERT_EQ(found.contacts.size(), pairs.size()) << size;
        for (BodyContact const &contact : found.contacts) {
            EXPECT_EQ(contact.pairCount, pairs[contact.bodies]) << size;
            EXPECT_EQ(contact.smallestGap, gaps[contact.bodies]);
            Point const d = contact.nearest[0] - contact.nearest[1];
            EXPECT_NEAR(std::hypot(d[0], d[1], d[2]), contact.smallestGap, 1e-12 * size);
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
    BodyContacts const apart = FindBodyContacts({bodies[1], CubeAt({-1.5, 2.125, 0}), bodies[1]}, 0.125);
    ASSERT_EQ(apart.contacts.size(), 3u);
    EXPECT_EQ(apart.contacts[0].patches.size(), 1u);
    EXPECT_EQ(apart.contacts[1].patches.size(), 2u) << "two cubes upon themselves";
}

TEST(FindBodyContacts, AnswersBodiesOfAllKinds) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    EXPECT_TRUE(FindBodyContacts({}, 1).contacts.empty());
    EXPECT_TRUE(FindBodyContacts({{}, {}}, 1).contacts.empty());
    EXPECT_TRUE(FindBodyContacts({CubeAt({0, 0, 0})}, 1).contacts.empty()) << "a body does not touch itself";
    TriangleBody const point = {{Point(1, 1, 1), {1, 1, 1}, {1, 1, 1}}};
    EXPECT_EQ(FindBodyContacts({point, point}, 0).contacts.size(), 1u) << "two points at one place";
    TriangleBody bad = CubeAt({0, 0, 0});
    bad[3][1][2] = kNan;
    EXPECT_EQ(FindBodyContacts({bad, CubeAt({2, 0, 0})}, 0).contacts.size(), 1u);
    for (double const tolerance : {kNan, -1.0})
        EXPECT_TRUE(FindBodyContacts({CubeAt({0, 0, 0}), CubeAt({2, 0, 0})}, tolerance).contacts.empty());
    for (double const tolerance : {1e300, std::numeric_limits<double>::infinity()})
        EXPECT_EQ(FindBodyContacts({CubeAt({0, 0, 0}), CubeAt({9, 0, 0})}, tolerance).contacts[0].pairCount, 144u);
}

} // namespace zvi::lib::test
