#pragma once

#include "zvi/base/Workers.h"
#include "zvi/drawing/StretchDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// A direction and a size that move with a drawing: how it is turned, mirrored, moved or ordered does not change where
/// its places lie along them.
struct Landmarks {
    DrawingPoint middle;    ///< of the curves
    DrawingPoint direction; ///< so slanting that hardly any two places of a drawing lie across it
    double size = 0.0;      ///< mean distance of the curves from the middle and their mean length on top, by length

    /// Tells places apart by how far they lie along the direction.
    double Rank(DrawingPoint p) const { return Dot(p - middle, direction); }
};

/// The direction follows the first of the moments of the curves that is not 0 when seen from the middle, and the others
/// settle what that leaves open. A drawing that they all leave open is symmetric, so that any choice gives the same.
Landmarks LandmarksOf(std::vector<Stretch> const &stretches, base::Workers const &workers);

} // namespace zvi::lib::drawing
