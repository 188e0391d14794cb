#pragma once

#include "zvi/drawing/DivideDrawingDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// A part of a dropped edge, and the edge of the map that it lies on.
struct KeptDuplicate {
    Stretch stretch; ///< between the places of that edge
    int original = 0;
    bool isReversed = false; ///< it runs against that edge
};

/// The dropped edges that lie on edges that are left, cut where those are cut, in the order of their curves; `rest`
/// gets the others, and those that would have to go two tolerances for it.
std::vector<KeptDuplicate> KeptDuplicates(DividedDrawing const &drawing, std::vector<int> &rest);

} // namespace zvi::lib::drawing
