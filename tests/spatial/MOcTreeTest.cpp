#include "zvi/spatial/MOcTree.h"

#include "tests/spatial/Trees.h"

#include <gtest/gtest.h>

namespace zvi::lib::test {

TEST(MOcTree, AnEmptyRootIsToldByItsFlag) {
    // Sizes of 0 make the region a point, which no later object makes anew.
    MOcNode node;
    MOcObj first, second;
    MOcTree flat(0, 0, 4);
    first.SetItr(7);
    EXPECT_EQ(first.GetItr(), 7U);
    EXPECT_EQ(node.Insert(&first), 0);
    EXPECT_EQ(node.Insert(&second), 0);
    EXPECT_EQ(node.GetRegion().minX, -50);
    EXPECT_EQ(node.FirstInsert(nullptr), -1);
    EXPECT_EQ(flat.Insert(std::uint64_t{1} << 40, PointAt<Space>(0)), 1);
    EXPECT_EQ(flat.Insert(2U, BoxOf<Space>(Corners<3>::At({1, 1, 1}))), 1);
    EXPECT_EQ(flat.IsDraw(), 0);
    flat.SetDraw(3);
    EXPECT_EQ(flat.IsDraw(), 3);
}

} // namespace zvi::lib::test
