#include "zvi/math/Motion.h"

#include "tests/math/Near.h"
#include "zvi/math/MotionMatrix.h"
#include "zvi/math/Product.h"
#include "zvi/math/SmallMatrix.h"
#include "zvi/math/SmallVector.h"

#include <cmath>
#include <random>

namespace zvi::lib {

using test::ExpectNear;
using test::Xy;
using test::Xyz;

TEST(Motion, QuarterTurnsAreRightHanded) {
    double const p[3] = {1, 2, 3};
    double const axes[3][3] = {{4, 0, 0}, {0, 4, 0}, {0, 0, 4}};
    Xyz const expected[3] = {{1, -3, 2}, {3, 2, -1}, {-2, 1, 3}};
    double const origin[3] = {0, 0, 0};
    void (*const turns[])(double const *, double, double *) = {rotate_about_x_axis_3d, rotate_about_y_axis_3d,
                                                               rotate_about_z_axis_3d};
    void (*const builders[])(double, double(*)[3]) = {rotation_matrix_about_x_axis_3d, rotation_matrix_about_y_axis_3d,
                                                      rotation_matrix_about_z_axis_3d};
    for (int i = 0; i < 3; ++i) {
        double out[3];
        double m[3][3];
        turns[i](p, 90.0, out);
        ExpectNear(out, expected[i]);
        rotate_about_general_axis_3d(p, origin, axes[i], 90.0, out);
        ExpectNear(out, expected[i]);
        builders[i](90.0, m);
        multiply_matrix_3x3_vector_3x1(m, p, out);
        ExpectNear(out, expected[i]);
    }
    double flat[2] = {1, 2};
    rotate_2d(flat, 90.0, flat);
    ExpectNear(flat, Xy{-2, 1});
    double const center[2] = {-2, 0};
    rotate_2d(flat, center, -90.0, flat);
    ExpectNear(flat, Xy{-1, 0});
    double m[2][2];
    rotation_matrix_2d(30.0, m);
    multiply_matrix_2x2_vector_2x1(m, center, flat);
    ExpectNear(flat, Xy{-std::sqrt(3.0), -1});
}

class RandomMotion : public testing::Test {
protected:
    void Fill(double *v, int count) {
        for (int i = 0; i < count; ++i)
            v[i] = m_coordinate(m_random);
    }
    double Degrees() { return 20.0 * m_coordinate(m_random); }

