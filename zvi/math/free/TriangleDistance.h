#pragma once

#include "zvi/Export.h"

namespace zvi::lib {

/// Smallest distance of the triangles `a` `b` `c` and `d` `e` `f` of space, their insides included: 0 where they meet
/// or one pierces the other. Points are three adjacent doubles; the result is in their units, right but for the
/// rounding of the coordinates, and not larger than the true one by more than that.
///
/// `onFirst` and `onSecond`, when given, receive a nearest place on each; there may be others as near.
/// Degenerate: a triangle whose corners lie on one line counts as the segment or point that it is.
/// Failure: NaN, and NaN places, when a coordinate is not a number or infinite; a distance beyond the range of numbers
/// is infinite.
ZVI_API double distance_triangles_3d(double const *a, double const *b, double const *c, double const *d,
                                     double const *e, double const *f, double *onFirst = nullptr,
                                     double *onSecond = nullptr);

} // namespace zvi::lib
