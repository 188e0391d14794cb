#include "zvi/drawing/MakeDrawingDomains.h"
#include "tests/drawing/DrawingInvariants.h"

#include <gtest/gtest.h>

namespace zvi::lib::test {

TEST(MakeDrawingDomains, GivesTheDomainsOfSmallDrawings) {
    struct Found {
        std::size_t domains = 0, holes = 0;
        double area = 0.0;
        int joined = 0, cut = 0, duplicates = 0;
        std::size_t leftovers = 0, gaps = 0;
    };
    struct {
        char const *what, *curves;
        Found found;
    } const rows[] = {
        {"nothing", "", {}},
        {"circle", "circle 1 3 4 2", {.domains = 1, .area = 4 * kPi}},
        {"square", "line 1 0 0 1 0; line 2 1 0 1 1; line 3 1 1 0 1; line 4 0 1 0 0", {.domains = 1, .area = 1.0}},
        {"square with gaps below the tolerance",
         "line 1 0 0 1 0.00003; line 2 1 0 1 1; line 3 1.00004 1 0 1; line 4 0 1 0 0.00005",
         {.domains = 1, .area = 1.0, .joined = 3}},
        {"square with a gap above the tolerance",
         "line 1 0 0 1 0; line 2 1 0 1 1; line 3 1 1 0 1; line 4 0 1 0 0.001",
         {.leftovers = 4, .gaps = 1}},
        {"lines that cross",
         "line 1 -1 0 2 0; line 2 -1 1 2 1; line 3 0 -1 0 2; line 4 1 -1 1 2",
         {.domains = 1, .area = 1.0, .cut = 8, .leftovers = 8}},
        {"square drawn twice, the second time in two halves and backwards",
         "line 1 0 0 2 0; line 2 2 0 2 2; line 3 2 2 0 2; line 4 0 2 0 0;"
         "line 5 1 0 0 0; line 6 2 0 1 0; line 7 2 2 2 0; line 8 0 2 2 2; line 9 0 0 0 2",
         {.domains = 1, .area = 4.0, .cut = 1, .duplicates = 5, .leftovers = 5}},
        {"disc cut by its diameter from the start of the circle",
         "circle 1 0 0 2; line 2 -2 0 2 0",
         {.domains = 2, .area = 4 * kPi, .cut = 1}},
        {"tangent line",
         "circle 1 0 0 2; line 2 -2 -2 2 -2",
         {.domains = 1, .area = 4 * kPi, .cut = 2, .leftovers = 2}},
        {"circles that touch from outside",
         "circle 1 0 0 2; circle 2 0 3 1",
         {.domains = 2, .area = 5 * kPi, .cut = 2}},
        {"circles that touch from inside",
         "circle 1 0 0 2; circle 2 0 1 1",
         {.domains = 2, .holes = 1, .area = 4 * kPi, .cut = 2}},
        {"circle drawn three times",
         "circle 1 0 0 2; circle 2 0 0 2; circle 3 0 0.00001 2",
         {.domains = 1, .area = 4 * kPi, .cut = 4, .duplicates = 2, .leftovers = 2}},
        {"arcs of one circle that overlap",
         "arc 1 0 0 1 0 200; arc 2 0 0 1 180 380",
         {.domains = 1, .area = kPi, .cut = 4, .duplicates = 2, .leftovers = 2}},
        {"two arcs over one chord",
         "arc 1 0 0 1 0 180; arc 2 0 0 1 180 360; line 3 -1 0 1 0",
         {.domains = 2, .area = kPi}},
        {"island, lake and house on the island",
         "circle 1 0 0 3; circle 2 0 0 2; circle 3 0 0 1",
         {.domains = 3, .holes = 2, .area = 9 * kPi}},
        {"squares that touch in a corner within a circle",
         "circle 1 0 0 5; line 2 0 0 1 0; line 3 1 0 1 1; line 4 1 1 0 1; line 5 0 1 0 0;"
         "line 6 0 0 -1 0; line 7 -1 0 -1 -1; line 8 -1 -1 0 -1; line 9 0 -1 0 0",
         {.domains = 3, .holes = 2, .area = 25 * kPi}},
        {"loop in a corner of a square",
         "line 1 0 0 4 0; line 2 4 0 4 4; line 3 4 4 0 4; line 4 0 4 0 0;"
         "line 5 0 0 2 1; line 6 2 1 1 2; line 7 1 2 0 0",
         {.domains = 2, .holes = 1, .area = 16.0}},
        {"loop on a tail and a bridge between two loops",
         "line 1 0 0 4 0; line 2 4 0 4 4; line 3 4 4 0 4; line 4 0 4 0 0; line 5 0 0 1.5 2; circle 6 2 2 0.5;"
         "line 7 4 4 6 4; line 8 6 4 7 4; line 9 7 4 7 5; line 10 7 5 6 4",
         {.domains = 3, .holes = 1, .area = 16.5, .cut = 1, .leftovers = 2}},
        {"end on a wall within the tolerance",
         "line 1 0 0 4 0; line 2 4 0 4 4; line 3 4 4 0 4; line 4 0 4 0 0; line 5 2 0.00005 2 4.00005",
         {.domains = 2, .area = 16.0, .joined = 2, .cut = 2}},
        {"three lines through one point",
         "line 1 -1 0 1 0; line 2 0 -1 0 1; line 3 -1 -1 1 1; line 4 1 0 1 1; line 5 1 1 0 1; line 6 -1 0 -1 -1;"
         "line 7 -1 -1 0 -1",
         {.domains = 4, .area = 2.0, .cut = 3}},
        {"far from the origin",
         "line 1 5000000 6000000 5000001 6000000; line 2 5000001 6000000 5000001 6000001;"
         "line 3 5000001 6000001 5000000 6000001; line 4 5000000 6000001 5000000 6000000; circle 5 5000000.5 6000000.5 "
         "0.5",
         {.domains = 5, .area = 1.0, .cut = 7}},
    };
    for (auto const &row : rows) {
        SCOPED_TRACE(row.what);
        std::vector<DrawingCurve> const curves = Curves(row.curves);
        DrawingResult const result = MakeDrawingDomains(curves);
        EXPECT_EQ(result.domains.size(), row.found.domains);
        EXPECT_EQ(HoleCount(result), row.found.holes);
        EXPECT_NEAR(TotalArea(result), row.found.area, 2e-4 * (1.0 + row.found.area));
        EXPECT_EQ(result.counts.joined, row.found.joined);
        EXPECT_EQ(result.counts.cut, row.found.cut);
        EXPECT_EQ(result.counts.duplicates, row.found.duplicates);
        EXPECT_EQ(result.leftovers.size(), row.found.leftovers);
        EXPECT_EQ(result.gaps.size(), row.found.gaps);
        EXPECT_EQ(WhatIsWrong(curves, {}, result), "");
    }
}

} // namespace zvi::lib::test
