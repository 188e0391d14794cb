#pragma once

#include "zvi/Export.h"

namespace zvi::lib {

/// Plane rotations as homogeneous 3 x 3 matrices for a row vector (x, y, 1) on the left.
class ZVI_API MMatrixLib {
public:
    /// Direction of the line from (x1, y1) to (x2, y2), in degrees from the x axis, 0 up to 360. It is exact for
    /// axis-parallel lines: 0, 90, 180 or 270. A line without length gives 0.
    static double CalcAngleDegLineAndAxisX(double x1, double y1, double x2, double y2);

    /// Rotation by `angleDeg`, counter-clockwise, about (baseX, baseY), which it leaves in place; the translation lies
    /// in the last row. Multiples of 90 degrees, up to a full turn, give whole numbers.
    static void RotateM2D(double angleDeg, double baseX, double baseY, double m[3][3]);
};

} // namespace zvi::lib
