#include "zvi/math/MMathFunc.h"

#include <cmath>
#include <random>

#include <gtest/gtest.h>

using zvi::lib::MMathFunc;

namespace {

struct Point {
    double x, y, z;
    double const *Data() const { return &x; }
};

// Rotation by the sum of the part along the axis, the part across and their cross product.
Point Rotated(double deg, Point axis, Point p) {
    double const length = std::hypot(axis.x, axis.y, axis.z);
    Point const u{axis.x / length, axis.y / length, axis.z / length};
    double const c = std::cos(deg * 3.14159265358979323846 / 180.0);
    double const s = std::sin(deg * 3.14159265358979323846 / 180.0);
    double const along = (u.x * p.x + u.y * p.y + u.z * p.z) * (1.0 - c);
    return {p.x * c + (u.y * p.z - u.z * p.y) * s + u.x * along, p.y * c + (u.z * p.x - u.x * p.z) * s + u.y * along,
            p.z * c + (u.x * p.y - u.y * p.x) * s + u.z * along};
}

void ExpectNear(Point const &got, Point const &expected, double tolerance, char const *what) {
    EXPECT_NEAR(got.x, expected.x, tolerance) << what;
    EXPECT_NEAR(got.y, expected.y, tolerance) << what;
    EXPECT_NEAR(got.z, expected.z, tolerance) << what;
}

} // namespace

TEST(MMathFuncRotation, AgreesWithTheVectorFormula) {
    std::mt19937 random(20240607);
    std::uniform_real_distribution<double> number(-3.0, 3.0);
    std::uniform_int_distribution<int> keep(0, 3); // a quarter of the axis components are 0
    for (int run = 0; run < 2000; ++run) {
        SCOPED_TRACE(run);
        Point axis{keep(random) ? number(random) : 0.0, keep(random) ? number(random) : 0.0, number(random)};
        Point const p{number(random), number(random), number(random)};
        Point const base{number(random), number(random), number(random)};
        double const deg = number(random) * 200.0;
        Point got = p;
        MMathFunc::mathRotate(deg, axis.x, axis.y, axis.z, got.x, got.y, got.z);
        ExpectNear(got, Rotated(deg, axis, p), 1e-7, "about the origin");
        Point moved{p.x + base.x, p.y + base.y, p.z + base.z};
        MMathFunc::mathRotate(deg, axis.x, axis.y, axis.z, base.x, base.y, base.z, moved.x, moved.y, moved.z);
        ExpectNear(moved, {got.x + base.x, got.y + base.y, got.z + base.z}, 1e-9, "about a point");
        double matrix[4][4];
        MMathFunc::mathGetRotateMatrix(deg, axis.Data(), matrix);
        Point const column{matrix[0][0] * p.x + matrix[0][1] * p.y + matrix[0][2] * p.z,
                           matrix[1][0] * p.x + matrix[1][1] * p.y + matrix[1][2] * p.z,
                           matrix[2][0] * p.x + matrix[2][1] * p.y + matrix[2][2] * p.z};
        ExpectNear(column, Rotated(deg, axis, p), 1e-12, "matrix on a column");
    }
}

TEST(MMathFuncRotation, QuarterTurnsAreExactAndRightHanded) {
    struct {
        Point axis, from, to;
    } const rows[] = {{{1, 0, 0}, {0, 1, 0}, {0, 0, 1}}, {{-2, 0, 0}, {0, 1, 0}, {0, 0, -1}},
                      {{0, 1, 0}, {0, 0, 1}, {1, 0, 0}}, {{0, -1, 0}, {1, 0, 0}, {0, 0, 1}},
                      {{0, 0, 5}, {1, 0, 0}, {0, 1, 0}}, {{0, 0, -5}, {1, 0, 0}, {0, -1, 0}},
                      {{0, 0, 0}, {1, 0, 0}, {0, 1, 0}}};
    for (auto const &row : rows) {
        Point p = row.from;
        MMathFunc::mathRotate(90.0, row.axis.x, row.axis.y, row.axis.z, p.x, p.y, p.z);
        ExpectNear(p, row.to, 0.0, "quarter turn");
    }
    Point tiny{1e-11, 5e-11, 1.0};
    MMathFunc::mathRotate(0.0, 0, 0, 1, tiny.x, tiny.y, tiny.z);
    EXPECT_EQ(tiny.x, 1e-11) << "no angle, no snap";
    MMathFunc::mathRotateZ(0.0, tiny.x, tiny.y, tiny.z);
    EXPECT_EQ(tiny.x, 0.0);
}

