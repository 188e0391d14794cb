#include "zvi/math/func/MMathFunc.h"

#include "tests/math/Near.h"

#include <numbers>

namespace zvi::lib::test {

namespace {

// Rotation by the sum of the part along the axis, the part across and their cross product.
Xyz Rotated(double deg, Xyz const &axis, Xyz const &p) {
    Xyz const u = 1.0 / Length(axis) * axis;
    double const c = std::cos(deg * std::numbers::pi / 180.0), s = std::sin(deg * std::numbers::pi / 180.0);
    return c * p + s * Cross(u, p) + (1.0 - c) * Dot(u, p) * u;
}

Xyz Turned(double deg, Xyz const &axis, Xyz p) {
    MMathFunc::mathRotate(deg, axis[0], axis[1], axis[2], p[0], p[1], p[2]);
    return p;
}

} // namespace

TEST(MMathFuncRotation, AgreesWithTheVectorFormula) {
    Random number(20240607, -3.0, 3.0);
    for (int run = 0; run < 2000; ++run) {
        SCOPED_TRACE(run);
        // A component of the axis is 0 in a quarter of the cases.
        Xyz const axis{number() < -1.5 ? 0.0 : number(), number() < -1.5 ? 0.0 : number(), number()};
        Xyz const p = number.Space(), b = number.Space();
        double const deg = 200.0 * number();
        Xyz const expected = Rotated(deg, axis, p);
        ExpectNear(Turned(deg, axis, p), expected, 1e-7);
        Xyz moved = p + b;
        MMathFunc::mathRotate(deg, axis[0], axis[1], axis[2], b[0], b[1], b[2], moved[0], moved[1], moved[2]);
        ExpectNear(moved, Turned(deg, axis, p) + b, 1e-9);
        double matrix[4][4];
        MMathFunc::mathGetRotateMatrix(deg, axis, matrix);
        for (int i = 0; i < 3; ++i)
            EXPECT_NEAR(matrix[i][0] * p[0] + matrix[i][1] * p[1] + matrix[i][2] * p[2], expected[i], 1e-12);
    }
}

TEST(MMathFuncRotation, QuarterTurnsAreExactAndRightHanded) {
    for (auto const &[axis, from, to] :
         Rows<Xyz, Xyz, Xyz>("1 0 0  0 1 0  0 0 1; -2 0 0  0 1 0  0 0 -1; 0 1 0  0 0 1  1 0 0; 0 -1 0  1 0 0  0 0 1;"
                             "0 0 5  1 0 0  0 1 0; 0 0 -5  1 0 0  0 -1 0; 0 0 0  1 0 0  0 1 0"))
        EXPECT_EQ(Turned(90.0, axis, from), to) << axis;
    Xyz tiny{1e-11, 5e-11, 1.0};
    EXPECT_EQ(Turned(0.0, {0, 0, 1}, tiny), tiny) << "no angle, no snap";
    MMathFunc::mathRotate(0.0, 0, 0, 1, 5, 5, 5, tiny[0], tiny[1], tiny[2]);
    EXPECT_EQ(tiny, (Xyz{1e-11, 5e-11, 1.0}));
    MMathFunc::mathRotateZ(0.0, tiny[0], tiny[1], tiny[2]);
    EXPECT_EQ(tiny, (Xyz{0, 0, 1}));
}

TEST(MMathFuncRotation, AxisAnglesTakeTheAxisToZ) {
    double a = 0.0, b = 0.0;
    for (Xyz const axis : {Xyz{1, 2, 3}, {1, 2, -3}, {-4, 0, -1}, {0, -2, 0}, {0, 0, -1}, {3, 0, 0}}) {
        MMathFunc::mathVec2Ang(axis[0], axis[1], axis[2], a, b);
        Xyz p = axis;
        MMathFunc::mathRotateX(-a, p[0], p[1], p[2]);
        MMathFunc::mathRotateY(-b, p[0], p[1], p[2]);
        ExpectNear(p, Xyz{0, 0, Length(axis)}, 1e-7);
    }
    MMathFunc::mathVec2Ang(0, 0, 0, a, b);
    EXPECT_FALSE(std::signbit(a) || std::signbit(b));
    EXPECT_EQ(a + b, 0.0);
}

TEST(MMathFuncRotation, XYPlaneGoesToTheNormalsPlaneWithItsFrameFixed) {
    // (1, 2, 0) by 90 degrees about (-n.y, n.x, 0), then the frame; half a turn about a zero axis counts as about z.
    for (auto const &[n, to] : Rows<Xyz, Xyz>("0 0 2  1 2 0; 1 0 0  2 0 -1; -1 0 0  2 0 1; 0 1 0  1 0 -2;"
                                              "0.6 -0.8 0  -1.2 1.6 1; 0 -1 0  1 0 2; 0 0 -1  -1 -2 0")) {
        Xyz p{1, 2, 0};
        MMathFunc::mathRotateXYPlane(n, p, p);
        ExpectNear(p, to);
    }
}

TEST(MMathFuncRotation, MatrixProductTakesTheRowVectorFromTheLeft) {
    double const turnZ[4][4] = {{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    double const mixed[4][4] = {{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 16}};
    double move[4][4], both[4][4];
    MMathFunc::mathMxIdentity(move);
    move[3][0] = 10.0;
    MMathFunc::mathMxMult(turnZ, move, both);
    Coordinates<4> row{1, 10, 100, 1000}, v{1, 0, 0, 1};
    MMathFunc::mathVecMult(row, mixed, row);
    EXPECT_EQ(row, (Coordinates<4>{13951, 15062, 16173, 17284}));
    MMathFunc::mathVecMult(v, both, v);
    EXPECT_EQ(v, (Coordinates<4>{10, 1, 0, 1}));
    MMathFunc::mathMxMult(move, turnZ, move);
    EXPECT_EQ(move[3][1], 10.0) << "in place: moved, then turned";
    MMathFunc::mathMxCopy(both, move);
    EXPECT_EQ(move[0][0], both[0][0]);
    EXPECT_EQ(move[3][0], 0.0) << "only the first element is copied";
}

TEST(MMathFuncRotation, AnglesOfVectors) {
    Xyz const x{2, 0, 0}, y{0, 3, 0}, up{0, 0, 1}, down{0, 0, -1}, back{-5, 0, 0};
    EXPECT_NEAR(MMathFunc::mathCrossAngle(x, y, up), 90.0, 1e-12);
    EXPECT_NEAR(MMathFunc::mathCrossAngle(x, y, down), 270.0, 1e-12);
    EXPECT_NEAR(MMathFunc::mathCrossAngle(x, back, down), 180.0, 1e-12) << "no cross product";
    EXPECT_NEAR(MMathFunc::mathCrossAngleNormalize(x, back), 180.0, 1e-12);
    EXPECT_NEAR(MMathFunc::mathCrossAngle(1, 1, 0, 0, 0, -3), 90.0, 1e-12);
    EXPECT_EQ(MMathFunc::mathCrossAngleNew(x, x), 0.0) << "a product above 1 counts as 1";
    Xyz const axes[] = {x, y, up};
    for (int i = 0; i < 3; ++i) {
        EXPECT_NEAR(MMathFunc::mathCrossAngleNormalizeWithSign(axes[i], axes[(i + 1) % 3]), 90.0, 1e-12);
        EXPECT_NEAR(MMathFunc::mathCrossAngleNormalizeWithSign(axes[(i + 1) % 3], axes[i]), -90.0, 1e-12);
    }
    Xy const e{1, 0}, zero{0, 0};
    for (double deg = -179.0; deg <= 180.0; deg += 7.0) {
        Xy const b{std::cos(deg * std::numbers::pi / 180.0), std::sin(deg * std::numbers::pi / 180.0)};
        EXPECT_NEAR(MMathFunc::mathCrossAngle2D(e, b), deg, 1e-6);
        EXPECT_NEAR(MMathFunc::mathCrossAngle2DSign(7.0 * b, e), -deg, 1e-6);
    }
    EXPECT_NEAR(MMathFunc::mathCrossAngle2D(1, 0, -1, 0), 180.0, 1e-12);
    EXPECT_NEAR(MMathFunc::mathCrossAngle2DSign(Xy{-7, 0}, e), 180.0, 1e-6);
    EXPECT_EQ(MMathFunc::mathCrossAngle2DSign(zero, zero), 0.0);
}

TEST(MMathFuncRotation, CoordinateSystemsUndoEachOther) {
    double const c = std::cos(0.3), s = std::sin(0.3);
    double const axes[3][3] = {{c, s, 0}, {0, 0, 1}, {s, -c, 0}};
    double const globalAxes[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    Xyz const origin{5, -2, 1}, onSecondAxis{5, -2, 4}, globalOrigin{0, 0, 0};
    Xyz p{}, q{7, 8, 9};
    MMathFunc::mathGCS2UCS(origin, axes, onSecondAxis, p);
    ExpectNear(p, Xyz{0, 3, 0}, 1e-14);
    MMathFunc::mathUCS2GCS(origin, axes, q, q);
    MMathFunc::mathTranUCS(globalOrigin, globalAxes, origin, axes, q, q);
    ExpectNear(q, Xyz{7, 8, 9}, 1e-13);
}

} // namespace zvi::lib::test
