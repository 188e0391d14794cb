#pragma once

#include "zvi/core/MArray.h"

namespace zvi::lib {

/// Ends of curves nearer than this in both x and y become one vertex; in drawing units, whatever the drawing's size.
inline constexpr double kVtexMergeTolerance = 0.0001;

/// A point of the domain maker, in the units of the caller's curves.
struct DM_VTEX {
    double x; ///< to the right
    double y; ///< upwards
};

/// One closed loop.
struct DM_SURF_SUB {
    /// Vertex indices along the loop, the first repeated at the end: one entry more than `Curv` until the pieces of a
    /// refined curve are merged, and then still one more.
    zvi::MArray<int> Vtex;
    /// Edge indices while `MDomainMaker::MakeDomain` runs, the caller's curve ids in the result.
    zvi::MArray<int> Curv;
    /// 0 where the entry of `Curv` runs from its first vertex to its second, 1 the other way. Empty for a domain that
    /// no chord divided, and for a hole that was found after its domain.
    zvi::MArray<int> CurvDir;
};

/// A domain: the fields of the base describe its outer loop, which runs counter-clockwise; the holes run clockwise.
struct DM_SURF : DM_SURF_SUB {
    zvi::MArray<DM_SURF_SUB> Holes; ///< loops within the outer one that do not belong to the domain
};

} // namespace zvi::lib
