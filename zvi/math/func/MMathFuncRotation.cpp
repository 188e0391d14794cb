#include "zvi/base/Pi.h"
#include "zvi/math/elementary/Elementary.h"
#include "zvi/math/func/MMathFunc.h"

#include <cmath>
#include <cstring>

#include "zvi/math/func/MMathFuncDetail.h"

namespace zvi::lib {

using math::Cross;
using math::Length;
using math::Load2;
using math::Load3;
using math::Unit;
using math::Vec2;
using math::Vec3;

namespace {

constexpr double kCoordinateSnap = 1e-10;   // a rotated coordinate below it becomes 0, model units
constexpr double kAxisZero = 1e-15;         // a shorter axis, or its part across x, has no angle
constexpr double kMatrixAxisZero = 1e-8;    // a shorter axis gives the identity matrix
constexpr double kSignComponent = 1e-10;    // a smaller component of the cross product does not give the sign
constexpr double kSameNormalDegrees = 1e-7; // a normal nearer to z needs no turn

double Snap(double v) {
    return std::abs(v) < kCoordinateSnap ? 0.0 : v;
}

void SnapPoint(double &x, double &y, double &z) {
    x = Snap(x);
    y = Snap(y);
    z = Snap(z);
}

double AngleOf(Vec3 a, Vec3 b) {
    return MMathFunc::mathAcos(Dot(a, b) / (Length(a) * Length(b))) * MMathFunc::m_trang;
}

double SignComponentOf(Vec3 v) {
    if (std::abs(v.z) > kSignComponent)
        return v.z;
    return std::abs(v.x) > kSignComponent ? v.x : v.y;
}

// The turns that bring an axis to z, in degrees: by alpha about x into the plane of x and z, then by -beta about y.
struct AxisTurns {
    double alpha;
    double beta;
};

AxisTurns TurnsOf(Vec3 axis) {
    AxisTurns turns{0.0, 0.0};
    double const acrossX = std::sqrt(axis.y * axis.y + axis.z * axis.z);
    if (!(acrossX < kAxisZero)) {
        turns.alpha = MMathFunc::mathAsin(axis.y / acrossX) * MMathFunc::m_trang;
        if (axis.z < 0.0)
            turns.alpha = 180.0 - turns.alpha;
    }
    double const length = Length(axis);
    if (!(length < kAxisZero))
        turns.beta = MMathFunc::mathAsin(axis.x / length) * MMathFunc::m_trang;
    return turns;
}

// (p, q) turned counter-clockwise in their plane.
void TurnInPlane(double deg, double &p, double &q) {
    double const c = MMathFunc::mathCos(deg * MMathFunc::m_trrad);
    double const s = MMathFunc::mathSin(deg * MMathFunc::m_trrad);
    double const turnedP = c * p - s * q;
    q = s * p + c * q;
    p = turnedP;
}

} // namespace

double MMathFunc::mathCrossAngle(double const *a, double const *b) {
    return AngleOf(Load3(a), Load3(b));
}

double MMathFunc::mathCrossAngle(double ax, double ay, double az, double bx, double by, double bz) {
    return AngleOf({ax, ay, az}, {bx, by, bz});
}

double MMathFunc::mathCrossAngle(double const *a, double const *b, double const *ref) {
    double const angle = mathCrossAngle(a, b);
    return AngleOf(Load3(ref), Cross(Load3(a), Load3(b))) > 90.0 ? 360.0 - angle : angle;
}

double MMathFunc::mathCrossAngleNormalize(double const *a, double const *b) {
    return AngleOf(Unit(Load3(a)), Unit(Load3(b)));
}

double MMathFunc::mathCrossAngleNormalizeWithSign(double const *a, double const *b) {
    double const angle = mathCrossAngleNormalize(a, b);
    return SignComponentOf(Cross(Load3(a), Load3(b))) < 0.0 ? -angle : angle;
}

double MMathFunc::mathCrossAngleNew(double const *a, double const *b) {
    return mathAcos(mathDot(a, b)) * m_trang;
}

double MMathFunc::mathCrossAngle2D(double ax, double ay, double bx, double by) {
    double const angle = mathAcos(mathDot(ax, ay, bx, by)) * m_trang;
    return ax * by - ay * bx < 0.0 ? -angle : angle;
}

double MMathFunc::mathCrossAngle2D(double const *a, double const *b) {
    return mathCrossAngle2D(a[0], a[1], b[0], b[1]);
}

double MMathFunc::mathCrossAngle2DSign(double const *a, double const *b) {
    if (Length(Load2(a)) < m_NormalZero || Length(Load2(b)) < m_NormalZero)
        return 0.0;
    Vec2 const u = Unit(Load2(a));
    Vec2 const w = Unit(Load2(b));
    return mathCrossAngle2D(u.x, u.y, w.x, w.y);
}

void MMathFunc::mathMxIdentity(double (*matrix)[4]) {
    for (int i = 0; i < 4; ++i)
        for (int j = 0; j < 4; ++j)
            matrix[i][j] = i == j ? 1.0 : 0.0;
}

void MMathFunc::mathMxMult(double const (*a)[4], double const (*b)[4], double (*c)[4]) {
    double product[4][4];
    for (int i = 0; i < 4; ++i)
        mathVecMult(a[i], b, product[i]);
    std::memcpy(c, product, sizeof product);
}

void MMathFunc::mathMxCopy(double const (*src)[4], double (*dst)[4]) {
    dst[0][0] = src[0][0];
}

void MMathFunc::mathVecMult(double const *v, double const (*matrix)[4], double *out) {
    double product[4];
    for (int j = 0; j < 4; ++j)
        product[j] = v[0] * matrix[0][j] + v[1] * matrix[1][j] + v[2] * matrix[2][j] + v[3] * matrix[3][j];
    std::memcpy(out, product, sizeof product);
}

// The three turns leave out the products with the zeros of the 4 x 4 matrix: they add nothing to a finite coordinate.

void MMathFunc::mathRotateX(double deg, double &x, double &y, double &z) {
    TurnInPlane(deg, y, z);
    SnapPoint(x, y, z);
}

void MMathFunc::mathRotateY(double deg, double &x, double &y, double &z) {
    TurnInPlane(deg, z, x);
    SnapPoint(x, y, z);
}

void MMathFunc::mathRotateZ(double deg, double &x, double &y, double &z) {
    TurnInPlane(deg, x, y);
    SnapPoint(x, y, z);
}

void MMathFunc::mathRotate(double deg, double ax, double ay, double az, double &x, double &y, double &z) {
    if (deg == 0.0)
        return;
    auto const [alpha, beta] = TurnsOf({ax, ay, az});
    if (alpha != 0.0)
        mathRotateX(alpha, x, y, z);
    if (beta != 0.0)
        mathRotateY(-beta, x, y, z);
    mathRotateZ(deg, x, y, z);
    if (beta != 0.0)
        mathRotateY(beta, x, y, z);
    if (alpha != 0.0)
        mathRotateX(-alpha, x, y, z);
    SnapPoint(x, y, z);
}

void MMathFunc::mathRotate(double deg, double ax, double ay, double az, double bx, double by, double bz, double &x,
                           double &y, double &z) {
    if (deg == 0.0)
        return;
    x -= bx;
    y -= by;
    z -= bz;
    mathRotate(deg, ax, ay, az, x, y, z);
    x += bx;
    y += by;
    z += bz;
    SnapPoint(x, y, z);
}

void MMathFunc::mathRotateXYPlane(double const *n, double const *in, double *out) {
    Vec3 const normal = Load3(n);
    Store(Load3(in), out);
    double const angle = AngleOf(normal, {0.0, 0.0, 1.0});
    if (angle < kSameNormalDegrees)
        return;
    mathRotate(angle, -normal.y, normal.x, 0.0, out[0], out[1], out[2]);
    if (normal.y < 0.0)
        out[1] *= -1.0;
    double const x = out[0];
    double const y = out[1];
    if (normal.x > 0.0)
        Store(Vec2{y, x}, out);
    else if (normal.x < 0.0)
        Store(Vec2{y, -x}, out);
}

void MMathFunc::mathVec2Ang(double x, double y, double z, double &a, double &b) {
    AxisTurns const turns = TurnsOf({x, y, z});
    a = 0.0 - turns.alpha; // a difference, so that no angle is a negative zero
    b = turns.beta;
}

void MMathFunc::mathGetRotateMatrix(double deg, double const *axis, double (*matrix)[4]) {
    Vec3 const direction = Load3(axis);
    mathMxIdentity(matrix);
    if (Length(direction) < kMatrixAxisZero)
        return;
    auto const [u, v, w] = Unit(direction);
    double const radians = deg * base::kPi / 180.0;
    double const c = Cos(radians);
    double const s = Sin(radians);
    double const k = 1.0 - c;
    Store(Vec3{u * u * k + c, u * v * k - w * s, u * w * k + v * s}, matrix[0]);
    Store(Vec3{u * v * k + w * s, v * v * k + c, v * w * k - u * s}, matrix[1]);
    Store(Vec3{u * w * k - v * s, v * w * k + u * s, w * w * k + c}, matrix[2]);
}

void MMathFunc::mathGCS2UCS(double const *origin, double const (*axes)[3], double const *p, double *out) {
    Vec3 const d = Load3(p) - Load3(origin);
    Store(Vec3{math::Dot(d, Load3(axes[0])), math::Dot(d, Load3(axes[1])), math::Dot(d, Load3(axes[2]))}, out);
}

void MMathFunc::mathUCS2GCS(double const *origin, double const (*axes)[3], double const *p, double *out) {
    Store(Load3(origin) + Load3(axes[0]) * p[0] + Load3(axes[1]) * p[1] + Load3(axes[2]) * p[2], out);
}

void MMathFunc::mathTranUCS(double const *fromOrigin, double const (*fromAxes)[3], double const *toOrigin,
                            double const (*toAxes)[3], double const *p, double *out) {
    double global[3];
    mathUCS2GCS(fromOrigin, fromAxes, p, global);
    mathGCS2UCS(toOrigin, toAxes, global, out);
}

} // namespace zvi::lib
