#pragma once

#include "zvi/Export.h"

// Whether a point lies on a segment, told by the angle at the point and not by a distance: with c the cosine of the
// angle under which the point sees the two ends, it is on the segment when c is -1 within the tolerance. A point within
// 1e-8 of an end sees no angle: `is_on_line` then answers true and `is_in_line` false. Coincident ends are seen under a
// cosine of 1, so every other point is off. NaN coordinates give false.

namespace zvi::lib {

/// True at the ends, else if |c + 1| < tol, strictly.
ZVI_API bool is_on_line_2d(double x1, double y1, double x2, double y2, double x, double y, double tol);
/// The same of three points.
ZVI_API bool is_on_line_2d(double const *p1, double const *p2, double const *pt, double tol);
/// True at the ends, else if -1 - tol <= c <= tol - 1. The twin in the plane is strict; the difference is kept.
ZVI_API bool is_on_line_3d(double x1, double y1, double z1, double x2, double y2, double z2, double x, double y,
                           double z, double tol);
/// The same of three points.
ZVI_API bool is_on_line_3d(double const *p1, double const *p2, double const *pt, double tol);

/// False at the ends, else if -1 - tol <= c <= tol - 1.
ZVI_API bool is_in_line_2d(double x1, double y1, double x2, double y2, double x, double y, double tol);
/// The same of three points.
ZVI_API bool is_in_line_2d(double const *p1, double const *p2, double const *pt, double tol);
/// The same in space.
ZVI_API bool is_in_line_3d(double x1, double y1, double z1, double x2, double y2, double z2, double x, double y,
                           double z, double tol);
/// The same of three points.
ZVI_API bool is_in_line_3d(double const *p1, double const *p2, double const *pt, double tol);

} // namespace zvi::lib
