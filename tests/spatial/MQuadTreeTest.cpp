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

TEST(MQuadTree, RegionsWithoutAMeasureHideNothingAndAddNothing) {
    // A point takes no room here, so that the second rectangle makes the region anew.
    MQuadTree flat(0, 0, 128);
    flat.Insert(1U, Point(5, 5));
    flat.Insert(2U, {0, 0, 8, 8});
    MQuadTree empty(0, 0, 1);
    EXPECT_EQ(empty.Insert(1U, {0, 0, 1, 0}), 1);
    EXPECT_EQ(empty.Insert(2U, {0, 5, 1, 5}), 0) << "no height to grow";
    EXPECT_EQ(HitsOf<Plane>(flat, {0.5, 0.5, 2, 2}), Keys{2});
    EXPECT_EQ(HitsOf<Plane>(flat, {4, 4, 6, 6}, 1), (Keys{1, 2}));
    // Wider than the largest number.
    MQuadTree wide;
    wide.Insert(1U, {-1e308, -1e308, 1e308, 1e308});
    wide.Insert(2U, Point(9e307, 9e307));
    EXPECT_EQ(HitsOf<Plane>(wide, {8.2e307, 8.2e307, 8.5e307, 8.5e307}), Keys{1});
    EXPECT_EQ(HitsOf<Plane>(wide, {8.2e307, 8.2e307, 9.5e307, 9.5e307}), (Keys{1, 2}));
}

TEST(MQuadTree, ACopyOfANodeAndWhatIsAssignedToAnotherLeaveTheTreeAlone) {
    MQuadTree tree(100, 100, 2);
    for (unsigned int const key : {1U, 2U, 3U})
        tree.Insert(key, Point(key * 40.0 - 80.0, key * 40.0 - 80.0));
    MQuadNode const &original = *tree.GetRoot()->GetChild(0);
    MQuadNode copy(original), node;
    std::vector<MQuadObj> inCopy(5);
    for (MQuadObj &object : inCopy) {
        MQuadMBR2D place = Point(original.GetRegion().minX + double(12 * (&object - &inCopy[0])), -60);
        object.SetMBR(place);
        EXPECT_EQ((&object == &inCopy[4] ? node : copy).Insert(&object), 0);
    }
    EXPECT_TRUE(!copy.IsLeaf() && original.IsLeaf());
    node = *tree.GetRoot();
    EXPECT_EQ(node.GetChild(0), &original);
    MList<MQuadObj *> list;
    EXPECT_EQ(node.GetIntersectObjList({-1e3, -1e3, 1e3, 1e3}, list, 0), 3);
    node.InitClassMembers(); // the children stay the tree's
    EXPECT_EQ(node.Insert(&inCopy[4]), 0);
    EXPECT_TRUE(tree.IsConsistent());
    EXPECT_EQ(HitsOf<Plane>(tree, {-1e3, -1e3, 1e3, 1e3}).size(), 3U);
}

TEST(MQuadObjPool, WhatComesAndGoesBehindTheTreesBackIsNoticed) {
    struct Retired : MQuadObj {
        Retired() { m_typeAndStatus = 0x2fffffff; }
    };
    MQuadTree tree(100, 100, 1);
    tree.Insert(1U, Point(0, 0));
    tree.Insert(2U, Point(-40, -40));
    tree.Insert(3U, Point(40, 40));
    MQuadObjPool &inner = tree.GetRoot()->GetChild(3)->GetPool();
    MQuadObj added;
    added.SetKey(77);
    added.GetMBR() = Point(10, 10);
    inner.Add(&added);
    EXPECT_EQ(HitsOf<Plane>(tree, Point(10, 10)), Keys{77});
    MQuadObjPool pool;
    Retired retired;
    for (MQuadObj *const object : {static_cast<MQuadObj *>(nullptr), static_cast<MQuadObj *>(&retired), &added})
        pool.Add(object); // the first one, which is retired, leaves
    inner.RemoveAt(0);
    EXPECT_EQ(HitsOf<Plane>(tree, Point(10, 10)), Keys{});
    inner = pool;
    EXPECT_EQ(HitsOf<Plane>(tree, Point(10, 10)), Keys{77});
    pool.RemoveAt(1);
    EXPECT_EQ(pool.GetCount(), 1);
    EXPECT_EQ(pool.FindFromLast(&added) + pool.FindFromLast(nullptr), -1);
    EXPECT_TRUE(!pool.GetAt(-1) && !pool.GetAt(1));
}

TEST(MQuadTree, DrawsItsLeaves) {
    MQuadTree tree(100, 100, 1);
    Picture picture;
    tree.Draw(&picture);
    MQuadNode().Draw(nullptr);
    tree.Insert(1U, Point(0.5, 0.5));
    tree.Draw(&picture);
    tree.Insert(2U, Point(-40, 40));
    tree.Draw(&picture);
    EXPECT_EQ(picture.text, "<-49,-49,50,50>"
                            "<-49,-49,0,0><0,-49,50,0><-49,0,0,50><0,0,50,50>");
}

} // namespace zvi::lib::test
