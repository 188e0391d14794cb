#pragma once

#include "zvi/drawing/CutDrawingCurves.h"
#include "zvi/drawing/DivideDrawingDetail.h"
#include "zvi/drawing/FacesDetail.h"

namespace zvi::lib::drawing {

/// The faces as domains, and everything that bounds none with its reason. With `keepDuplicates` a border drawn twice
/// gives each of its two domains a curve of its own.
DrawingResult ReportDomains(DividedDrawing drawing, std::vector<Face> const &faces,
                            std::vector<DrawingCurve> const &curves, bool keepDuplicates, base::Workers const &workers);

/// All that is left of the curves, in their order and along them.
DrawingPieces ReportPieces(DividedDrawing const &drawing, std::vector<DrawingCurve> const &curves, bool keepDuplicates);

} // namespace zvi::lib::drawing
