#include "zvi/drawing/MakeDrawingDomains.h"
#include "tests/drawing/DrawingInvariants.h"

#include <gtest/gtest.h>

namespace zvi::lib::test {

namespace {

struct Case {
    char const *what;
    char const *curves;
    std::size_t domains, holes;
    double area;
    int joined, cut, duplicates;
    std::size_t leftovers, gaps;
};

class DrawingCases : public testing::TestWithParam<Case> {};

Case const kCases[] = {
    {"nothing", "", 0, 0, 0.0, 0, 0, 0, 0, 0},
    {"circle", "circle 1 3 4 2", 1, 0, 4 * kPi, 0, 0, 0, 0, 0},
    {"square", "line 1 0 0 1 0; line 2 1 0 1 1; line 3 1 1 0 1; line 4 0 1 0 0", 1, 0, 1.0, 0, 0, 0, 0, 0},
    {"square with gaps below the tolerance",
     "line 1 0 0 1 0.00003; line 2 1 0 1 1; line 3 1.00004 1 0 1; line 4 0 1 0 0.00005", 1, 0, 1.0, 3, 0, 0, 0, 0},
    {"square with a gap above the tolerance", "line 1 0 0 1 0; line 2 1 0 1 1; line 3 1 1 0 1; line 4 0 1 0 0.001", 0,
     0, 0.0, 0, 0, 0, 4, 1},
    {"lines that cross", "line 1 -1 0 2 0; line 2 -1 1 2 1; line 3 0 -1 0 2; line 4 1 -1 1 2", 1, 0, 1.0, 0, 8, 0, 8,
     0},
    {"square drawn twice, the second time in two halves and backwards",
     "line 1 0 0 2 0; line 2 2 0 2 2; line 3 2 2 0 2; line 4 0 2 0 0;"
     "line 5 1 0 0 0; line 6 2 0 1 0; line 7 2 2 2 0; line 8 0 2 2 2; line 9 0 0 0 2",
     1, 0, 4.0, 0, 1, 5, 5, 0},
    {"disc cut by its diameter from the start of the circle", "circle 1 0 0 2; line 2 -2 0 2 0", 2, 0, 4 * kPi, 0, 1, 0,
     0, 0},
    {"tangent line", "circle 1 0 0 2; line 2 -2 -2 2 -2", 1, 0, 4 * kPi, 0, 2, 0, 2, 0},
    {"circles that touch from outside", "circle 1 0 0 2; circle 2 0 3 1", 2, 0, 5 * kPi, 0, 2, 0, 0, 0},
    {"circles that touch from inside", "circle 1 0 0 2; circle 2 0 1 1", 2, 1, 4 * kPi, 0, 2, 0, 0, 0},
    {"circle drawn three times", "circle 1 0 0 2; circle 2 0 0 2; circle 3 0 0.00001 2", 1, 0, 4 * kPi, 0, 4, 2, 2, 0},
    {"arcs of one circle that overlap", "arc 1 0 0 1 0 200; arc 2 0 0 1 180 380", 1, 0, kPi, 0, 4, 2, 2, 0},
    {"two arcs over one chord", "arc 1 0 0 1 0 180; arc 2 0 0 1 180 360; line 3 -1 0 1 0", 2, 0, kPi, 0, 0, 0, 0, 0},
    {"island, lake and house on the island", "circle 1 0 0 3; circle 2 0 0 2; circle 3 0 0 1", 3, 2, 9 * kPi, 0, 0, 0,
     0, 0},
    {"squares that touch in a corner within a circle",
     "circle 1 0 0 5; line 2 0 0 1 0; line 3 1 0 1 1; line 4 1 1 0 1; line 5 0 1 0 0;"
     "line 6 0 0 -1 0; line 7 -1 0 -1 -1; line 8 -1 -1 0 -1; line 9 0 -1 0 0",
     3, 2, 25 * kPi, 0, 0, 0, 0, 0},
    {"loop in a corner of a square",
     "line 1 0 0 4 0; line 2 4 0 4 4; line 3 4 4 0 4; line 4 0 4 0 0;"
     "line 5 0 0 2 1; line 6 2 1 1 2; line 7 1 2 0 0",
     2, 1, 16.0, 0, 0, 0, 0, 0},
    {"loop on a tail and a bridge between two loops",
     "line 1 0 0 4 0; line 2 4 0 4 4; line 3 4 4 0 4; line 4 0 4 0 0; line 5 0 0 1.5 2; circle 6 2 2 0.5;"
     "line 7 4 4 6 4; line 8 6 4 7 4; line 9 7 4 7 5; line 10 7 5 6 4",
     3, 1, 16.5, 0, 1, 0, 2, 0},
    {"end on a wall within the tolerance",
     "line 1 0 0 4 0; line 2 4 0 4 4; line 3 4 4 0 4; line 4 0 4 0 0; line 5 2 0.00005 2 4.00005", 2, 0, 16.0, 2, 2, 0,
     0, 0},
    {"three lines through one point",
     "line 1 -1 0 1 0; line 2 0 -1 0 1; line 3 -1 -1 1 1; line 4 1 0 1 1; line 5 1 1 0 1; line 6 -1 0 -1 -1;"
     "line 7 -1 -1 0 -1",
     4, 0, 2.0, 0, 3, 0, 0, 0},
    {"far from the origin",
     "line 1 5000000 6000000 5000001 6000000; line 2 5000001 6000000 5000001 6000001;"
     "line 3 5000001 6000001 5000000 6000001; line 4 5000000 6000001 5000000 6000000; circle 5 5000000.5 6000000.5 0.5",
     5, 0, 1.0, 0, 7, 0, 0, 0},
};

} // namespace

TEST_P(DrawingCases, Holds) {
    Case const &c = GetParam();
    SCOPED_TRACE(c.what);
    std::vector<DrawingCurve> const curves = Curves(c.curves);
    DrawingResult const result = MakeDrawingDomains(curves);
    EXPECT_EQ(result.domains.size(), c.domains);
    EXPECT_EQ(HoleCount(result), c.holes);
    EXPECT_NEAR(TotalArea(result), c.area, 2e-4 * (1.0 + c.area));
    EXPECT_EQ(result.counts.joined, c.joined);
    EXPECT_EQ(result.counts.cut, c.cut);
    EXPECT_EQ(result.counts.duplicates, c.duplicates);
    EXPECT_EQ(result.leftovers.size(), c.leftovers);
    EXPECT_EQ(result.gaps.size(), c.gaps);
    EXPECT_EQ(WhatIsWrong(curves, {}, result), "");
}

INSTANTIATE_TEST_SUITE_P(MakeDrawingDomains, DrawingCases, testing::ValuesIn(kCases),
                         [](auto const &test) { return "Case" + std::to_string(test.index); });

} // namespace zvi::lib::test
