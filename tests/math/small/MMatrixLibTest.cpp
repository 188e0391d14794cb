#include "zvi/math/small/MMatrixLib.h"

#include "tests/math/Near.h"

namespace zvi::lib::test {

TEST(MMatrixLib, TurnsALineOntoTheXAxis) {
    double m[3][3];
    for (auto const &[dx, dy, degrees] : Rows<3>("4 0 0; 0 7 90; -4 0 180; 0 -6 270; 5 5 45; -5 -5 225")) {
        double const angle = MMatrixLib::CalcAngleDegLineAndAxisX(1, 2, 1 + dx, 2 + dy);
        EXPECT_NEAR(angle, degrees, 1e-12);
        MMatrixLib::RotateM2D(-angle, 1, 2, m);
        EXPECT_NEAR((1 + dx) * m[0][0] + (2 + dy) * m[1][0] + m[2][0], 1 + std::hypot(dx, dy), 1e-12);
        EXPECT_NEAR((1 + dx) * m[0][1] + (2 + dy) * m[1][1] + m[2][1], 2, 1e-12);
    }
    MMatrixLib::RotateM2D(90.0, 3.0, 5.0, m); // the row vector (x, y, 1) on the left: (3 - (y - 5), 5 + (x - 3))
    double const expected[3][3] = {{0, 1, 0}, {-1, 0, 0}, {8, 2, 1}};
    for (int i = 0; i < 9; ++i)
        EXPECT_EQ(m[i / 3][i % 3], expected[i / 3][i % 3]) << i;
}

} // namespace zvi::lib::test
