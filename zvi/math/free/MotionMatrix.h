#pragma once

#include "zvi/Export.h"

// Matrices that turn and mirror, for column vectors: multiply_matrix_3x3_vector_3x1(m, p, out) moves p. Angles are in
// degrees and right-handed. Matrices are rows of doubles. NaN passes through.

namespace zvi::lib {

/// In the plane: rows (cos, -sin), (sin, cos).
ZVI_API void rotation_matrix_2d(double degrees, double (*m)[2]);
/// About the x axis: rows (1, 0, 0), (0, cos, -sin), (0, sin, cos).
ZVI_API void rotation_matrix_about_x_axis_3d(double degrees, double (*m)[3]);
/// About the y axis: rows (cos, 0, sin), (0, 1, 0), (-sin, 0, cos).
ZVI_API void rotation_matrix_about_y_axis_3d(double degrees, double (*m)[3]);
/// About the z axis: rows (cos, -sin, 0), (sin, cos, 0), (0, 0, 1).
ZVI_API void rotation_matrix_about_z_axis_3d(double degrees, double (*m)[3]);
/// About the axis through the origin along `axis`, of any length: with u the unit axis,
/// m = I cos + [u]x sin + u u^T (1 - cos). An axis shorter than 1e-8 gives the identity.
ZVI_API void rotation_matrix_about_general_axis_3d(double const *axis, double degrees, double (*m)[3]);
/// About the fixed x axis by angles[0], then the fixed y axis by angles[1], then the fixed z axis by angles[2]:
/// m = Rz Ry Rx.
ZVI_API void rotation_matrix_from_euler_angle(double const *angles, double (*m)[3]);
/// The angles that `rotation_matrix_from_euler_angle` takes: angles[1] in -90..90, the others in -180..180. Near
/// angles[1] = +-90, where the cosine of it is below 1e-8, x and z turn about one axis: angles[0] is 0.0 then and
/// angles[2] holds the whole turn. `m` must be a rotation; of another matrix the answer is not defined.
ZVI_API void euler_angle_from_rotation_matrix(double const (*m)[3], double *angles);

/// Through the line through the origin along `direction`, of any length: with u its unit vector, m = 2 u u^T - I. A
/// direction shorter than 1e-8 gives the identity.
ZVI_API void mirror_matrix_2d(double const *direction, double (*m)[2]);
/// diag(1, 1, -1).
ZVI_API void mirror_matrix_through_xy_plane(double (*m)[3]);
/// diag(-1, 1, 1).
ZVI_API void mirror_matrix_through_yz_plane(double (*m)[3]);
/// diag(1, -1, 1).
ZVI_API void mirror_matrix_through_zx_plane(double (*m)[3]);
/// Through the plane through the origin with the normal `normal`, of any length: with n its unit vector,
/// m = I - 2 n n^T. A normal shorter than 1e-8 gives the identity.
ZVI_API void mirror_matrix_through_general_plane(double const *normal, double (*m)[3]);

} // namespace zvi::lib
