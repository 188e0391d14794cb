#pragma once

#include "zvi/drawing/DivideDrawingDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// The loose ends that miss another curve by the join tolerance or more, up to a hundredth of the drawing's size and to
/// the length of their own edge, each with the nearest one; nearest first, and two ends that miss each other once.
std::vector<DrawingGap> FindGaps(DividedDrawing const &drawing, std::vector<DrawingCurve> const &curves,
                                 base::Workers const &workers);

} // namespace zvi::lib::drawing
