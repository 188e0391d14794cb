#pragma once

#include "zvi/drawing/CoveredPartsDetail.h"
#include "zvi/drawing/FitEdgesDetail.h"
#include "zvi/drawing/PlanarMapDetail.h"
#include "zvi/drawing/ReadCurvesDetail.h"
#include "zvi/drawing/ThinFacesDetail.h"

#include <functional>
#include <vector>

namespace zvi::lib::drawing {

/// A drawing as a planar map whose faces enclose something, with all that was sorted out on the way.
struct DividedDrawing {
    UsableCurves curves;
    PlanarMap map;
    std::vector<Stretch> vanished; ///< curves that became one place
    std::vector<Stretch> repeated; ///< curves that are the same as an earlier one
    std::vector<DroppedEdge> dropped;
    std::vector<DrawingPoint> positions; ///< of each place that stands for a cluster, where that is put
    double snap = 0.0;                   ///< distance below which two places are one
    double tolerance = 0.0;              ///< to join by, or what rounding leaves of it where that is more
    double noWidth = 0.0;                ///< faces that are no wider enclose nothing
    CoveredCounts covered;
    FaceWalks walks; ///< along the faces of the map
    CurveEdges alongCurves;
};

/// Reads the curves, arranges them, and applies the tolerance to the map. `progress` is told the share that is done.
DividedDrawing DivideDrawing(std::vector<DrawingCurve> const &curves, DrawingOptions const &options,
                             std::function<void(double)> const &progress);

} // namespace zvi::lib::drawing
