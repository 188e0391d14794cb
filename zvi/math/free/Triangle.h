#pragma once

#include "zvi/Export.h"

// Triangles and quadrilaterals of the free family: tests, areas, circles. Points are three adjacent doubles, two in the
// operations named 2d. NaN coordinates give false, or NaN for an area.

namespace zvi::lib {

/// True if `p` is within `tol` of a corner, or on an edge by `is_on_line_2d` with `tol`, or inside: the angles under
/// which p sees the three edges add up to more than 350 degrees. A triangle without area holds only its border.
ZVI_API bool is_in_triangle_2d(double const *a, double const *b, double const *c, double const *p, double tol);
/// The same for the foot of `p` on the plane of the triangle; the height of p over the plane plays no part. Corners on
/// one line leave no plane: only the place of p along ab counts then, and if a and b coincide every p is in.
ZVI_API bool is_in_triangle_3d(double const *a, double const *b, double const *c, double const *p, double tol);
/// True if d, e and f each lie within `tol` of the plane through a, b and c. Collinear a, b, c agree with everything.
ZVI_API bool are_coplanar_3d(double const *a, double const *b, double const *c, double const *d, double const *e,
                             double const *f, double tol);

/// ((b - a) x (c - a)) / 2: positive for a counter-clockwise triangle.
ZVI_API double signed_triangle_area_2d(double const *a, double const *b, double const *c);
/// The absolute value of the signed area.
ZVI_API double triangle_area_2d(double const *a, double const *b, double const *c);
/// |(b - a) x (c - a)| / 2.
ZVI_API double triangle_area_3d(double const *a, double const *b, double const *c);
/// |(c - a) x (d - b)| / 2, for corners in order round any quadrilateral whose sides do not cross, convex or not.
ZVI_API double quadrilateral_area_2d(double const *a, double const *b, double const *c, double const *d);
/// The same in space. A warped quadrilateral answers the area of its projection along its mean normal.
ZVI_API double quadrilateral_area_3d(double const *a, double const *b, double const *c, double const *d);

/// The circle through three points: with u = b - a, v = c - a and D = 2 (u x v), the centre is
/// a + ((v.y |u|^2 - u.y |v|^2) / D, (u.x |v|^2 - v.x |u|^2) / D), and the radius its distance from a. False, with
/// nothing written, for points that coincide or are collinear: the triangle's height over its longest edge is below
/// 1e-12 of that edge.
ZVI_API bool circumscribed_circle_2d(double const *a, double const *b, double const *c, double *center, double &radius);
/// The circle that touches the three edges from inside: with la, lb, lc the lengths of the edges opposite a, b and c,
/// the centre is (la a + lb b + lc c) / (la + lb + lc) and the radius 2 area / (la + lb + lc). False as above.
ZVI_API bool inscribed_circle_2d(double const *a, double const *b, double const *c, double *center, double &radius);

} // namespace zvi::lib
