#pragma once

#include "zvi/Export.h"

// Where lines meet lines and faces, in the free family. Points are three adjacent doubles, two in the operations named
// 2d. Segments run from a to b and from c to d. Each operation answers false for parallel and overlapping lines and for
// NaN coordinates, and each `intersect` operation for a segment shorter than 1e-8.

namespace zvi::lib {

/// True only if the ends of each segment lie strictly on opposite sides of the other: segments that touch, share an
/// end, overlap or have no length do not cross. There is no tolerance.
ZVI_API bool check_line_line_intersection_2d(double const *a, double const *b, double const *c, double const *d);

/// Where the lines from (x1, y1) to (x2, y2) and from (x3, y3) to (x4, y4) meet, as fractions `s` of the first and `t`
/// of the second. True if both lie strictly between -1e-8 and 1.00000001. The fractions are also written when the lines
/// meet outside the segments; they stay as they were for short or parallel ones (determinant below 1e-8).
ZVI_API bool intersect_line_line_2d(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
                                    double y4, double &s, double &t);
/// The same of the segments ab and cd.
ZVI_API bool intersect_line_line_2d(double const *a, double const *b, double const *c, double const *d, double &s,
                                    double &t);
/// The same, with the point a + s (b - a) written to `out` on success only.
ZVI_API bool intersect_line_line_2d(double const *a, double const *b, double const *c, double const *d, double *out);
/// Where the infinite lines meet; the point is taken on the second. False, with nothing written, if the sine of their
/// angle is below 1e-8.
ZVI_API bool intersect_line_line_2d_extension(double const *a, double const *b, double const *c, double const *d,
                                              double *out);

/// Where two segments in space meet. They may miss a common plane by 0.001; the point lies on the line of the second
/// and must lie on both segments by `is_on_line_3d` with 1e-8. On false the point may have been written: it is,
/// whenever the lines are coplanar and not parallel.
ZVI_API bool intersect_line_line_3d(double const *a, double const *b, double const *c, double const *d, double *out);
/// The same with `tol` for the plane and for `is_on_line_3d`, and a weaker look at the plane beforehand: it fails only
/// if d is off the plane a, b, c and c is off the plane a, b, d.
ZVI_API bool intersect_line_line_3d_withTol(double const *a, double const *b, double const *c, double const *d,
                                            double *out, double tol);
/// Where two infinite lines in space meet, the point taken on the second. Their distance times the sine of their angle
/// may be up to 0.001; otherwise false with nothing written.
ZVI_API bool intersect_line_line_3d_extension(double const *a, double const *b, double const *c, double const *d,
                                              double *out);

/// True if the segment l1 to l2, ends included within 1e-8 of its length, meets the triangle. False for a triangle with
/// an edge or a normal (unnormalised) below 1e-8, and for a segment that rises less than 1e-8 over the plane.
ZVI_API bool intersect_triangle_line_3d(double const *t1, double const *t2, double const *t3, double const *l1,
                                        double const *l2);
/// True if the segment meets the triangle q1, q2, q3 or the triangle q1, q3, q4.
ZVI_API bool intersect_quadrilateral_line_3d(double const *q1, double const *q2, double const *q3, double const *q4,
                                             double const *l1, double const *l2);

} // namespace zvi::lib
