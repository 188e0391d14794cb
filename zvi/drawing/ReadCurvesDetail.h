#pragma once

#include "zvi/drawing/ShortestFirstDetail.h"
#include "zvi/drawing/StretchDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// What can be used of the caller's curves, and the distances that follow from their size.
struct UsableCurves {
    std::vector<Stretch> stretches;         ///< whole curves, in an order that moves with the drawing
    std::vector<DrawingLeftover> leftovers; ///< those that describe no curve or have no length
    Landmarks landmarks;
    double rounding = 0.0;  ///< what rounding alone accounts for, at the size of the coordinates
    double tolerance = 0.0; ///< the join tolerance as asked, 0 when it is not positive
};

/// Sorts out the curves that can be used, and puts them into an order of their own, so that the one in which they came
/// settles only which of two equal ones is the duplicate. An arc whose written ends miss its circle is bent to meet
/// them, and one that rises by no more than rounding is a line.
UsableCurves ReadCurves(std::vector<DrawingCurve> const &curves, double joinTolerance, base::Workers const &workers);

} // namespace zvi::lib::drawing
