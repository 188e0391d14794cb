#pragma once

#include "zvi/drawing/DivideDrawingDetail.h"
#include "zvi/drawing/FacesDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// Drops the longest edge of each face that what stands inside it leaves no area. A wide tolerance may have moved the
/// border of one into that of the other. Returns whether there was such a face: then the faces are others.
bool DropOverfullFaces(DividedDrawing &drawing, std::vector<Face> const &faces, base::Workers const &workers);

} // namespace zvi::lib::drawing
