#pragma once

#include "zvi/Export.h"

// Moving points. Angles are in degrees and right-handed: a positive one turns counter-clockwise as seen from the head
// of its axis, x toward y in the plane. Points are columns, two adjacent doubles in the operations named 2d and three
// otherwise. `out` may be the point itself. NaN passes through.

namespace zvi::lib {

/// out = p + offset.
ZVI_API void translate_2d(double const *p, double const *offset, double *out);
/// The same in space.
ZVI_API void translate_3d(double const *p, double const *offset, double *out);

/// About the origin: out = (x cos - y sin, x sin + y cos).
ZVI_API void rotate_2d(double const *p, double degrees, double *out);
/// About `center`: out = center + R (p - center).
ZVI_API void rotate_2d(double const *p, double const *center, double degrees, double *out);
/// About the x axis: y' = y cos - z sin, z' = y sin + z cos.
ZVI_API void rotate_about_x_axis_3d(double const *p, double degrees, double *out);
/// About the y axis: x' = x cos + z sin, z' = z cos - x sin.
ZVI_API void rotate_about_y_axis_3d(double const *p, double degrees, double *out);
/// About the z axis: x' = x cos - y sin, y' = x sin + y cos.
ZVI_API void rotate_about_z_axis_3d(double const *p, double degrees, double *out);
/// About the axis through `base` along `axis`, of any length. With u the unit axis and q = p - base,
/// out = base + q cos + (u x q) sin + u (u . q) (1 - cos), the formula of Rodrigues. An axis shorter than 1e-8 turns
/// nothing.
ZVI_API void rotate_about_general_axis_3d(double const *p, double const *base, double const *axis, double degrees,
                                          double *out);

/// Through the line a to b: out = 2 f - p with f the foot of p on the line. Coincident a and b (within 1e-8) are no
/// line and leave p as it is.
ZVI_API void mirror_2d(double const *p, double const *a, double const *b, double *out);
/// z changes its sign.
ZVI_API void mirror_through_xy_plane(double const *p, double *out);
/// x changes its sign.
ZVI_API void mirror_through_yz_plane(double const *p, double *out);
/// y changes its sign.
ZVI_API void mirror_through_zx_plane(double const *p, double *out);

/// out = matrix p + offset: from local coordinates to global ones when the columns of the matrix are the local axes and
/// `offset` is the local origin.
ZVI_API void transform_2d(double const *p, double const (*matrix)[2], double const *offset, double *out);
/// The same in space.
ZVI_API void transform_3d(double const *p, double const (*matrix)[3], double const *offset, double *out);
/// out = matrix^-1 (p - offset): undoes `transform_2d`. False, with nothing written, for a matrix that
/// `inverse_matrix_2x2` does not invert.
ZVI_API bool inverse_transform_2d(double const *p, double const (*matrix)[2], double const *offset, double *out);
/// Undoes `transform_3d` in the same way.
ZVI_API bool inverse_transform_3d(double const *p, double const (*matrix)[3], double const *offset, double *out);

} // namespace zvi::lib
