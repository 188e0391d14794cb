#include "zvi/spatial/MPntOcTree.h"
#include "zvi/spatial/points/PointClusterDetail.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <random>
#include <vector>

namespace zvi::lib::test {

namespace {

using Point = MVector<double, 3>;
using Keys = std::vector<std::uint64_t>;

Keys InBox(MPntOcTree const &tree, Point const &low, Point const &high) {
    MList<MPntOcData *> list;
    tree.GetListInBox(low, high, list);
    Keys keys;
    for (MPntOcData const *point : list)
        keys.push_back(point->key);
    return keys;
}

} // namespace

TEST(MPntOcTree, MissesAPointOfAChildThatDoesNotHoldIt) {
    MPntOcTree tree({1, 2, 3}, 2, 2);
    EXPECT_EQ(tree.Insert(1, {2, 1, 2}) + tree.Insert(2, {3, 4, 5}) + tree.Insert(2, {2, 2, 2}), 2);
    tree.Insert(3, {-1, 0, 1});
    EXPECT_TRUE(InBox(tree, {2, 1, 2}, {2, 1, 2}).empty());
    MList<MPntOcData *> list;
    EXPECT_EQ(tree.GetListNearestPnt({1, 2, 3}, 2, list), 3) << "corners count, and here the children are met";
    EXPECT_EQ(tree.Delete(1), 0);
    EXPECT_EQ(tree.Exist(1) + tree.Delete(2) + tree.Delete(3), 3);
    tree.Clear();
    EXPECT_EQ(tree.Insert(1, {1, 2, 3}) + tree.Delete(1) + tree.Exist(1), 0) << "nothing follows the end";
    EXPECT_TRUE(InBox(tree, {-99, -99, -99}, {99, 99, 99}).empty() && tree.IsConsistent());
}

/// The square root of 12, divided by 20. What a child holds that does not contain it is found in a leaf alone.
TEST(MPntOcTree, SplitsForAPointThatIsATwentiethOfTheDiagonalAway) {
    for (double const apart : {0.1732, 0.1733}) {
        MPntOcTree tree(1, 2);
        for (std::uint64_t const key : {1U, 2U, 3U})
            tree.Insert(key, {key == 3 ? 0.5 + apart : 0.5, 0.5, -0.5});
        EXPECT_EQ(InBox(tree, {0.5, 0.5, -0.5}, {0.5, 0.5, -0.5}).size(), apart < 0.17320508 ? 2U : 0U);
    }
}

/// Squares of the small distances have few bits or none.
TEST(PointCluster, CallsNothingNearThatIsNot) {
    for (double const scale : {1.0, 1e153, 1e-160, 1e-161, 1e-162, 1e-163}) {
        std::mt19937 random(8);
        std::uniform_real_distribution<double> place(-scale, scale);
        auto const point = [&] { return Point(place(random), place(random), place(random)); };
        for (int round = 0; round < 500; ++round) {
            MArray<Point> points{point(), point()};
            spatial::PointCluster cluster(0, points);
            points.PushBack(point());
            cluster.Add(points[2]);
            Point const query = point() + point();
            double farthest = 0;
            for (Point const &p : points)
                farthest = std::max(farthest, spatial::Distance(p, query));
            EXPECT_FALSE(cluster.IsNear(query, farthest)) << scale;
            EXPECT_TRUE(cluster.IsNear(query, 4 * farthest + 2e-161));
        }
    }
}

TEST(MPntOcTree, StandsBadCubesAndPoints) {
    constexpr double kNan = std::numeric_limits<double>::quiet_NaN();
    constexpr double kInfinity = std::numeric_limits<double>::infinity();
    for (double const half : {0.0, -1.0, kNan, kInfinity, 1e308, 1e-308}) {
        for (long const capacity : {-5L, 0L, 1L, 3L, std::numeric_limits<long>::max()}) {
            MPntOcTree tree(half, capacity);
            std::uint64_t key = 0;
            for (double const x : {0.0, kNan, kInfinity, -kInfinity, 1e300, 1e300, 0.0, 1.0, kNan, -kInfinity, 2e300})
                EXPECT_EQ(tree.Insert(key++, {x, 1.0, x}), 1);
            InBox(tree, {kNan, 0, 0}, {1, 1, 1});
            InBox(tree, {-kInfinity, -kInfinity, -kInfinity}, {kInfinity, kInfinity, kInfinity});
            for (; key > 0; tree.Delete(--key))
                EXPECT_TRUE(tree.IsConsistent()) << half << ' ' << capacity;
        }
    }
}

} // namespace zvi::lib::test
