#include "zvi/spatial/MPntOcTree.h"
#include "zvi/spatial/MPntOcNode.h"
#include "zvi/spatial/MPntOcUtil.h"
#include "zvi/spatial/points/PointClusterDetail.h"

#include "tests/FailingMemory.h"

#include <gtest/gtest.h>

#include <algorithm>
#include <cmath>
#include <limits>
#include <map>
#include <memory>
#include <random>
#include <vector>

namespace zvi::lib::test {

namespace {

using Point = MVector<double, 3>;
using Keys = std::vector<std::uint64_t>;

/// The tree by its rules and nothing else: everything is looked for anew at each step.
struct SlowNode {
    Point center;
    double half;
    std::size_t capacity;
    SlowNode *parent = nullptr;
    int level = 0;
    std::vector<std::unique_ptr<SlowNode>> children = {};
    std::vector<std::pair<std::uint64_t, Point>> points = {};

    std::size_t ChildOf(Point const &p) const {
        return std::size_t(p[0] >= center[0]) + 2 * std::size_t(p[1] >= center[1]) + 4 * std::size_t(p[2] >= center[2]);
    }
    bool Meets(Point const &low, Point const &high) const {
        Point const reach(half, half, half);
        return MPntOcUtil::IsCollisionAABB(center - reach, center + reach, low, high) != 0;
    }
    bool Separates(Point const &p) const {
        double const limit = std::sqrt(3 * (2 * half) * (2 * half)) / 20;
        return std::any_of(points.begin(), points.end(), [&](auto const &each) {
            Point const d = each.second - p;
            return ChildOf(each.second) != ChildOf(p) || std::sqrt(d[0] * d[0] + d[1] * d[1] + d[2] * d[2]) >= limit;
        });
    }
    void Insert(std::uint64_t key, Point const &p) {
        if (children.empty() && (points.size() < capacity || level == MPntOcNode::kDeepestLevel || !Separates(p))) {
            points.emplace_back(key, p);
            return;
        }
        if (children.empty()) {
            for (unsigned i = 0; i < 8; ++i) {
                Point const side((i & 4) ? half / 2 : -half / 2, (i & 2) ? half / 2 : -half / 2,
                                 (i & 1) ? half / 2 : -half / 2);
                children.push_back(
                    std::make_unique<SlowNode>(SlowNode{center + side, half / 2, capacity, this, level + 1}));
            }
            for (auto const &[each, place] : std::exchange(points, {}))
                children[ChildOf(place)]->Insert(each, place);
        }
        children[ChildOf(p)]->Insert(key, p);
    }
    bool Delete(std::uint64_t key, Point const &p) {
        if (!Meets(p, p))
            return false;
        if (!children.empty())
            return children[ChildOf(p)]->Delete(key, p);
        if (std::erase_if(points, [key](auto const &each) { return each.first == key; }) == 0)
            return false;
        if (points.empty() && parent)
            parent->Merge();
        return true;
    }
    void Merge() {
        bool const isEmpty =
            std::all_of(children.begin(), children.end(), [](auto const &c) { return c->points.empty(); });
        if (children.empty() || !isEmpty)
            return;
        children.clear();
        if (parent)
            parent->Merge();
    }
    void List(Point const &low, Point const &high, Keys &keys) const {
        for (auto const &child : children) {
            if (child->Meets(low, high))
                child->List(low, high, keys);
        }
        for (auto const &[key, p] : points) {
            if (MPntOcUtil::IsContained(low, high, p) != 0)
                keys.push_back(key);
        }
    }
};

Keys KeysOf(MList<MPntOcData *> const &list) {
    Keys keys;
    for (MPntOcData const *point : list)
        keys.push_back(point->key);
    return keys;
}

Keys InBox(MPntOcTree const &tree, Point const &low, Point const &high) {
    MList<MPntOcData *> list;
    tree.GetListInBox(low, high, list);
    return KeysOf(list);
}

} // namespace

/// Points of all kinds, many of them alike, outside or handed to cubes that do not hold them; the order counts.
TEST(MPntOcTree, DoesWhatItsRulesSay) {
    for (unsigned const seed : {1u, 2u, 3u, 4u, 5u}) {
        SCOPED_TRACE(seed);
        std::mt19937 random(seed);
        std::size_t const capacity = seed + 1;
        MPntOcTree tree({1, 2, 3}, 8, static_cast<long>(capacity));
        SlowNode slow{{1, 2, 3}, 8, capacity};
        std::map<std::uint64_t, Point> present;
        auto const coordinate = [&random, seed](double center) {
            double const fine = static_cast<double>(random() % 1000) / 100 - 5;
            return center + (seed % 2 == 0 ? std::round(fine) : fine) * (random() % 40 == 0 && seed != 5 ? 3 : 1);
        };
        for (int step = 0; step < 1500; ++step) {
            Point p(coordinate(1), coordinate(2), coordinate(3));
            if (seed == 3)
                p = {1 + p[1] * 1e-3, 2.5, 3.5}; // a cluster beside the centre
            if (seed == 5)
                p[2] = p[0] + 2; // the halves of x and z agree, so that nothing is missed
            std::uint64_t const key = random() % 900 + (std::uint64_t{1} << 40);
            bool const isNew = present.emplace(key, p).second;
            EXPECT_EQ(tree.Insert(key, p), isNew ? 1 : 0);
            if (isNew)
                slow.Insert(key, p);
            std::uint64_t const gone = random() % 900 + (std::uint64_t{1} << 40);
            if (step % 2 == 0 && seed != 5) {
                bool const isThere = present.contains(gone) && slow.Delete(gone, present[gone]);
                EXPECT_EQ(tree.Delete(gone), isThere ? 1 : 0);
                if (isThere)
                    present.erase(gone);
            }
            EXPECT_EQ(tree.Exist(gone), present.contains(gone) ? 1 : 0);
            Keys expected;
            slow.List(p - Point(2, 2, 2), p + Point(2, 2, 2), expected);
            MList<MPntOcData *> near;
            EXPECT_EQ(tree.GetListNearestPnt(p, 2, near), static_cast<long>(expected.size()));
            EXPECT_EQ(KeysOf(near), expected);
            auto const isNear = [&p](auto const &each) {
                return MPntOcUtil::IsContained(p - Point(2, 2, 2), p + Point(2, 2, 2), each.second) != 0;
            };
            EXPECT_TRUE(seed != 5 || std::count_if(present.begin(), present.end(), isNear) == std::ssize(expected));
        }
        EXPECT_TRUE(tree.IsConsistent());
        tree.Clear();
        EXPECT_EQ(tree.Insert(1, {1, 2, 3}) + tree.Delete(1) + tree.Exist(1), 0) << "nothing follows the end";
        EXPECT_TRUE(InBox(tree, {-99, -99, -99}, {99, 99, 99}).empty() && tree.IsConsistent());
    }
}

TEST(MPntOcTree, GoesOnWithWhatItHasAfterAShortageOfMemory) {
    if (!FailingMemory::IsPossible())
        GTEST_SKIP() << "a program cannot make the library's allocations fail on this host or in this build";
    auto const all = [](MPntOcTree const &tree) { return InBox(tree, {-9, -9, -9}, {9, 9, 9}); };
    auto const fill = [&all](MPntOcTree &tree) {
        for (std::uint64_t key = 0; key < 120; ++key) {
            double const k = static_cast<double>(key);
            tree.Insert(key, key % 4 == 0 ? Point(k / 64, 1e-3 * k, k / 64) : Point(k / 40, k / 50, k / 40));
            if (key % 3 == 0)
                tree.Delete(key / 2);
        }
        all(tree);
    };
    WorkInShortages<std::unique_ptr<MPntOcTree>>(
        [&fill](std::unique_ptr<MPntOcTree> &tree) {
            if (tree)
                fill(*tree);
            EXPECT_TRUE(!tree || tree->IsConsistent());
            tree = std::make_unique<MPntOcTree>(4.0, 3);
            fill(*tree);
        },
        [&all](std::unique_ptr<MPntOcTree> const &tree) { return std::pair(all(*tree), tree->IsConsistent()); });
}

TEST(MPntOcTree, MissesAPointOfAChildThatDoesNotHoldIt) {
    MPntOcTree tree(2, 2);
    tree.Insert(1, {1, -1, -1});
    tree.Insert(2, {1, 1, 1});
    EXPECT_EQ(InBox(tree, {1, -1, -1}, {1, -1, -1}), Keys{1});
    tree.Insert(3, {-1, -1, -1});
    EXPECT_EQ(InBox(tree, {1, -1, -1}, {1, -1, -1}), Keys{});
    EXPECT_EQ(tree.Delete(1), 0);
    EXPECT_EQ(tree.Delete(2) + tree.Delete(3), 2);
    EXPECT_TRUE(tree.IsConsistent());
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
            EXPECT_TRUE(tree.IsConsistent()) << half << ' ' << capacity;
            InBox(tree, {kNan, 0, 0}, {1, 1, 1});
            InBox(tree, {-kInfinity, -kInfinity, -kInfinity}, {kInfinity, kInfinity, kInfinity});
            while (key-- > 0)
                tree.Delete(key);
            EXPECT_TRUE(tree.IsConsistent()) << half << ' ' << capacity;
        }
    }
}

} // namespace zvi::lib::test
