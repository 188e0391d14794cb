#pragma once

#include "zvi/Export.h"
#include "zvi/curves/T_REGION2D_G.h"

namespace zvi::lib {

// Both records are packed: clients store them as the bytes of their fields, without gaps.
#pragma pack(push, 1)

/// The arc fields of a `T_LINE2D_G`.
struct T_ARC2D_INFO {
    int IsCurv = 0;                ///< 0 for a line, nonzero for an arc
    double Center[2] = {0.0, 0.0}; ///< centre of the arc
    double Radius = 0.0;           ///< 0 for a line
    int IsCCW = 1;                 ///< nonzero for an arc that runs counter-clockwise
};

/// A line or an arc of the plane. An arc runs from `Pos1` to `Pos2`, counter-clockwise when `IsCCW` is nonzero.
struct ZVI_API T_LINE2D_G {
    double Pos1[2] = {0.0, 0.0};   ///< start
    double Pos2[2] = {0.0, 0.0};   ///< end
    int IsCurv = 0;                ///< 0 for a line, nonzero for an arc
    double Center[2] = {0.0, 0.0}; ///< centre of the arc
    double Radius = 0.0;           ///< 0 for a line
    int IsCCW = 1;                 ///< nonzero for an arc that runs counter-clockwise

    /// Resets `IsCurv`, `Radius` and `IsCCW` to 0, 0 and 1 and leaves the points and the centre as they are.
    void Initialize();
    /// A line. The centre keeps what it had.
    T_LINE2D_G &Set(double const *p1, double const *p2);
    /// An arc (a line when `isCurv` is 0) whose radius is the distance from `center` to `p1`.
    T_LINE2D_G &Set(double const *p1, double const *p2, int isCurv, double const *center, int isCCW);
    /// The arc fields as they are in `arc`.
    T_LINE2D_G &Set(double const *p1, double const *p2, T_ARC2D_INFO const &arc);
    /// Box of the curve, grown by `tol` on all four sides. Always 1.
    int GetMBR2D(T_REGION2D_G &region, double tol) const;
};

#pragma pack(pop)

} // namespace zvi::lib
