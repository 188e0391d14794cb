#include "zvi/spatial/MQuadTree.h"

#include "tests/spatial/Trees.h"

#include "zvi/host/CDC.h"

#include <gtest/gtest.h>

#include <string>
#include <vector>

namespace zvi::lib::test {

namespace {

MQuadMBR2D Point(double x, double y) {
    return {x, y, x, y};
}

Keys Hits(MQuadTree const &tree, MQuadMBR2D const &query, int strict = 0) {
    return HitsOf<Plane>(tree, query, strict);
}

MQuadObj ObjectAt(double x, double y, unsigned int key = 0) {
    MQuadObj object;
    MQuadMBR2D mbr = Point(x, y);
    object.SetMBR(mbr);
    object.SetKey(key);
    return object;
}

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

TEST(MQuadTree, RegionsWithoutAMeasureHideNothingAndAddNothing) {
    // A point takes no room here, so that the second rectangle makes the region anew.
    MQuadTree flat(0, 0, 128);
    flat.Insert(1U, Point(5, 5));
    flat.Insert(2U, {0, 0, 8, 8});
    MQuadTree empty(0, 0, 1);
    EXPECT_EQ(empty.Insert(1U, {0, 0, 1, 0}), 1);
    EXPECT_EQ(empty.Insert(2U, {0, 5, 1, 5}), 0) << "no height to grow";
    EXPECT_EQ(Hits(flat, {0.5, 0.5, 2, 2}), Keys{2});
    EXPECT_EQ(Hits(flat, {4, 4, 6, 6}, 1), (Keys{1, 2}));
    // Wider than the largest number.
    MQuadTree wide;
    wide.Insert(1U, {-1e308, -1e308, 1e308, 1e308});
    wide.Insert(2U, Point(9e307, 9e307));
    EXPECT_EQ(Hits(wide, {8.2e307, 8.2e307, 8.5e307, 8.5e307}), Keys{1});
    EXPECT_EQ(Hits(wide, {8.2e307, 8.2e307, 9.5e307, 9.5e307}), (Keys{1, 2}));
}

TEST(MQuadTree, ACopyOfANodeAndWhatIsAssignedToAnotherLeaveTheTreeAlone) {
    MQuadTree tree(100, 100, 2);
    std::vector<MQuadObj> inTree{ObjectAt(-40, -40), ObjectAt(10, 10), ObjectAt(40, 40)};
    for (MQuadObj &object : inTree)
        ASSERT_EQ(tree.Insert(&object), 1);
    MQuadNode const *const original = tree.GetRoot()->GetChild(0);
    MQuadNode copy(*original);
    std::vector<MQuadObj> inCopy;
    for (double place = original->GetRegion().minX; inCopy.size() < 4; place += 12)
        inCopy.push_back(ObjectAt(place, place));
    for (MQuadObj &object : inCopy)
        ASSERT_EQ(copy.Insert(&object), 0);
    EXPECT_FALSE(copy.IsLeaf());
    EXPECT_TRUE(original->IsLeaf());
    MQuadNode node;
    MQuadObj own = ObjectAt(1, 1);
    EXPECT_EQ(node.Insert(&own), 0);
    node = *tree.GetRoot();
    EXPECT_EQ(node.GetChild(0), original);
    MList<MQuadObj *> list;
    EXPECT_EQ(node.GetIntersectObjList({-1e3, -1e3, 1e3, 1e3}, list, 0), 3);
    node.InitClassMembers(); // the children stay the tree's
    EXPECT_EQ(node.Insert(&own), 0);
    EXPECT_TRUE(tree.IsConsistent());
    EXPECT_EQ(Hits(tree, {-1e3, -1e3, 1e3, 1e3}).size(), 3U);
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
    MQuadNode().Draw(nullptr);
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
