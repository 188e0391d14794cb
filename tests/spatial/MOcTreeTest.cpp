#include "zvi/spatial/MOcTree.h"

#include <gtest/gtest.h>

#include <limits>
#include <memory>
#include <vector>

namespace zvi::lib::test {

namespace {

MOcMBR3D Point(double x, double y, double z) {
    return {x, y, z, x, y, z};
}

void ExpectRegion(MOcMBR3D const &region, MOcMBR3D const &expected) {
    EXPECT_EQ(region.minX, expected.minX);
    EXPECT_EQ(region.minY, expected.minY);
    EXPECT_EQ(region.minZ, expected.minZ);
    EXPECT_EQ(region.maxX, expected.maxX);
    EXPECT_EQ(region.maxY, expected.maxY);
    EXPECT_EQ(region.maxZ, expected.maxZ);
}

using Keys = std::vector<std::uint64_t>;

Keys Hits(MOcTree const &tree, MOcMBR3D const &query, int strict = 0) {
    MList<MOcObj *> list;
    tree.GetIntersectObjList(query, list, strict);
    Keys keys;
    for (MOcObj *object : list)
        keys.push_back(object->GetItr());
    return keys;
}

/// A class that computes its box.
struct MovingObject : MOcObj {
    MOcMBR3D GetMBR() override { return Point(position, 0, 0); }
    double position = 5.0;
};

} // namespace

TEST(MOcMBR3D, ToleranceAndHalfOpenFaces) {
    double const values[] = {0, 0, 0, 1, 1, 1};
    MOcMBR3D const unit(values);
    struct Row {
        MOcMBR3D other;
        int loose, strict;
    };
    Row const rows[] = {
        {{1.0005, 0, 0, 2, 1, 1}, 1, 0}, {{1.0011, 0, 0, 2, 1, 1}, 0, 0},   {{0, 0.99995, 0, 1, 2, 1}, 1, 0},
        {{0, 0.9998, 0, 1, 2, 1}, 1, 1}, {{0, 0, -2, 1, 1, -0.0011}, 0, 0},
    };
    for (Row const &row : rows) {
        EXPECT_EQ(unit.Intersect8OT(row.other, 0), row.loose) << row.other.minX;
        EXPECT_EQ(row.other.Intersect8OT(unit, 1), row.strict) << row.other.minX;
    }
    EXPECT_EQ(unit.DoesContain8OT({0, 0, 0}), 1);
    EXPECT_EQ(unit.DoesContain8OT({0, 0, 1}), 0);
    EXPECT_EQ(Point(0, 0, 0).IsContained8OT(unit), 1);
    EXPECT_EQ(MOcMBR3D({0, 0, 0}, {1, 0, 0}).IsContained8OT(unit), 0);
}

TEST(MOcTree, RegionStartsAroundTheFirstObjectAndGrowsUnevenly) {
    MOcTree byDefault;
    EXPECT_EQ(byDefault.Insert(std::uint64_t{1} << 40, Point(1, 2, 3)), 1);
    ExpectRegion(byDefault.GetRoot()->GetRegion(), {-49, -48, -47, 51, 52, 53});
    // The first axis is shorter than both others and takes both differences: margin 2.5, then 6.5, then 86.5.
    MOcTree tree(10, 20, 8);
    EXPECT_EQ(tree.Insert(1U, Point(1, 2, 3)), 1);
    EXPECT_EQ(tree.Insert(2U, Point(-5, 2, 3)), 1);
    ExpectRegion(tree.GetRoot()->GetRegion(), {-100.5, -8, -47, 6, 12, 53});
    EXPECT_EQ(tree.FindNode({6, 0, 0}), nullptr);
    EXPECT_EQ(tree.FindNode({5, 0, 0})->GetCount(), 2);
}

TEST(MOcTree, TheThirtyThirdObjectSplitsAndWhatLeavesMerges) {
    MOcTree tree;
    for (unsigned int key = 0; key < 32; ++key)
        tree.Insert(key, Point(10.0 * (key % 4), 10.0 * (key / 4 % 4), 20.0 * (key / 16)));
    EXPECT_TRUE(tree.GetRoot()->IsLeafNode());
    tree.Insert(32U, Point(-5, -5, -5));
    EXPECT_FALSE(tree.GetRoot()->IsLeafNode());
    // A point on a mid plane, as the first object's place is on all three, goes to the high side.
    EXPECT_EQ(tree.GetRoot()->GetChildNodeIndexContainingPoint({0, 0, 0}), 7);
    EXPECT_EQ(tree.GetRoot()->GetChildNodeIndexContainingPoint({-1, 0, -1}), 2);
    for (unsigned int key = 0; key <= 32; ++key) {
        EXPECT_EQ(tree.Delete(key), 1);
        EXPECT_TRUE(tree.IsConsistent());
    }
    EXPECT_TRUE(tree.GetRoot()->IsLeafNode());
}

TEST(MOcTree, AnEmptyRootIsToldByItsFlag) {
    // Sizes of 0 make the region a point, which no later object makes anew.
    MOcNode node;
    MOcObj first, second;
    MOcTree flat(0, 0, 4);
    EXPECT_EQ(node.Insert(&first), 0);
    EXPECT_EQ(node.Insert(&second), 0);
    ExpectRegion(node.GetRegion(), {-50, -50, -50, 50, 50, 50});
    EXPECT_EQ(node.FirstInsert(nullptr), -1);
    EXPECT_EQ(flat.Insert(1U, Point(0, 0, 0)), 1);
    EXPECT_EQ(flat.Insert(2U, Point(1, 1, 1)), 1);
    EXPECT_EQ(flat.IsDraw(), 0);
    flat.SetDraw(3);
    EXPECT_EQ(flat.IsDraw(), 3);
}

TEST(MOcTree, ObjectsMoveComputeTheirBoxesAndGoInAnyOrder) {
    auto tree = std::make_unique<MOcTree>(100, 100, 2);
    MovingObject moving;
    auto object = std::make_unique<MOcObj>();
    for (MOcObj *each : {static_cast<MOcObj *>(&moving), object.get()})
        EXPECT_EQ(tree->Insert(each), 1);
    moving.SetItr(1);
    object->SetItr(2);
    moving.position = 8.0;
    MOcMBR3D box = Point(20, 20, 20);
    object->SetMBR(box);
    EXPECT_EQ(Hits(*tree, Point(5, 0, 0)), Keys{});
    EXPECT_EQ(Hits(*tree, Point(8, 0, 0)), Keys{1});
    EXPECT_EQ(Hits(*tree, Point(20, 20, 20)), Keys{2});
    EXPECT_EQ(tree->Delete(object.get()), 1);
    EXPECT_EQ(tree->Insert(object.get()), 1);
    tree.reset();
    object->SetMBR(box);
}

TEST(MOcTree, BadBoxesAreRefusedAndThoseInsideOutAreTakenAsTheyAre) {
    double const nan = std::numeric_limits<double>::quiet_NaN();
    MOcTree tree;
    EXPECT_EQ(tree.Insert(1U, Point(0, nan, 0)), 0);
    EXPECT_EQ(tree.Insert(1U, {0, 0, 0, 1, 1, std::numeric_limits<double>::infinity()}), 0);
    EXPECT_EQ(tree.Insert(nullptr), 0);
    EXPECT_EQ(tree.Delete(1U), 0);
    EXPECT_EQ(tree.Insert(1U, {3, 0, 0, -3, 0, 0}), 1);
    EXPECT_EQ(tree.Insert(2U, {-1e300, 0, 0, 1e300, 0, 0}), 1);
    EXPECT_EQ(Hits(tree, {-5, -1, -1, 5, 1, 1}), (Keys{1, 2}));
    EXPECT_EQ(Hits(tree, Point(0, 0, 0)), Keys{2});
    EXPECT_EQ(Hits(tree, Point(nan, nan, nan)), (Keys{1, 2}));
    EXPECT_TRUE(tree.IsConsistent());
}

} // namespace zvi::lib::test
