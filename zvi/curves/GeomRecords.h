#pragma once

#include "zvi/core/MArray.h"

namespace zvi::lib {

/// A point of the plane.
struct T_POINT2D {
    double x = 0.0;
    double y = 0.0;
};

/// A point of space.
struct T_POINT3D {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

/// A directed segment of the plane from (x1, y1) to (x2, y2).
struct T_LINE2D {
    double x1 = 0.0;
    double y1 = 0.0;
    double x2 = 0.0;
    double y2 = 0.0;
};

/// A box of the plane, both minima first.
struct T_REGION2D {
    double MinX = 0.0;
    double MinY = 0.0;
    double MaxX = 0.0;
    double MaxY = 0.0;
};

/// A region with holes for the calculation of areas: every ring repeats its first point at the end and may run either
/// way.
struct T_COMPLEX_POLYGON2D {
    MArray<T_POINT2D> Outer;
    MArray<MArray<T_POINT2D>> Inner;
};

} // namespace zvi::lib
