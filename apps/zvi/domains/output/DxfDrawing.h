#pragma once

#include "apps/zvi/domains/model/DrawingInput.h"

#include "zvi/drawing/DrawingRecords.h"

#include <string>

namespace zvi::app {

/// What a drawing of the domains holds.
struct DxfForm {
    bool cut = false;       ///< the pieces of the borders, each once, instead of closed loops
    bool leftovers = false; ///< what is left over as well
};

/// The layer of what is left over, with "_" behind it as often as the drawing has such a layer itself.
inline constexpr char const *kLeftoverLayer = "LEFTOVERS";

/// The domains as an ASCII DXF drawing (AC1015). Every loop is a closed LWPOLYLINE with bulges on the layer that most
/// of the border of its domain is drawn on, with extended data of the application ZVI: "domain" or "hole of domain",
/// and its number. Pieces are LINE, ARC and CIRCLE on the layers of their curves. Layers have their colours, and all
/// are on. Coordinates read back to the last bit, but for the ends of an ARC, which the format gives as angles.
std::string DxfDrawing(DrawingInput const &input, lib::DrawingResult const &result, DxfForm const &form = {});

} // namespace zvi::app
