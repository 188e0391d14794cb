#include "zvi/math/free/Shrinkage.h"

namespace zvi::lib {

namespace {

void Shrink(int count, double const (*corners)[3], double ratio, double (*out)[3]) {
    for (int axis = 0; axis < 3; ++axis) {
        double sum = 0.0;
        for (int i = 0; i < count; ++i)
            sum += corners[i][axis];
        double const mean = sum / count;
        for (int i = 0; i < count; ++i)
            out[i][axis] = mean + (corners[i][axis] - mean) * ratio;
    }
}

} // namespace

void line_shrinkage(double const (*corners)[3], double ratio, double (*out)[3]) {
    Shrink(2, corners, ratio, out);
}

void triangle_shrinkage(double const (*corners)[3], double ratio, double (*out)[3]) {
    Shrink(3, corners, ratio, out);
}

void tetrahedron_shrinkage(double const (*corners)[3], double ratio, double (*out)[3]) {
    Shrink(4, corners, ratio, out);
}

void pentahedron_shrinkage(double const (*corners)[3], double ratio, double (*out)[3]) {
    Shrink(6, corners, ratio, out);
}

void hexahedron_shrinkage(double const (*corners)[3], double ratio, double (*out)[3]) {
    Shrink(8, corners, ratio, out);
}

} // namespace zvi::lib
