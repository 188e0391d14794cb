#include "zvi/math/free/MotionMatrix.h"

#include "zvi/math/elementary/Elementary.h"
#include "zvi/math/free/Distance.h"
#include "zvi/math/free/FreeFamilyDetail.h"
#include "zvi/math/free/Scalar.h"
#include "zvi/math/small/SmallMatrix.h"

namespace zvi::lib {

using math::kLengthZero;

namespace {

/// A cosine of the middle Euler angle below it leaves one axis for the outer two to turn about.
constexpr double kGimbalLock = 1e-8;

/// The identity, but for a turn that carries the axis `first` toward the axis `second`.
void SetPlaneTurn(double degrees, int first, int second, double (*m)[3]) {
    double const c = Cos(radian(degrees));
    double const s = Sin(radian(degrees));
    identity_matrix_3x3(m);
    m[first][first] = c;
    m[first][second] = -s;
    m[second][first] = s;
    m[second][second] = c;
}

void SetMirrorOfAxis(int axis, double (*m)[3]) {
    identity_matrix_3x3(m);
    m[axis][axis] = -1.0;
}

} // namespace

void rotation_matrix_2d(double degrees, double (*m)[2]) {
    double const c = Cos(radian(degrees));
    double const s = Sin(radian(degrees));
    m[0][0] = c;
    m[0][1] = -s;
    m[1][0] = s;
    m[1][1] = c;
}

void rotation_matrix_about_x_axis_3d(double degrees, double (*m)[3]) {
    SetPlaneTurn(degrees, 1, 2, m);
}

void rotation_matrix_about_y_axis_3d(double degrees, double (*m)[3]) {
    SetPlaneTurn(degrees, 2, 0, m);
}

void rotation_matrix_about_z_axis_3d(double degrees, double (*m)[3]) {
    SetPlaneTurn(degrees, 0, 1, m);
}

void rotation_matrix_about_general_axis_3d(double const *axis, double degrees, double (*m)[3]) {
    identity_matrix_3x3(m);
    double const length = norm_3d(axis);
    if (length < kLengthZero)
        return;
    double const u = axis[0] / length;
    double const v = axis[1] / length;
    double const w = axis[2] / length;
    double const c = Cos(radian(degrees));
    double const s = Sin(radian(degrees));
    double const k = 1.0 - c;
    double const rows[3][3] = {{u * u * k + c, u * v * k - w * s, u * w * k + v * s},
                               {u * v * k + w * s, v * v * k + c, v * w * k - u * s},
                               {u * w * k - v * s, v * w * k + u * s, w * w * k + c}};
    copy_matrix_3x3(rows, m);
}

void rotation_matrix_from_euler_angle(double const *angles, double (*m)[3]) {
    double turnY[3][3];
    double turnZ[3][3];
    double const aboutY = angles[1];
    double const aboutZ = angles[2];
    rotation_matrix_about_x_axis_3d(angles[0], m);
    rotation_matrix_about_y_axis_3d(aboutY, turnY);
    rotation_matrix_about_z_axis_3d(aboutZ, turnZ);
    multiply_matrix_3x3_matrix_3x3(turnY, m, m);
    multiply_matrix_3x3_matrix_3x3(turnZ, m, m);
}

void euler_angle_from_rotation_matrix(double const (*m)[3], double *angles) {
    // The first column is (cos z cos y, sin z cos y, -sin y) and the last row (-sin y, cos y sin x, cos y cos x).
    double const cosineY = norm_2d(m[0][0], m[1][0]);
    angles[1] = degree(Atan2(-m[2][0], cosineY));
    if (cosineY < kGimbalLock) {
        angles[0] = 0.0;
        angles[2] = degree(Atan2(-m[0][1], m[1][1]));
        return;
    }
    angles[0] = degree(Atan2(m[2][1], m[2][2]));
    angles[2] = degree(Atan2(m[1][0], m[0][0]));
}

void mirror_matrix_2d(double const *direction, double (*m)[2]) {
    double const length = norm_2d(direction);
    identity_matrix_2x2(m);
    if (length < kLengthZero)
        return;
    double const u[2] = {direction[0] / length, direction[1] / length};
    for (int i = 0; i < 2; ++i) {
        for (int j = 0; j < 2; ++j)
            m[i][j] = 2.0 * u[i] * u[j] - (i == j ? 1.0 : 0.0);
    }
}

void mirror_matrix_through_xy_plane(double (*m)[3]) {
    SetMirrorOfAxis(2, m);
}

void mirror_matrix_through_yz_plane(double (*m)[3]) {
    SetMirrorOfAxis(0, m);
}

void mirror_matrix_through_zx_plane(double (*m)[3]) {
    SetMirrorOfAxis(1, m);
}

void mirror_matrix_through_general_plane(double const *normal, double (*m)[3]) {
    double const length = norm_3d(normal);
    identity_matrix_3x3(m);
    if (length < kLengthZero)
        return;
    double const n[3] = {normal[0] / length, normal[1] / length, normal[2] / length};
    for (int i = 0; i < 3; ++i) {
        for (int j = 0; j < 3; ++j)
            m[i][j] -= 2.0 * n[i] * n[j];
    }
}

} // namespace zvi::lib