TEST(MMathFuncRotation, AxisAnglesTakeTheAxisToZ) {
    for (Point const axis : {Point{1, 2, 3}, {1, 2, -3}, {-4, 0, -1}, {0, -2, 0}, {0, 0, -1}, {3, 0, 0}}) {
        double a = 0.0;
        double b = 0.0;
        MMathFunc::mathVec2Ang(axis.x, axis.y, axis.z, a, b);
        Point p = axis;
        MMathFunc::mathRotateX(-a, p.x, p.y, p.z);
        MMathFunc::mathRotateY(-b, p.x, p.y, p.z);
        ExpectNear(p, {0, 0, std::hypot(axis.x, axis.y, axis.z)}, 1e-7, "axis on z");
    }
    double a = 1.0;
    double b = 1.0;
    MMathFunc::mathVec2Ang(0, 0, 0, a, b);
    EXPECT_FALSE(std::signbit(a) || std::signbit(b));
    EXPECT_EQ(a + b, 0.0);
}

TEST(MMathFuncRotation, XYPlaneGoesToTheNormalsPlaneWithItsFrameFixed) {
    // (1, 2, 0) by 90 degrees about (-n.y, n.x, 0), then the frame.
    struct {
        Point n, to;
    } const rows[] = {{{0, 0, 2}, {1, 2, 0}},  {{1, 0, 0}, {2, 0, -1}},          {{-1, 0, 0}, {2, 0, 1}},
                      {{0, 1, 0}, {1, 0, -2}}, {{0.6, -0.8, 0}, {-1.2, 1.6, 1}}, {{0, -1, 0}, {1, 0, 2}},
                      {{0, 0, -1}, {1, 2, 0}}};
    for (auto const &row : rows) {
        Point p{1, 2, 0};
        MMathFunc::mathRotateXYPlane(row.n.Data(), p.Data(), &p.x);
        if (row.n.z < 0.0) // half a turn about a zero axis counts as about z
            ExpectNear(p, {-1, -2, 0}, 1e-12, "downward normal");
        else
            ExpectNear(p, row.to, 1e-12, "normal");
    }
}

TEST(MMathFuncRotation, MatrixProductTakesTheRowVectorFromTheLeft) {
    double const turnZ[4][4] = {{0, 1, 0, 0}, {-1, 0, 0, 0}, {0, 0, 1, 0}, {0, 0, 0, 1}};
    double move[4][4];
    MMathFunc::mathMxIdentity(move);
    move[3][0] = 10.0;
    double both[4][4];
    MMathFunc::mathMxMult(turnZ, move, both);
    double const mixed[4][4] = {{1, 2, 3, 4}, {5, 6, 7, 8}, {9, 10, 11, 12}, {13, 14, 15, 16}};
    double row[4] = {1, 10, 100, 1000};
    MMathFunc::mathVecMult(row, mixed, row);
    EXPECT_EQ(row[0], 13951.0);
    EXPECT_EQ(row[3], 17284.0);
    double v[4] = {1, 0, 0, 1};
    MMathFunc::mathVecMult(v, both, v);
    EXPECT_EQ(v[0], 10.0);
    EXPECT_EQ(v[1], 1.0);
    MMathFunc::mathMxMult(move, turnZ, move);
    EXPECT_EQ(move[3][1], 10.0) << "in place: moved, then turned";
    MMathFunc::mathMxCopy(both, move);
    EXPECT_EQ(move[0][0], both[0][0]);
    EXPECT_EQ(move[3][0], 0.0) << "only the first element is copied";
}

