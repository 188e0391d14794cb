#pragma once

#include "zvi/Export.h"
#include "zvi/core/MVector.h"

namespace zvi::lib {

/// Box in space. The order of the fields, both x first, differs from `T_REGION2D_G` on purpose: stored records and
/// trees rely on each.
struct ZVI_API T_MBR3D {
    double MinX = 0.0; ///< lowest x
    double MaxX = 0.0; ///< highest x
    double MinY = 0.0; ///< lowest y
    double MaxY = 0.0; ///< highest y
    double MinZ = 0.0; ///< lowest z
    double MaxZ = 0.0; ///< highest z

    /// Makes all six sides 0.
    void Initialize();
    /// Box of two points, grown by `tol` on all six sides.
    void Set(MVector<double, 3> const &p1, MVector<double, 3> const &p2, double tol);
    /// Cube around `center` that holds the circle through `p1`: half side r + `tol` on all three axes, z included, with
    /// r the plan distance from `center` to `p1`. The second point is ignored.
    void SetWithCurv(MVector<double, 3> const &p1, MVector<double, 3> const &p2, double tol,
                     MVector<double, 3> const &center);
    /// 1 if the point is inside or on the border.
    int IsInnerPoint(MVector<double, 3> const &p) const;
    /// 1 if the boxes share at least a border.
    int IsOverlap(T_MBR3D const &other) const;
    /// Moves each side that the point lies beyond, to the point's coordinate less or plus `tol`. A point inside changes
    /// nothing.
    void UpdateWith(double x, double y, double z, double tol);
};

} // namespace zvi::lib
