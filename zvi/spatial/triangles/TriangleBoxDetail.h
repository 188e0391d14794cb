#pragma once

#include "zvi/Export.h"

#include <array>

namespace zvi::lib::spatial {

/// Three coordinates in single precision.
using FloatPoint = std::array<float, 3>;

/// Whether a triangle touches a cube of half edge `half` around the origin: the separating axis test of T. Akenine-
/// Moeller, "Fast 3D Triangle-Box Overlap Testing", Journal of Graphics Tools 6 (2001), in `float` as it stands there,
/// but the three axes of the cube come first.
ZVI_API bool TouchesCube(std::array<FloatPoint, 3> const &corners, float half);

} // namespace zvi::lib::spatial
