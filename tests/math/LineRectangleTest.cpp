#include "zvi/math/LineRectangle.h"

#include "tests/math/Near.h"

namespace zvi::lib {

using test::ExpectNear;
using test::Xy;

TEST(LineRectangle, ModesPlaceTheWidth) {
    // The direction is (0.6, 0.8), its left (-0.8, 0.6); a width of 5 offsets by (-4, 3).
    double const a[2] = {1, 2};
    double const b[2] = {7, 10};
    struct Row {
        int mode;
        Xy c1, c2, c3, c4;
    };
    Row const rows[] = {
        {1, {-1, 3.5}, {3, 0.5}, {9, 8.5}, {5, 11.5}}, {2, {-3, 5}, {1, 2}, {7, 10}, {3, 13}},
        {3, {1, 2}, {5, -1}, {11, 7}, {7, 10}},        {0, {0, 0}, {0, 0}, {0, 0}, {0, 0}},
        {4, {0, 0}, {0, 0}, {0, 0}, {0, 0}},
    };
    for (Row const &row : rows) {
        double c[4][2] = {};
        line_rectangle_2d(a, b, row.mode, 5.0, c[0], c[1], c[2], c[3]);
        ExpectNear(c[0], row.c1);
        ExpectNear(c[1], row.c2);
        ExpectNear(c[2], row.c3);
        ExpectNear(c[3], row.c4);
    }
}

TEST(LineRectangle, NoWidthGivesTheSegmentInEveryMode) {
    double const a[2] = {1, 2};
    double const b[2] = {7, 10};
    for (int mode : {1, 3, 8}) {
        double c[4][2] = {};
        line_rectangle_2d(a, b, mode, 9e-9, c[0], c[1], c[2], c[3]);
        ExpectNear(c[0], Xy{1, 2}, 0.0);
        ExpectNear(c[1], Xy{1, 2}, 0.0);
        ExpectNear(c[2], Xy{7, 10}, 0.0);
        ExpectNear(c[3], Xy{7, 10}, 0.0);
    }
}

TEST(LineRectangle, SnappedDirectionKeepsItsFarEnd) {
    // 1e-4 rad from the x axis counts as the axis: the sides stand upright on both ends as they are.
    double const a[2] = {0, 0};
    double const b[2] = {10, 1e-3};
    double c[4][2];
    line_rectangle_2d(a, b, 1, 2.0, c[0], c[1], c[2], c[3]);
    ExpectNear(c[0], Xy{0, 1}, 1e-15);
    ExpectNear(c[2], Xy{10, 1e-3 - 1}, 1e-15);
}

} // namespace zvi::lib
