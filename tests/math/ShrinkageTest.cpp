#include "zvi/math/Shrinkage.h"

#include "tests/math/Near.h"
#include "zvi/math/Distance.h"
#include "zvi/math/SmallVector.h"

namespace zvi::lib {

using test::ExpectNear;
using test::Xyz;

TEST(Shrinkage, CornersMoveTowardTheirMean) {
    using Shrinker = void (*)(double const(*)[3], double, double(*)[3]);
    struct Row {
        Shrinker shrink;
        int count;
    };
    double const corners[8][3] = {{0, 0, 0}, {6, 0, 3}, {6, 6, 0}, {0, 6, 9},
                                  {1, 1, 1}, {5, 2, 8}, {7, 7, 7}, {3, 2, 4}};
    for (Row const &row : {Row{line_shrinkage, 2}, Row{triangle_shrinkage, 3}, Row{tetrahedron_shrinkage, 4},
                           Row{pentahedron_shrinkage, 6}, Row{hexahedron_shrinkage, 8}}) {
        SCOPED_TRACE(row.count);
        double out[9][3];
        for (int i = 0; i < 8; ++i)
            copy_vector_3x1(corners[i], out[i]);
        out[row.count][0] = 99.0;
        row.shrink(out, 0.25, out);
        EXPECT_EQ(out[row.count][0], 99.0) << "one corner too many";
        EXPECT_NEAR(4.0 * distance_3d(out[0], out[row.count - 1]), distance_3d(corners[0], corners[row.count - 1]),
                    1e-14);
        row.shrink(corners, 0.0, out);
        for (int i = 1; i < row.count; ++i)
            ExpectNear(out[i], Xyz{out[0][0], out[0][1], out[0][2]});
    }
    double out[3][3];
    triangle_shrinkage(corners, 0.5, out);
    ExpectNear(out[0], Xyz{2, 1, 0.5});
    ExpectNear(out[1], Xyz{5, 1, 2});
}

} // namespace zvi::lib
