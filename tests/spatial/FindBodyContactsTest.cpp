#include "zvi/spatial/FindBodyContacts.h"

#include "tests/spatial/Bodies.h"

#include <gtest/gtest.h>

#include <limits>

namespace zvi::lib::test {

namespace {

using Point = MVector<double, 3>;

} // namespace

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
