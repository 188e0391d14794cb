#include "zvi/math/free/Motion.h"

#include "tests/math/Near.h"
#include "zvi/math/free/MotionMatrix.h"
#include "zvi/math/small/SmallMatrix.h"

namespace zvi::lib::test {

namespace {

Xyz Product(double const (*m)[3], Xyz const &v) {
    return {m[0][0] * v[0] + m[0][1] * v[1] + m[0][2] * v[2], m[1][0] * v[0] + m[1][1] * v[1] + m[1][2] * v[2],
            m[2][0] * v[0] + m[2][1] * v[1] + m[2][2] * v[2]};
}
Xy Product(double const (*m)[2], Xy const &v) {
    return {m[0][0] * v[0] + m[0][1] * v[1], m[1][0] * v[0] + m[1][1] * v[1]};
}

Xyz const kP{1, 2, 3};
Xyz const kNoAxis{0, 0, 9e-9};

} // namespace

TEST(Motion, QuarterTurnsAreRightHanded) {
    auto const expectTurn = [](auto turn, auto build, Xyz const &axis, Xyz const &expected) {
        Xyz out{};
        double m[3][3];
        turn(kP, 90.0, out);
        ExpectNear(out, expected);
        rotate_about_general_axis_3d(kP, Xyz{0, 0, 0}, axis, 90.0, out);
        ExpectNear(out, expected);
        build(90.0, m);
        ExpectNear(Product(m, kP), expected);
    };
    expectTurn(rotate_about_x_axis_3d, rotation_matrix_about_x_axis_3d, {4, 0, 0}, {1, -3, 2});
    expectTurn(rotate_about_y_axis_3d, rotation_matrix_about_y_axis_3d, {0, 4, 0}, {3, 2, -1});
    expectTurn(rotate_about_z_axis_3d, rotation_matrix_about_z_axis_3d, {0, 0, 4}, {-2, 1, 3});
    Xy flat{1, 2};
    rotate_2d(flat, 90.0, flat);
    ExpectNear(flat, Xy{-2, 1});
    rotate_2d(flat, Xy{-2, 0}, -90.0, flat);
    ExpectNear(flat, Xy{-1, 0});
    double m[2][2];
    rotation_matrix_2d(30.0, m);
    ExpectNear(Product(m, {-2, 0}), Xy{-std::sqrt(3.0), -1});
}

TEST(Motion, GeneralAxisAgreesWithItsMatrix) {
    Random number(31, -9.0, 9.0);
    Xyz turned{};
    double m[3][3];
    for (int round = 0; round < 100; ++round) {
        Xyz const p = number.Space(), base = number.Space(), axis = number.Space();
        double const degrees = 20.0 * number();
        rotation_matrix_about_general_axis_3d(axis, degrees, m);
        rotate_about_general_axis_3d(p, base, axis, degrees, turned);
        ExpectNear(turned, base + Product(m, p - base));
        EXPECT_NEAR(determinant_matrix_3x3(m), 1.0, 1e-14);
        rotate_about_general_axis_3d(turned, base, axis, -degrees, turned);
        ExpectNear(turned, p);
    }
    rotate_about_general_axis_3d(kP, kP, kNoAxis, 33.0, turned);
    EXPECT_EQ(turned, kP);
    rotation_matrix_about_general_axis_3d(kNoAxis, 33.0, m);
    EXPECT_EQ(Product(m, kP), kP);
}

TEST(Motion, EulerAnglesRebuildTheirMatrix) {
    Random number(31, -180.0, 180.0);
    double m[3][3], rebuilt[3][3];
    Xyz out{};
    auto rows = Rows<3>("0 90 0; 0 -90 40; 0 90 -170; 180 0 180; -90 45 90; 25 90 70");
    while (rows.size() < 100)
        rows.push_back({number(), number(), number()});
    for (auto const &angles : rows) {
        rotation_matrix_from_euler_angle(angles.data(), m);
        euler_angle_from_rotation_matrix(m, out);
        EXPECT_LE(std::abs(out[1]), 90.0);
        rotation_matrix_from_euler_angle(out, rebuilt);
        for (int i = 0; i < 3; ++i)
            ExpectNear(rebuilt[i], Xyz{m[i][0], m[i][1], m[i][2]}, 2e-8);
    }
    Xyz const within{-100, 80, 170};
    rotation_matrix_from_euler_angle(within, m);
    euler_angle_from_rotation_matrix(m, out);
    ExpectNear(out, within);
    // About x, then y, then z: x turns y to z, which the turn about z leaves.
    rotation_matrix_from_euler_angle(Xyz{90, 0, 90}, m);
    ExpectNear(Product(m, {0, 1, 0}), Xyz{0, 0, 1});
}

TEST(Motion, Mirrors) {
    double m[3][3];
    auto const expectMirror = [&](auto mirror, auto build, Xyz const &normal, Xyz const &expected) {
        Xyz out{};
        mirror(kP, out);
        EXPECT_EQ(out, expected);
        build(m);
        EXPECT_EQ(Product(m, kP), expected);
        mirror_matrix_through_general_plane(normal, m);
        ExpectNear(Product(m, kP), expected);
    };
    expectMirror(mirror_through_yz_plane, mirror_matrix_through_yz_plane, {-3, 0, 0}, {-1, 2, 3});
    expectMirror(mirror_through_zx_plane, mirror_matrix_through_zx_plane, {0, -3, 0}, {1, -2, 3});
    expectMirror(mirror_through_xy_plane, mirror_matrix_through_xy_plane, {0, 0, -3}, {1, 2, -3});
    mirror_matrix_through_general_plane(Xyz{1, 1, 0}, m); // exchanges x and -y
    ExpectNear(Product(m, kP), Xyz{-2, -1, 3});
    mirror_matrix_through_general_plane(kNoAxis, m);
    EXPECT_EQ(Product(m, kP), kP);
}

TEST(Motion, MirrorInThePlane) {
    Xy const a{1, 1}, b{4, 5}, p{0, 8}; // 5 along the line and 5 to its left
    Xy out{};
    mirror_2d(p, a, b, out);
    ExpectNear(out, Xy{8, 2});
    mirror_2d(p, a, a, out);
    EXPECT_EQ(out, p);
    double m[2][2];
    mirror_matrix_2d(Xy{6, 8}, m);
    ExpectNear(Product(m, {-1, 7}), Xy{7, 1});
}

TEST(Motion, InverseTransformUndoesTheTransform) {
    Random number(31, -9.0, 9.0);
    for (int round = 0; round < 50; ++round) {
        Xyz const p = number.Space(), offset = number.Space(), x = number.Space(), y = number.Space();
        double const m3[3][3] = {{x[0], x[1], x[2]}, {y[0], y[1], y[2]}, {number(), number(), number()}};
        double const m2[2][2] = {{x[0], x[1]}, {y[0], y[1]}};
        Xyz out{};
        transform_3d(p, m3, offset, out);
        ExpectNear(out, Product(m3, p) + offset);
        ASSERT_TRUE(inverse_transform_3d(out, m3, offset, out));
        ExpectNear(out, p, 1e-9);
        transform_2d(p, m2, offset, out);
        ExpectNear(out, Product(m2, {p[0], p[1]}) + Xy{offset[0], offset[1]});
        ASSERT_TRUE(inverse_transform_2d(out, m2, offset, out));
        ExpectNear(out, Xy{p[0], p[1]}, 1e-9);
    }
    double const singular2[2][2] = {{1, 2}, {2, 4}}, singular3[3][3] = {{1, 2, 3}, {2, 4, 6}, {0, 1, 0}};
    Xyz out{8, 8, 8};
    EXPECT_FALSE(inverse_transform_2d(out, singular2, out, out));
    EXPECT_FALSE(inverse_transform_3d(out, singular3, out, out));
    EXPECT_EQ(out, (Xyz{8, 8, 8}));
}

} // namespace zvi::lib::test
