#pragma once

#include "zvi/Export.h"

// Cells drawn a little smaller than they are, so that their borders come apart. Each corner p moves toward the mean g
// of all corners of the cell: out = g + (p - g) * ratio. A ratio of 1 keeps the cell and 0 gathers it in g; others
// extrapolate. Corners are rows of x, y, z; `out` may be `corners`.

namespace zvi::lib {

/// Two ends.
ZVI_API void line_shrinkage(double const (*corners)[3], double ratio, double (*out)[3]);
/// Three corners.
ZVI_API void triangle_shrinkage(double const (*corners)[3], double ratio, double (*out)[3]);
/// Four corners of a tetrahedron.
ZVI_API void tetrahedron_shrinkage(double const (*corners)[3], double ratio, double (*out)[3]);
/// Six corners of a wedge, a pentahedron with two triangles and three quadrilaterals.
ZVI_API void pentahedron_shrinkage(double const (*corners)[3], double ratio, double (*out)[3]);
/// Eight corners of a hexahedron.
ZVI_API void hexahedron_shrinkage(double const (*corners)[3], double ratio, double (*out)[3]);

} // namespace zvi::lib
