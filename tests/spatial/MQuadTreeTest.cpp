#include "zvi/spatial/MQuadTree.h"

#include "zvi/host/CDC.h"

#include <gtest/gtest.h>

#include <cmath>
#include <limits>
#include <memory>
#include <string>
#include <vector>

namespace zvi::lib::test {

namespace {

MQuadMBR2D Point(double x, double y) {
    return {x, y, x, y};
}

void ExpectRegion(MQuadMBR2D const &region, MQuadMBR2D const &expected) {
    EXPECT_EQ(region.minX, expected.minX);
    EXPECT_EQ(region.minY, expected.minY);
    EXPECT_EQ(region.maxX, expected.maxX);
    EXPECT_EQ(region.maxY, expected.maxY);
}

using Keys = std::vector<unsigned int>;

Keys Hits(MQuadTree const &tree, MQuadMBR2D const &query, int strict = 0) {
    MList<MQuadObj *> list;
    int const count = tree.GetIntersectObjList(query, list, strict);
    EXPECT_EQ(static_cast<std::uint64_t>(count), list.GetCount());
    Keys keys;
    for (MQuadObj *object : list)
        keys.push_back(object->GetKey());
    return keys;
}

MQuadObj ObjectAt(double x, double y, unsigned int key = 0) {
    MQuadObj object;
    MQuadMBR2D mbr = Point(x, y);
    object.SetMBR(mbr);
    object.SetKey(key);
    return object;
}

/// A class that computes its rectangle.
struct MovingObject : MQuadObj {
    MQuadMBR2D &GetMBR() override {
        m_mbr = Point(position, 0.0);
        return m_mbr;
    }
    double position = 5.0;
};

struct Picture : CDC {
    void *SelectHollowBrush() override {
        text += '<';
        return this;
    }
    void SelectBrush(void *brush) override { text += brush == this ? '>' : '?'; }
    void Rectangle(int x1, int y1, int x2, int y2) override {
        text += std::to_string(x1) + ',' + std::to_string(y1) + ',' + std::to_string(x2) + ',' + std::to_string(y2);
    }
    std::string text;
};

} // namespace

TEST(MQuadMBR2D, ToleranceAndHalfOpenEdges) {
    MQuadMBR2D const unit{0, 0, 1, 1};
    struct Row {
        MQuadMBR2D other;
        int loose, strict;
    };
    Row const rows[] = {
        {{0.5, 0.5, 2, 2}, 1, 1},    {{1, 0, 2, 1}, 1, 0},         {{1 + 5e-7, 0, 2, 1}, 1, 0},
        {{1 + 2e-6, 0, 2, 1}, 0, 0}, {{-1, -1, -5e-7, 0.5}, 1, 0}, {{0, -1, 1, 2e-9}, 1, 1},
        {{0, -1, 1, 5e-10}, 1, 0},   {{-2, -2, -1, -1}, 0, 0},
    };
    for (Row const &row : rows) {
        EXPECT_EQ(unit.Intersect4QT(row.other, 0), row.loose) << row.other.minX << ' ' << row.other.maxY;
        EXPECT_EQ(unit.Intersect4QT(row.other, 1), row.strict) << row.other.minX << ' ' << row.other.maxY;
        EXPECT_EQ(row.other.Intersect4QT(unit, 1), row.strict);
    }
    EXPECT_EQ(Point(0, 0).IsContained4QT(unit), 1);
    EXPECT_EQ((MQuadMBR2D{0, 0, 1, 0.5}).IsContained4QT(unit), 0);
    EXPECT_EQ(unit.DoesContain4QT({0, 0}), 1);
    EXPECT_EQ(unit.DoesContain4QT({0.5, 1}), 0);
}

TEST(MQuadObj, TypeKeepsTwentyEightBits) {
    MQuadObj object;
    EXPECT_EQ(object.GetType(), -1);
    for (int const type : {0, 7, -7, (1 << 27) - 1, -(1 << 27)}) {
        object.SetType(type);
        EXPECT_EQ(object.GetType(), type);
    }
    object.SetType(1 << 27);
    EXPECT_EQ(object.GetType(), -(1 << 27));
    ExpectRegion(object.GetMBR(), {0, 0, 0, 0});
    EXPECT_EQ(MQuadObj(object).GetType(), -(1 << 27));
}

TEST(MQuadTree, RegionStartsAroundTheFirstObjectAndGrows) {
    MQuadTree tree;
    EXPECT_EQ(tree.GetRoot(), nullptr);
    EXPECT_EQ(tree.FindNode({0, 0}), nullptr);
    struct Row {
        MQuadMBR2D object, region;
    };
    // The maximum edge is not of the region: margin 25 beyond the object, then squared upward.
    Row const rows[] = {{Point(10, 20), {-40, -30, 60, 70}},
                        {Point(60, 0), {-40, -30, 85, 95}},
                        {Point(-40, -30), {-40, -30, 85, 95}},
                        {Point(-41, 0), {-72.25, -62.25, 85, 95}}};
    for (Row const &row : rows) {
        EXPECT_EQ(tree.Insert(static_cast<unsigned int>(&row - rows), row.object), 1);
        ExpectRegion(tree.GetRoot()->GetRegion(), row.region);
    }
    EXPECT_EQ(tree.FindNode({85, 0}), nullptr);
    EXPECT_EQ(tree.FindNode({84, 0})->GetCount(), 4);
}

TEST(MQuadTree, AClusterDoesNotSplit) {
    MQuadTree tree;
    for (unsigned int key = 0; key < 1000; ++key)
        EXPECT_EQ(tree.Insert(key, Point(10 + 0.001 * key, 20)), 1);
    EXPECT_TRUE(tree.GetRoot()->IsLeaf());
    // A diagonal of 141.4 is divided by 20: what lies 7.1 away splits the leaf, though it goes to the same quadrant.
    EXPECT_EQ(tree.Insert(1000U, Point(10 + 7.0, 20)), 1);
    EXPECT_TRUE(tree.GetRoot()->IsLeaf());
    EXPECT_EQ(tree.Insert(1001U, Point(10 + 7.2, 20)), 1);
    EXPECT_FALSE(tree.GetRoot()->IsLeaf());
    EXPECT_EQ(Hits(tree, {-40, -30, 60, 70}).size(), 1002U);
}

TEST(MQuadTree, KeysAreUnique) {
    MQuadTree tree;
    EXPECT_EQ(tree.Delete(7U), 0);
    EXPECT_EQ(tree.Insert(7U, 3, Point(0, 0)), 1);
    EXPECT_EQ(tree.Insert(7U, Point(50, 50)), 0);
    EXPECT_EQ(Hits(tree, {-1, -1, 1, 1}), Keys{7});
    EXPECT_EQ(tree.Exist(7U), 1);
    EXPECT_EQ(tree.Delete(7U), 1);
    EXPECT_EQ(tree.Exist(7U), 0);
    tree.Clear();
    EXPECT_EQ(tree.GetRoot(), nullptr);
    EXPECT_EQ(tree.Insert(7U, Point(50, 50)), 1);
    ExpectRegion(tree.GetRoot()->GetRegion(), {0, 0, 100, 100});
}

TEST(MQuadTree, TypesBeyondTheArrayAreNotWanted) {
    MQuadTree tree;
    tree.Insert(1U, 1, Point(2, 0));
    tree.Insert(9U, 1000, Point(2, 0));
    tree.Insert(10U, Point(2, 0)); // of no type
    MList<MQuadObj *> list;
    EXPECT_EQ(tree.GetIntersectObjList({0, 0, 10, 10}, list, {0, 1}, 0), 1);
    EXPECT_EQ(list.GetHead()->element->GetType(), 1);
}

TEST(MQuadTree, ObjectsMayMoveWhileTheyAreInTheTree) {
    MQuadTree tree(100, 100, 2);
    std::vector<MQuadObj> objects;
    for (unsigned int i = 0; i < 40; ++i)
        objects.push_back(ObjectAt(10 * (i % 8), 10 * (i / 8), i));
    for (MQuadObj &object : objects)
        ASSERT_EQ(tree.Insert(&object), 1);
    // By a set rectangle, by a reference, and by assignment: within the node's region a query finds the new place.
    MQuadMBR2D moved = Point(1, 1);
    objects[0].SetMBR(moved);
    MQuadMBR2D &held = objects[9].GetMBR();
    held = Point(11, 11);
    objects[18] = ObjectAt(21, 21, 18);
    EXPECT_EQ(Hits(tree, Point(0, 0)), Keys{});
    EXPECT_EQ(Hits(tree, {0.5, 0.5, 1, 1}), Keys{0});
    EXPECT_EQ(Hits(tree, {10.5, 10.5, 11, 11}), Keys{9});
    EXPECT_EQ(Hits(tree, {20.5, 20.5, 21, 21}), Keys{18});
    // Far off but within the root region: the full search finds it. Beyond the root region it stays.
    held = Point(70, 40);
    EXPECT_EQ(tree.Delete(&objects[9]), 1);
    EXPECT_EQ(tree.Delete(&objects[9]), 0);
    held = Point(0, 0);
    EXPECT_EQ(tree.Insert(&objects[9]), 1);
    held = Point(1e6, 0);
    EXPECT_EQ(tree.Delete(&objects[9]), 0);
    held = Point(30, 30);
    EXPECT_EQ(tree.Delete(&objects[9]), 1);
}

TEST(MQuadTree, AnObjectThatComputesItsRectangleIsAskedEachTime) {
    MovingObject object;
    object.SetKey(1);
    MQuadTree tree;
    EXPECT_EQ(tree.Insert(&object), 1);
    object.position = 8.0;
    EXPECT_EQ(Hits(tree, Point(5, 0)), Keys{});
    EXPECT_EQ(Hits(tree, Point(8, 0)), Keys{1});
    EXPECT_EQ(tree.Delete(&object), 1);
}

TEST(MQuadTree, AnObjectInsertedTwiceIsInTwoPlaces) {
    MQuadTree tree(100, 100, 2);
    MQuadTree other;
    MQuadObj object = ObjectAt(3, 3, 5);
    EXPECT_EQ(tree.Insert(&object), 1);
    EXPECT_TRUE(tree.IsConsistent());
    EXPECT_EQ(tree.Insert(&object), 1);
    EXPECT_EQ(other.Insert(&object), 1);
    EXPECT_FALSE(tree.IsConsistent());
    EXPECT_EQ(Hits(tree, Point(3, 3)), (Keys{5, 5}));
    for (int const isThere : {1, 1, 0})
        EXPECT_EQ(tree.Delete(&object), isThere);
    EXPECT_EQ(Hits(other, Point(3, 3)), Keys{5});
}

TEST(MQuadTree, ObjectsAndTreesMayGoInAnyOrder) {
    auto tree = std::make_unique<MQuadTree>(100, 100, 2);
    auto first = std::make_unique<MQuadObj>(ObjectAt(1, 1));
    MQuadObj second = ObjectAt(20, 20);
    MQuadObj third = ObjectAt(40, 40);
    for (MQuadObj *object : {first.get(), &second, &third})
        tree->Insert(object);
    first.reset();
    tree->Clear();
    second.GetMBR() = Point(2, 2);
    EXPECT_EQ(tree->Insert(&second), 1);
    EXPECT_EQ(tree->Insert(&third), 1);
    tree.reset();
    third.GetMBR() = Point(2, 2);
    second = third;
}

TEST(MQuadTree, AKeyWhoseObjectWasMovedOutOfTheRegionGoesAllTheSame) {
    MQuadTree tree;
    tree.Insert(1U, Point(0, 0));
    tree.Insert(2U, Point(1, 1));
    MList<MQuadObj *> list;
    tree.GetIntersectObjList(Point(0, 0), list, 0);
    list.GetHead()->element->GetMBR() = Point(1e9, 0);
    EXPECT_EQ(tree.Delete(1U), 0);
    EXPECT_EQ(tree.Exist(1U), 0);
    EXPECT_EQ(Hits(tree, {-1e10, -1e10, 1e10, 1e10}), Keys{2});
}

TEST(MQuadTree, BadNumbersAreRefusedAndHugeOnesEnd) {
    double const nan = std::numeric_limits<double>::quiet_NaN();
    MQuadTree tree;
    EXPECT_EQ(tree.Insert(1U, Point(nan, 0)), 0);
    EXPECT_EQ(tree.Insert(1U, {0, 0, std::numeric_limits<double>::infinity(), 0}), 0);
    EXPECT_EQ(tree.Exist(1U), 0);
    EXPECT_EQ(tree.Insert(nullptr), 0);
    MQuadTree flat(0, 0, 1);
    EXPECT_EQ(flat.Insert(1U, {0, 0, 1, 0}), 1);
    EXPECT_EQ(flat.Insert(2U, {0, 5, 1, 5}), 0);
    for (int const capacity : {0, 1, 128}) {
        MQuadTree huge(100, 100, capacity);
        MQuadTree tiny(1e-200, 1e-200, capacity);
        for (unsigned int key = 0; key < 300; ++key) {
            huge.Insert(key, Point(key % 2 == 0 ? 1e20 : -1e20, key % 3 == 0 ? 1e308 : -1e308));
            EXPECT_EQ(tiny.Insert(key, Point(0, 0)), 1);
        }
    }
    EXPECT_EQ(tree.Insert(5U, Point(0, 0)), 1);
    EXPECT_EQ(Hits(tree, {nan, nan, nan, nan}), Keys{5});
}

TEST(MQuadNode, AnswersNullAndDistributesNothingFromALeaf) {
    MQuadNode node;
    EXPECT_EQ(node.Insert(nullptr), -1);
    EXPECT_EQ(node.Insert(nullptr, Point(1, 1)), -1);
    EXPECT_EQ(node.InsertWithMBR(nullptr, Point(1, 1)), -1);
    EXPECT_EQ(node.Delete(nullptr), -1);
    node.Draw(nullptr);
    MQuadObj object = ObjectAt(1, 1);
    EXPECT_EQ(node.Insert(&object), 0);
    node.Distribute();
    EXPECT_EQ(node.GetPool().GetCount(), 1);
}

TEST(MQuadTree, RegionsWithoutAMeasureHideNothingAndAddNothing) {
    // A point takes no room here, so that the second rectangle makes the region anew.
    MQuadTree flat(0, 0, 128);
    flat.Insert(1U, Point(5, 5));
    flat.Insert(2U, {0, 0, 8, 8});
    EXPECT_EQ(Hits(flat, {0.5, 0.5, 2, 2}), Keys{2});
    EXPECT_EQ(Hits(flat, {4, 4, 6, 6}, 1), (Keys{1, 2}));
    // Wider than the largest number.
    MQuadTree wide;
    wide.Insert(1U, {-1e308, -1e308, 1e308, 1e308});
    wide.Insert(2U, Point(9e307, 9e307));
    EXPECT_EQ(Hits(wide, {8.2e307, 8.2e307, 8.5e307, 8.5e307}), Keys{1});
    EXPECT_EQ(Hits(wide, {8.2e307, 8.2e307, 9.5e307, 9.5e307}), (Keys{1, 2}));
}

/// Points at halved distances from one place lie one level below each other, and a query at that place meets one child
/// alone on all the way down.
TEST(MQuadTree, FindsWhatLiesManyLevelsDown) {
    constexpr unsigned int kCount = 30;
    MQuadTree tree(1000, 1000, 1);
    for (unsigned int key = 0; key < kCount; ++key) {
        double const x = 300 + std::ldexp(200.0, -static_cast<int>(key));
        ASSERT_EQ(tree.Insert(key, {x, 301, x, 301}), 1);
    }
    int depth = 0;
    for (MQuadNode const *node = tree.GetRoot(); !node->IsLeaf(); ++depth)
        node = node->GetChild(node->GetChildNodeIndexContainingPoint({300, 301}));
    EXPECT_GT(depth, 20);
    for (unsigned int k = 0; k < 18; ++k)
        EXPECT_EQ(Hits(tree, {300, 301, 300 + std::ldexp(200.0, -static_cast<int>(k)), 301}).size(), kCount - k);
    for (unsigned int key = 0; key < kCount; ++key)
        EXPECT_EQ(tree.Delete(key), 1);
    EXPECT_TRUE(tree.GetRoot()->IsLeaf());
}

TEST(MQuadTree, ACopyOfANodeSplitsOnItsOwn) {
    MQuadTree tree(100, 100, 2);
    std::vector<MQuadObj> inTree{ObjectAt(-40, -40), ObjectAt(10, 10), ObjectAt(40, 40)};
    for (MQuadObj &object : inTree)
        ASSERT_EQ(tree.Insert(&object), 1);
    MQuadNode const *const original = tree.GetRoot()->GetChild(0);
    ASSERT_NE(original, nullptr);
    MQuadNode copy(*original);
    std::vector<MQuadObj> inCopy;
    for (double place = original->GetRegion().minX; inCopy.size() < 4; place += 12)
        inCopy.push_back(ObjectAt(place, place));
    for (MQuadObj &object : inCopy)
        ASSERT_EQ(copy.Insert(&object), 0);
    EXPECT_FALSE(copy.IsLeaf());
    EXPECT_TRUE(original->IsLeaf());
    EXPECT_EQ(Hits(tree, {-1e3, -1e3, 1e3, 1e3}).size(), 3U);
}

TEST(MQuadTree, ANodeThatIsAssignedGoesOnWithTheMemoryOfItsSource) {
    MQuadTree tree(100, 100, 1);
    MQuadObj own = ObjectAt(1, 1);
    MQuadNode node;
    EXPECT_EQ(node.Insert(&own), 0);
    tree.Insert(1U, Point(0, 0));
    tree.Insert(2U, Point(-40, -40));
    node = *tree.GetRoot();
    EXPECT_EQ(node.GetChild(0), tree.GetRoot()->GetChild(0));
    MList<MQuadObj *> list;
    EXPECT_EQ(node.GetIntersectObjList({-50, -50, 50, 50}, list, 0), 2);
    node.InitClassMembers(); // the children stay the tree's
    EXPECT_EQ(node.Insert(&own), 0);
    EXPECT_TRUE(tree.IsConsistent());
}

TEST(MQuadObjPool, WhatComesAndGoesBehindTheTreesBackIsNoticed) {
    struct Retired : MQuadObj {
        Retired() { m_typeAndStatus = 0x2fffffff; }
    };
    MQuadTree tree(100, 100, 1);
    tree.Insert(1U, Point(0, 0));
    tree.Insert(2U, Point(-40, -40));
    tree.Insert(3U, Point(40, 40));
    MQuadNode *const inner = tree.GetRoot()->GetChild(3);
    ASSERT_FALSE(inner->IsLeaf());
    MQuadObj added = ObjectAt(10, 10, 77);
    inner->GetPool().Add(&added);
    EXPECT_EQ(Hits(tree, Point(10, 10)), Keys{77});
    MQuadObjPool pool;
    Retired retired;
    pool.Add(nullptr);
    pool.Add(&retired);
    pool.Add(&added); // the first one, which is retired, leaves
    EXPECT_EQ(pool.GetCount(), 1);
    inner->GetPool().RemoveAt(0);
    EXPECT_EQ(Hits(tree, Point(10, 10)), Keys{});
    inner->GetPool() = pool;
    EXPECT_EQ(Hits(tree, Point(10, 10)), Keys{77});
    pool.RemoveAt(1);
    EXPECT_EQ(pool.FindFromLast(&added), 0);
    EXPECT_EQ(pool.FindFromLast(nullptr), -1);
    EXPECT_EQ(pool.GetAt(-1), nullptr);
    EXPECT_EQ(pool.GetAt(1), nullptr);
}

TEST(MQuadTree, DrawsItsLeaves) {
    MQuadTree tree(100, 100, 1);
    Picture picture;
    tree.Draw(&picture);
    EXPECT_EQ(picture.text, "");
    tree.Insert(1U, Point(0.5, 0.5));
    tree.Draw(&picture);
    EXPECT_EQ(picture.text, "<-49,-49,50,50>");
    tree.Insert(2U, Point(-40, 40));
    picture.text.clear();
    tree.Draw(&picture);
    EXPECT_EQ(picture.text, "<-49,-49,0,0><0,-49,50,0><-49,0,0,50><0,0,50,50>");
}

} // namespace zvi::lib::test
