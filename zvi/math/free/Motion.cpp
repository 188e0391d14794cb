#include "zvi/math/free/Motion.h"

#include "zvi/math/elementary/Elementary.h"
#include "zvi/math/free/Distance.h"
#include "zvi/math/free/FreeFamilyDetail.h"
#include "zvi/math/free/Product.h"
#include "zvi/math/free/Scalar.h"
#include "zvi/math/small/SmallMatrix.h"

namespace zvi::lib {

using math::kLengthZero;

namespace {

/// Turns the coordinates (first, second) of p, the first toward the second, and copies the third.
void RotateInPlane(double const *p, double degrees, int first, int second, double *out) {
    double const c = Cos(radian(degrees));
    double const s = Sin(radian(degrees));
    int const third = 3 - first - second;
    double const x = p[first] * c - p[second] * s;
    double const y = p[first] * s + p[second] * c;
    out[third] = p[third];
    out[first] = x;
    out[second] = y;
}

void MirrorCoordinate(double const *p, int axis, double *out) {
    math::Copy3(p, out);
    out[axis] = -out[axis];
}

} // namespace

void translate_2d(double const *p, double const *offset, double *out) {
    for (int i = 0; i < 2; ++i)
        out[i] = p[i] + offset[i];
}

void translate_3d(double const *p, double const *offset, double *out) {
    for (int i = 0; i < 3; ++i)
        out[i] = p[i] + offset[i];
}

void rotate_2d(double const *p, double degrees, double *out) {
    double const c = Cos(radian(degrees));
    double const s = Sin(radian(degrees));
    double const x = p[0] * c - p[1] * s;
    double const y = p[0] * s + p[1] * c;
    out[0] = x;
    out[1] = y;
}

void rotate_2d(double const *p, double const *center, double degrees, double *out) {
    double const origin[2] = {center[0], center[1]};
    double const offset[2] = {p[0] - origin[0], p[1] - origin[1]};
    double turned[2];
    rotate_2d(offset, degrees, turned);
    translate_2d(turned, origin, out);
}

void rotate_about_x_axis_3d(double const *p, double degrees, double *out) {
    RotateInPlane(p, degrees, 1, 2, out);
}

void rotate_about_y_axis_3d(double const *p, double degrees, double *out) {
    RotateInPlane(p, degrees, 2, 0, out);
}

void rotate_about_z_axis_3d(double const *p, double degrees, double *out) {
    RotateInPlane(p, degrees, 0, 1, out);
}

void rotate_about_general_axis_3d(double const *p, double const *base, double const *axis, double degrees,
                                  double *out) {
    double const length = norm_3d(axis);
    if (length < kLengthZero) {
        math::Copy3(p, out);
        return;
    }
    double const u[3] = {axis[0] / length, axis[1] / length, axis[2] / length};
    double const c = Cos(radian(degrees));
    double const s = Sin(radian(degrees));
    double q[3];
    double cross[3];
    Subtract(p, base, q);
    cross_product_3d(u, q, cross);
    double const along = math::Dot3(u, q) * (1.0 - c);
    for (int i = 0; i < 3; ++i)
        out[i] = base[i] + (q[i] * c + cross[i] * s + u[i] * along);
}

void mirror_2d(double const *p, double const *a, double const *b, double *out) {
    double const length = distance_2d(a, b);
    if (length < kLengthZero) {
        math::Copy2(p, out);
        return;
    }
    double const u[2] = {(b[0] - a[0]) / length, (b[1] - a[1]) / length};
    double const along = (p[0] - a[0]) * u[0] + (p[1] - a[1]) * u[1];
    double const mirrored[2] = {2.0 * (a[0] + along * u[0]) - p[0], 2.0 * (a[1] + along * u[1]) - p[1]};
    math::Copy2(mirrored, out);
}

void mirror_through_xy_plane(double const *p, double *out) {
    MirrorCoordinate(p, 2, out);
}

void mirror_through_yz_plane(double const *p, double *out) {
    MirrorCoordinate(p, 0, out);
}

void mirror_through_zx_plane(double const *p, double *out) {
    MirrorCoordinate(p, 1, out);
}

void transform_2d(double const *p, double const (*matrix)[2], double const *offset, double *out) {
    double product[2];
    multiply_matrix_2x2_vector_2x1(matrix, p, product);
    translate_2d(product, offset, out);
}

void transform_3d(double const *p, double const (*matrix)[3], double const *offset, double *out) {
    double product[3];
    multiply_matrix_3x3_vector_3x1(matrix, p, product);
    translate_3d(product, offset, out);
}

bool inverse_transform_2d(double const *p, double const (*matrix)[2], double const *offset, double *out) {
    double inverse[2][2];
    if (!inverse_matrix_2x2(matrix, inverse))
        return false;
    double const moved[2] = {p[0] - offset[0], p[1] - offset[1]};
    multiply_matrix_2x2_vector_2x1(inverse, moved, out);
    return true;
}

bool inverse_transform_3d(double const *p, double const (*matrix)[3], double const *offset, double *out) {
    double inverse[3][3];
    if (!inverse_matrix_3x3(matrix, inverse))
        return false;
    double const moved[3] = {p[0] - offset[0], p[1] - offset[1], p[2] - offset[2]};
    multiply_matrix_3x3_vector_3x1(inverse, moved, out);
    return true;
}

} // namespace zvi::lib
