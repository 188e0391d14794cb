#pragma once

#include "zvi/drawing/DivideDrawingDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// The loose ends that miss another curve by up to a hundred join tolerances, each with the nearest one.
std::vector<DrawingGap> FindGaps(DividedDrawing const &drawing, std::vector<DrawingCurve> const &curves);

} // namespace zvi::lib::drawing
