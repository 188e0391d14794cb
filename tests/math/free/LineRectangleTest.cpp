#include "zvi/math/free/LineRectangle.h"

#include "tests/math/Near.h"

namespace zvi::lib::test {

TEST(LineRectangle, ModesPlaceTheWidth) {
    // The direction is (0.6, 0.8), its left (-0.8, 0.6); a width of 5 offsets by (-4, 3). No width gives the segment
    // in every mode, and 1e-4 rad from the x axis counts as the axis: the sides stand upright on both ends as they are.
    for (auto const &[mode, width, a, b, corners] : Rows<int, double, Xy, Xy, Coordinates<8>>(
             "1 5  1 2 7 10  -1 3.5 3 0.5 9 8.5 5 11.5; 2 5  1 2 7 10  -3 5 1 2 7 10 3 13;"
             "3 5  1 2 7 10  1 2 5 -1 11 7 7 10; 0 5  1 2 7 10  0 0 0 0 0 0 0 0; 4 5  1 2 7 10  0 0 0 0 0 0 0 0;"
             "1 9e-9  1 2 7 10  1 2 1 2 7 10 7 10; 3 9e-9  1 2 7 10  1 2 1 2 7 10 7 10;"
             "8 9e-9  1 2 7 10  1 2 1 2 7 10 7 10; 1 2  0 0 10 1e-3  0 1 0 -1 10 -0.999 10 1.001")) {
        SCOPED_TRACE(testing::Message() << mode << ' ' << width);
        Coordinates<8> c{};
        line_rectangle_2d(a, b, mode, width, &c[0], &c[2], &c[4], &c[6]);
        ExpectNear(c, corners, 1e-14);
    }
}

} // namespace zvi::lib::test
