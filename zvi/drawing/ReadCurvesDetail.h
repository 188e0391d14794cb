#pragma once

#include "zvi/drawing/ShortestFirstDetail.h"
#include "zvi/drawing/StretchDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// What can be used of the caller's curves, and the distances that follow from their size.
struct UsableCurves {
    std::vector<Stretch> stretches;         ///< whole curves, in the order in which they came
    std::vector<DrawingLeftover> leftovers; ///< those that describe no curve or have no length
    Landmarks landmarks;
    double rounding = 0.0;  ///< what rounding alone accounts for, at the size of the coordinates
    double tolerance = 0.0; ///< the join tolerance as asked, 0 when it is not positive
};

/// Sorts out the curves that can be used. An arc whose written ends miss its circle is bent to meet them, and one that
/// rises by no more than rounding is a line.
UsableCurves ReadCurves(std::vector<DrawingCurve> const &curves, double joinTolerance);

} // namespace zvi::lib::drawing
