#pragma once

#include "zvi/drawing/DrawingRecords.h"

#include <string>

namespace zvi::app {

/// The domains as an ASCII DXF drawing (AC1015): every loop a closed LWPOLYLINE with bulges, a domain's outer loop and
/// its holes on the layer DOMAIN_1, DOMAIN_2, ... of its number. `units` as DrawingInput has them. Coordinates read
/// back to the last bit.
std::string DxfDrawing(lib::DrawingResult const &result, std::string const &units);

} // namespace zvi::app
