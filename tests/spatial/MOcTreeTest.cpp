#include "zvi/spatial/MOcTree.h"

#include <gtest/gtest.h>

#include <array>

namespace zvi::lib::test {

namespace {

MOcMBR3D Point(double x, double y, double z) {
    return {x, y, z, x, y, z};
}

using Faces = std::array<double, 6>;

Faces FacesOf(MOcMBR3D const &box) {
    return {box.minX, box.minY, box.minZ, box.maxX, box.maxY, box.maxZ};
}

} // namespace

TEST(MOcTree, RegionStartsAroundTheFirstObjectAndGrowsUnevenly) {
    MOcTree byDefault;
    EXPECT_EQ(byDefault.Insert(std::uint64_t{1} << 40, Point(1, 2, 3)), 1);
    EXPECT_EQ(FacesOf(byDefault.GetRoot()->GetRegion()), (Faces{-49, -48, -47, 51, 52, 53}));
    EXPECT_EQ(byDefault.GetInfo().capacity, 32);
    // The first axis is shorter than both others and takes both differences: margin 2.5, then 6.5, then 86.5.
    MOcTree tree(10, 20, 8);
    EXPECT_EQ(tree.Insert(1U, Point(1, 2, 3)), 1);
    EXPECT_EQ(tree.Insert(2U, Point(-5, 2, 3)), 1);
    EXPECT_EQ(FacesOf(tree.GetRoot()->GetRegion()), (Faces{-100.5, -8, -47, 6, 12, 53}));
    EXPECT_EQ(tree.FindNode({6, 0, 0}), nullptr);
    EXPECT_EQ(tree.FindNode({5, 0, 0})->GetCount(), 2);
}

TEST(MOcTree, APointOnAMidPlaneGoesToTheHighSide) {
    MOcTree tree(100, 100, 1);
    tree.Insert(1U, Point(0, 0, 0));
    tree.Insert(2U, Point(-5, -5, -5));
    EXPECT_EQ(tree.GetRoot()->GetChildNodeIndexContainingPoint({0, 0, 0}), 7);
    EXPECT_EQ(tree.GetRoot()->GetChildNodeIndexContainingPoint({-1, 0, -1}), 2);
}

TEST(MOcTree, AnEmptyRootIsToldByItsFlag) {
    // Sizes of 0 make the region a point, which no later object makes anew.
    MOcNode node;
    MOcObj first, second;
    MOcTree flat(0, 0, 4);
    first.SetItr(7);
    EXPECT_EQ(first.GetItr(), 7U);
    EXPECT_EQ(node.Insert(&first), 0);
    EXPECT_EQ(node.Insert(&second), 0);
    EXPECT_EQ(FacesOf(node.GetRegion()), (Faces{-50, -50, -50, 50, 50, 50}));
    EXPECT_EQ(node.FirstInsert(nullptr), -1);
    EXPECT_EQ(flat.Insert(1U, Point(0, 0, 0)), 1);
    EXPECT_EQ(flat.Insert(2U, Point(1, 1, 1)), 1);
    EXPECT_EQ(flat.IsDraw(), 0);
    flat.SetDraw(3);
    EXPECT_EQ(flat.IsDraw(), 3);
}

} // namespace zvi::lib::test
