#include "zvi/math/OnLine.h"

#include <gtest/gtest.h>

#include <cmath>

namespace zvi::lib {

TEST(OnLine, SegmentsEndWhereTheirEndsAre) {
    struct Row {
        double x, y;
        bool on, in;
    };
    Row const rows[] = {
        {0.5, 0.0, true, true},    {5.0, 0.0, false, false},
        {-1.0, 0.0, false, false}, {0.0, 0.0, true, false},
        {1.0, 9e-9, true, false},  {0.5, 1e-5, true, true},
        {0.5, 1e-3, false, false}, {0.5, 0.5, false, false},
        {2e-5, 1e-9, true, true},  {1.5, std::nan(""), false, false},
    };
    for (Row const &row : rows) {
        EXPECT_EQ(is_on_line_2d(0, 0, 1, 0, row.x, row.y, 1e-8), row.on) << &row - rows;
        EXPECT_EQ(is_in_line_2d(0, 0, 1, 0, row.x, row.y, 1e-8), row.in) << &row - rows;
        EXPECT_EQ(is_on_line_3d(0, 0, 2, 0, 0, 3, 0, row.y, 2 + row.x, 1e-8), row.on) << &row - rows;
        EXPECT_EQ(is_in_line_3d(0, 0, 2, 0, 0, 3, 0, row.y, 2 + row.x, 1e-8), row.in) << &row - rows;
    }
}

TEST(OnLine, ToleranceIsStrictInThePlaneAndInclusiveInSpace) {
    // Seen from the middle of the hypotenuse's mirror image the ends stand at a right angle: c is exactly 0.
    EXPECT_FALSE(is_on_line_2d(1, 0, 0, 1, 0, 0, 1.0));
    EXPECT_TRUE(is_on_line_3d(1, 0, 0, 0, 1, 0, 0, 0, 0, 1.0));
    EXPECT_TRUE(is_in_line_2d(1, 0, 0, 1, 0, 0, 1.0));
    EXPECT_TRUE(is_in_line_3d(1, 0, 0, 0, 1, 0, 0, 0, 0, 1.0));
    // Exactly on the segment with no tolerance at all.
    EXPECT_FALSE(is_on_line_2d(-1, 0, 1, 0, 0, 0, 0.0));
    EXPECT_TRUE(is_on_line_3d(-1, 0, 0, 1, 0, 0, 0, 0, 0, 0.0));
}

TEST(OnLine, CoincidentEndsHoldOnlyThemselves) {
    EXPECT_TRUE(is_on_line_2d(1, 1, 1, 1, 1, 1, 1e-8));
    EXPECT_FALSE(is_on_line_2d(1, 1, 1, 1, 2, 1, 1e-8));
}

} // namespace zvi::lib
