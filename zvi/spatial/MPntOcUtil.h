#pragma once

#include "zvi/Export.h"
#include "zvi/core/MVector.h"

namespace zvi::lib {

/// The two box tests of the point octree. Borders belong to the boxes; a coordinate that is not a number is in nothing.
class ZVI_API MPntOcUtil {
public:
    /// 1 if the point lies in the box from `low` to `high`, else 0.
    static int IsContained(MVector<double, 3> const &low, MVector<double, 3> const &high,
                           MVector<double, 3> const &point) {
        return IsCollisionAABB(low, high, point, point);
    }

    /// 1 if the two boxes share a point, else 0.
    static int IsCollisionAABB(MVector<double, 3> const &low1, MVector<double, 3> const &high1,
                               MVector<double, 3> const &low2, MVector<double, 3> const &high2) {
        bool const meet = low1[0] <= high2[0] && low2[0] <= high1[0] && low1[1] <= high2[1] && low2[1] <= high1[1] &&
                          low1[2] <= high2[2] && low2[2] <= high1[2];
        return meet ? 1 : 0;
    }
};

} // namespace zvi::lib
