#include "zvi/math/free/OnLine.h"

#include "tests/math/Near.h"

namespace zvi::lib::test {

TEST(OnLine, SegmentsEndWhereTheirEndsAre) {
    for (auto const &[x, y, on, in] : Rows<4>("0.5 0 1 1; 5 0 0 0; -1 0 0 0; 0 0 1 0; 1 9e-9 1 0; 0.5 1e-5 1 1;"
                                              "0.5 1e-3 0 0; 0.5 0.5 0 0; 2e-5 1e-9 1 1; 1.5 nan 0 0")) {
        EXPECT_EQ(is_on_line_2d(0, 0, 1, 0, x, y, 1e-8), on) << x << ' ' << y;
        EXPECT_EQ(is_in_line_2d(0, 0, 1, 0, x, y, 1e-8), in) << x << ' ' << y;
        EXPECT_EQ(is_on_line_3d(0, 0, 2, 0, 0, 3, 0, y, 2 + x, 1e-8), on) << x << ' ' << y;
        EXPECT_EQ(is_in_line_3d(0, 0, 2, 0, 0, 3, 0, y, 2 + x, 1e-8), in) << x << ' ' << y;
    }
    EXPECT_TRUE(is_on_line_2d(1, 1, 1, 1, 1, 1, 1e-8)) << "coincident ends hold themselves";
    EXPECT_FALSE(is_on_line_2d(1, 1, 1, 1, 2, 1, 1e-8)) << "and nothing else";
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

} // namespace zvi::lib::test
