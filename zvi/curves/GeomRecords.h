#pragma once

#include "zvi/core/MArray.h"

namespace zvi::lib {

/// A point of the plane.
struct T_POINT2D {
    double x = 0.0; ///< to the right
    double y = 0.0; ///< upwards
};

/// A point of space.
struct T_POINT3D {
    double x = 0.0; ///< along the first axis
    double y = 0.0; ///< along the second axis
    double z = 0.0; ///< along the third axis, upwards
};

/// A directed segment of the plane from (x1, y1) to (x2, y2).
struct T_LINE2D {
    double x1 = 0.0; ///< of the start
    double y1 = 0.0; ///< of the start
    double x2 = 0.0; ///< of the end
    double y2 = 0.0; ///< of the end
};

/// A box of the plane, both minima first.
struct T_REGION2D {
    double MinX = 0.0; ///< left side
    double MinY = 0.0; ///< lower side
    double MaxX = 0.0; ///< right side
    double MaxY = 0.0; ///< upper side
};

/// A region with holes for the calculation of areas: every ring repeats its first point at the end and may run either
/// way.
struct T_COMPLEX_POLYGON2D {
    MArray<T_POINT2D> Outer;         ///< the border of the region
    MArray<MArray<T_POINT2D>> Inner; ///< the borders of its holes
};

} // namespace zvi::lib
