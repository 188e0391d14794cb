#pragma once

#include "zvi/drawing/DrawingRecords.h"

#include <vector>

namespace zvi::app {

/// The ends of dangling pieces that hang in the air: nothing else comes nearer than `reach`, in drawing units.
std::vector<lib::DrawingPoint> FreeEnds(lib::DrawingResult const &result, double reach);

} // namespace zvi::app