TEST(MMathFuncRotation, AnglesOfVectors) {
    Point const x{2, 0, 0};
    Point const y{0, 3, 0};
    Point const zUp{0, 0, 1};
    Point const zDown{0, 0, -1};
    Point const back{-5, 0, 0};
    EXPECT_NEAR(MMathFunc::mathCrossAngle(x.Data(), y.Data(), zUp.Data()), 90.0, 1e-12);
    EXPECT_NEAR(MMathFunc::mathCrossAngle(x.Data(), y.Data(), zDown.Data()), 270.0, 1e-12);
    EXPECT_NEAR(MMathFunc::mathCrossAngle(x.Data(), back.Data(), zDown.Data()), 180.0, 1e-12) << "no cross product";
    EXPECT_NEAR(MMathFunc::mathCrossAngleNormalize(x.Data(), back.Data()), 180.0, 1e-12);
    EXPECT_NEAR(MMathFunc::mathCrossAngle(1, 1, 0, 0, 0, -3), 90.0, 1e-12);
    EXPECT_EQ(MMathFunc::mathCrossAngleNew(x.Data(), x.Data()), 0.0) << "a product above 1 counts as 1";
    struct {
        Point a, b;
        double sign;
    } const rows[] = {{x, y, 1}, {y, x, -1}, {y, zUp, 1}, {zUp, y, -1}, {zUp, x, 1}, {x, zUp, -1}};
    for (auto const &row : rows)
        EXPECT_NEAR(MMathFunc::mathCrossAngleNormalizeWithSign(row.a.Data(), row.b.Data()), 90.0 * row.sign, 1e-12);
    for (double deg = -179.0; deg <= 180.0; deg += 7.0) {
        double const radians = deg * MMathFunc::m_trrad;
        double const b[2] = {std::cos(radians), std::sin(radians)};
        double const longB[2] = {7.0 * b[0], 7.0 * b[1]};
        double const e[2] = {1.0, 0.0};
        EXPECT_NEAR(MMathFunc::mathCrossAngle2D(e, b), deg, 1e-6);
        EXPECT_NEAR(MMathFunc::mathCrossAngle2DSign(longB, e), deg == 180.0 ? 180.0 : -deg, 1e-6);
    }
    EXPECT_NEAR(MMathFunc::mathCrossAngle2D(1, 0, -1, 0), 180.0, 1e-12);
    double const zero[2] = {0, 0};
    EXPECT_EQ(MMathFunc::mathCrossAngle2DSign(zero, zero), 0.0);
}

TEST(MMathFuncRotation, CoordinateSystemsUndoEachOther) {
    double const c = std::cos(0.3);
    double const s = std::sin(0.3);
    double const origin[3] = {5, -2, 1};
    double const axes[3][3] = {{c, s, 0}, {0, 0, 1}, {s, -c, 0}};
    double const onSecondAxis[3] = {5, -2, 4};
    double p[3];
    MMathFunc::mathGCS2UCS(origin, axes, onSecondAxis, p);
    ExpectNear({p[0], p[1], p[2]}, {0, 3, 0}, 1e-14, "on the second axis");
    double q[3] = {7, 8, 9};
    MMathFunc::mathUCS2GCS(origin, axes, q, q);
    double const globalOrigin[3] = {0, 0, 0};
    double const globalAxes[3][3] = {{1, 0, 0}, {0, 1, 0}, {0, 0, 1}};
    MMathFunc::mathTranUCS(globalOrigin, globalAxes, origin, axes, q, q);
    ExpectNear({q[0], q[1], q[2]}, {7, 8, 9}, 1e-13, "there and back");
}
