#pragma once

#include "zvi/Export.h"

// Feet on lines and planes in the free family. Points are three adjacent doubles. The plane operations move `p` in
// place and have no result: where there is no foot, p stays as it was. NaN coordinates give NaN.

namespace zvi::lib {

/// The foot of `p` on the infinite line through `a` and `b`. A point on the segment by `is_on_line_3d` with 1e-8 comes
/// back unchanged. Otherwise the foot is found through the angle at a in degrees, so it carries the snap of `angle_2d`:
/// seen from a within 0.008 degrees of the line, p lands at its full distance from a. If a and b coincide the foot is
/// a. `out` may be `p`.
ZVI_API void project_on_line(double const *a, double const *b, double const *p, double *out);
/// Moves `p` onto the plane through three points along its normal. A cross product (b - a) x (c - a) whose square is
/// below 1e-8 leaves p as it is.
ZVI_API void project_on_plane_normal(double const *a, double const *b, double const *c, double *p);
/// Moves `p` onto the plane through `point` with the normal `normal`, of any length whose square is at least 1e-8.
ZVI_API void project_on_plane_normal(double const *point, double const *normal, double *p);
/// Moves `p` along `dir` onto the plane through three points. A direction shorter than 1e-8 counts as the plane's
/// normal. A direction whose sine against the plane is below 1e-8, and collinear points, leave p as it is.
ZVI_API void project_on_plane_vector(double const *a, double const *b, double const *c, double const *dir, double *p);

} // namespace zvi::lib