    std::mt19937_64 m_random{31};
    std::uniform_real_distribution<double> m_coordinate{-9.0, 9.0};
};

TEST_F(RandomMotion, GeneralAxisAgreesWithItsMatrix) {
    for (int round = 0; round < 100; ++round) {
        double p[3], base[3], axis[3], m[3][3], moved[3], turned[3], expected[3];
        Fill(p, 3);
        Fill(base, 3);
        Fill(axis, 3);
        double const degrees = Degrees();
        rotation_matrix_about_general_axis_3d(axis, degrees, m);
        Subtract(p, base, moved);
        transform_3d(moved, m, base, expected);
        rotate_about_general_axis_3d(p, base, axis, degrees, turned);
        ExpectNear(turned, Xyz{expected[0], expected[1], expected[2]});
        EXPECT_NEAR(determinant_matrix_3x3(m), 1.0, 1e-14);
        rotate_about_general_axis_3d(turned, base, axis, -degrees, turned);
        ExpectNear(turned, Xyz{p[0], p[1], p[2]});
    }
}

TEST_F(RandomMotion, EulerAnglesRebuildTheirMatrix) {
    double const special[][3] = {{0, 90, 0}, {0, -90, 40}, {0, 90, -170}, {180, 0, 180}, {-90, 45, 90}, {25, 90, 70}};
    for (int round = 0; round < 100; ++round) {
        double angles[3] = {Degrees(), Degrees(), Degrees()};
        if (round < 6)
            copy_vector_3x1(special[round], angles);
        double m[3][3], rebuilt[3][3];
        rotation_matrix_from_euler_angle(angles, m);
        euler_angle_from_rotation_matrix(m, angles);
        EXPECT_LE(std::abs(angles[1]), 90.0);
        rotation_matrix_from_euler_angle(angles, rebuilt);
        for (int i = 0; i < 3; ++i)
            ExpectNear(rebuilt[i], Xyz{m[i][0], m[i][1], m[i][2]}, 2e-8);
    }
}

TEST(Motion, EulerAnglesTurnAboutXThenYThenZ) {
    double const angles[3] = {90, 0, 90};
    double const p[3] = {0, 1, 0};
    double m[3][3], out[3];
    rotation_matrix_from_euler_angle(angles, m);
    multiply_matrix_3x3_vector_3x1(m, p, out); // x turns y to z, which the turn about z leaves
    ExpectNear(out, Xyz{0, 0, 1});
    double const within[3] = {-100, 80, 170};
    rotation_matrix_from_euler_angle(within, m);
    euler_angle_from_rotation_matrix(m, out);
    ExpectNear(out, Xyz{-100, 80, 170});
}

TEST(Motion, Mirrors) {
    double const p[3] = {1, 2, 3};
    double out[3];
    mirror_through_xy_plane(p, out);
    ExpectNear(out, Xyz{1, 2, -3}, 0.0);
    mirror_through_yz_plane(p, out);
    ExpectNear(out, Xyz{-1, 2, 3}, 0.0);
    mirror_through_zx_plane(p, out);
    ExpectNear(out, Xyz{1, -2, 3}, 0.0);
    void (*const builders[])(double(*)[3]) = {mirror_matrix_through_yz_plane, mirror_matrix_through_zx_plane,
                                              mirror_matrix_through_xy_plane};
    for (int axis = 0; axis < 3; ++axis) {
        double normal[3] = {0, 0, 0};
        normal[axis] = -3.0;
        double m[3][3], general[3][3];
        builders[axis](m);
        mirror_matrix_through_general_plane(normal, general);
        for (int i = 0; i < 3; ++i)
            ExpectNear(general[i], Xyz{m[i][0], m[i][1], m[i][2]});
    }
    double const slant[3] = {1, 1, 0}; // the mirror that exchanges x and -y
    double m[3][3];
    mirror_matrix_through_general_plane(slant, m);
    multiply_matrix_3x3_vector_3x1(m, p, out);
    ExpectNear(out, Xyz{-2, -1, 3});
}

TEST(Motion, MirrorInThePlane) {
    double const a[2] = {1, 1};
    double const b[2] = {4, 5};
    double const p[2] = {0, 8}; // 5 along the line and 5 to its left
    double out[2];
    mirror_2d(p, a, b, out);
    ExpectNear(out, Xy{8, 2});
    double const direction[2] = {6, 8};
    double const q[2] = {-1, 7};
    double m[2][2];
    mirror_matrix_2d(direction, m);
    multiply_matrix_2x2_vector_2x1(m, q, out);
    ExpectNear(out, Xy{7, 1});
    mirror_2d(p, a, a, out);
    ExpectNear(out, Xy{0, 8}, 0.0);
}

TEST(Motion, NoAxisTurnsAndMirrorsNothing) {
    double const zero[3] = {0, 0, 9e-9};
    double const p[3] = {1, 2, 3};
    double out[3], m[3][3];
    rotate_about_general_axis_3d(p, p, zero, 33.0, out);
    ExpectNear(out, Xyz{1, 2, 3}, 0.0);
    rotation_matrix_about_general_axis_3d(zero, 33.0, m);
    EXPECT_EQ(determinant_matrix_3x3(m) + m[0][0] + m[1][1] + m[2][2], 4.0);
    mirror_matrix_through_general_plane(zero, m);
    EXPECT_EQ(m[0][0] + m[1][1] + m[2][2], 3.0);
}

TEST_F(RandomMotion, InverseTransformUndoesTheTransform) {
    for (int round = 0; round < 50; ++round) {
        double p[3], offset[3], m[3][3], m2[2][2], out[3];
        Fill(p, 3);
        Fill(offset, 3);
        Fill(m[0], 3);
        Fill(m[1], 3);
        Fill(m[2], 3);
        Fill(m2[0], 2);
        Fill(m2[1], 2);
        transform_3d(p, m, offset, out);
        ASSERT_TRUE(inverse_transform_3d(out, m, offset, out));
        ExpectNear(out, Xyz{p[0], p[1], p[2]}, 1e-9);
        transform_2d(p, m2, offset, out);
        ASSERT_TRUE(inverse_transform_2d(out, m2, offset, out));
        ExpectNear(out, Xy{p[0], p[1]}, 1e-9);
    }
    double const singular[2][2] = {{1, 2}, {2, 4}};
    double const singular3[3][3] = {{1, 2, 3}, {2, 4, 6}, {0, 1, 0}};
    double out[3] = {8, 8, 8};
    EXPECT_FALSE(inverse_transform_2d(out, singular, out, out));
    EXPECT_FALSE(inverse_transform_3d(out, singular3, out, out));
    EXPECT_EQ(out[0], 8.0);
}

TEST(Motion, LocalAxesAreTheColumns) {
    double const local[2][2] = {{0, -1}, {1, 0}}; // local x points up
    double const origin[2] = {10, 20};
    double const p[2] = {2, 0};
    double out[2];
    transform_2d(p, local, origin, out);
    ExpectNear(out, Xy{10, 22});
}

} // namespace zvi::lib
