#pragma once

#include "zvi/Export.h"

namespace zvi::lib {

/// The points in which the tangents from `p` touch the ellipse x^2/a^2 + y^2/b^2 = 1, with axes[0] = a and axes[1] = b.
/// `out` has room for four doubles: x and y of the first contact, then of the second. Returns how many were written.
/// 0: p lies inside, or within 1e-8 of one of the four vertices. 1: p stands on a vertical tangent |p.x| = a (its
/// squares within 1e-8) with p.x or p.y exactly 0. Otherwise 2: of a vertical tangent first (p.x, 0), else first the
/// slope with the negative root. A point on the ellipse answers itself twice, or by rounding nothing. Semi-axes of zero
/// and NaN are not guarded.
ZVI_API int GetEllipseContactPoint(double const *axes, double const *p, double *out);

} // namespace zvi::lib
