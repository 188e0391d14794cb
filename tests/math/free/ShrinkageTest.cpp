#include "zvi/math/free/Shrinkage.h"

#include "tests/math/Near.h"

namespace zvi::lib::test {

TEST(Shrinkage, CornersMoveTowardTheirMean) {
    double const corners[8][3] = {{0, 0, 0}, {6, 0, 3}, {6, 6, 0}, {0, 6, 9},
                                  {1, 1, 1}, {5, 2, 8}, {7, 7, 7}, {3, 2, 4}};
    struct {
        void (*shrink)(double const (*)[3], double, double (*)[3]);
        int count;
        Xyz mean;
    } const rows[] = {{line_shrinkage, 2, {3, 0, 1.5}},
                      {triangle_shrinkage, 3, {4, 2, 1}},
                      {tetrahedron_shrinkage, 4, {3, 3, 3}},
                      {pentahedron_shrinkage, 6, {3, 2.5, 3.5}},
                      {hexahedron_shrinkage, 8, {3.5, 3, 4}}};
    for (auto const &row : rows) {
        SCOPED_TRACE(row.count);
        double out[9][3] = {};
        std::copy_n(&corners[0][0], 24, &out[0][0]);
        out[row.count][0] = 99.0;
        row.shrink(out, 0.25, out);
        EXPECT_EQ(out[row.count][0], 99.0) << "one corner too many";
        for (int i = 0; i < row.count; ++i)
            ExpectNear(out[i], 0.25 * Xyz{corners[i][0], corners[i][1], corners[i][2]} + 0.75 * row.mean);
    }
}

} // namespace zvi::lib::test
