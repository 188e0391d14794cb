#include "zvi/curves/MGeomFunc.h"

#include "zvi/curves/ArcDetail.h"
#include "zvi/curves/T_LINE_G.h"
#include "zvi/curves/VectorDetail.h"
#include "zvi/math/func/MMathFunc.h"

#include <algorithm>
#include <cmath>

namespace zvi::lib {

namespace {

using curves::Vec3;

/// A shorter line has no direction (units of the input).
constexpr double kShortestLine = 1e-8;
/// Plan length over length of a vertical line, and height over length of a horizontal one, are below this.
constexpr double kSlopeLimit = 0.01;
/// A smaller turn of the axes about a line is none (degrees).
constexpr double kNoTurn = 1e-8;
/// A smaller angle between two up directions counts as 0 (degrees).
constexpr double kNoAngle = 0.0001;
/// Three points lie on no circle if the double of their double area, or the radius, is below this.
constexpr double kNoCircle = 1e-10;

/// Three axes as rows.
struct Axes {
    Vec3 row[3];
};

void Store(Axes const &axes, double m[3][3]) {
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j)
            m[i][j] = axes.row[i][j];
    }
}

bool LineAxes(Vec3 const &a, Vec3 const &b, double beta, bool isVertical, Axes &axes) {
    Vec3 along = b - a;
    double const length = curves::Length(along);
    Vec3 up = isVertical ? Vec3(-length, 0.0, 0.0) : Vec3(0.0, 0.0, length);
    if (std::fabs(beta) > kNoTurn)
        MMathFunc::mathRotate(beta, along[0], along[1], along[2], up[0], up[1], up[2]);
    if (!curves::Normalize(along) || !curves::Normalize(up))
        return false;
    Vec3 side = curves::Cross(up, along);
    if (!curves::Normalize(side))
        return false;
    up = curves::Cross(along, side);
    if (!curves::Normalize(up))
        return false;
    axes = {{along, side, up}};
    return true;
}

/// Circle through three points by barycentric weights; `axes` as `CalcCurvInfoFrom3P` gives them.
bool CircleThrough(Vec3 const &a, Vec3 const &b, Vec3 const &c, Vec3 &center, Axes &axes) {
    Vec3 normal = curves::Cross(a - b, b - c);
    double const size = 2.0 * curves::Length(normal);
    if (!(size >= kNoCircle))
        return false;
    if (!(curves::Distance(a, b) * curves::Distance(b, c) * curves::Distance(c, a) / size >= kNoCircle))
        return false;
    double const denominator = 2.0 * curves::Dot(normal, normal);
    double const weightA = curves::Dot(b - c, b - c) * curves::Dot(a - b, a - c) / denominator;
    double const weightB = curves::Dot(a - c, a - c) * curves::Dot(b - a, b - c) / denominator;
    double const weightC = curves::Dot(a - b, a - b) * curves::Dot(c - a, c - b) / denominator;
    center = a * weightA + b * weightB + c * weightC;
    curves::Normalize(normal);
    Vec3 const along = curves::Normalized(c - a);
    axes = {{along, curves::Normalized(curves::Cross(normal, along)), normal}};
    return true;
}

/// The three points at the lower of the heights of the first and the last.
void Flatten(Vec3 &a, Vec3 &b, Vec3 &c) {
    a[2] = b[2] = c[2] = std::min(a[2], c[2]);
}

} // namespace

int MGeomFunc::IsVerticalLine(double const *a, double const *b) {
    Vec3 const along = Vec3::FromArray(b) - Vec3::FromArray(a);
    double const length = curves::Length(along);
    if (!(length >= kShortestLine))
        return 0;
    return std::sqrt(along[0] * along[0] + along[1] * along[1]) / length < kSlopeLimit ? 1 : 0;
}

int MGeomFunc::IsHorizontalLine(double const *a, double const *b) {
    Vec3 const along = Vec3::FromArray(b) - Vec3::FromArray(a);
    double const length = curves::Length(along);
    if (!(length >= kShortestLine))
        return 0;
    return std::fabs(along[2]) / length < kSlopeLimit ? 1 : 0;
}

int MGeomFunc::IsVertical(double const *a, double const *b, int mode) {
    if (mode == 0)
        return IsVerticalLine(a, b);
    if (!(curves::Distance(Vec3::FromArray(a), Vec3::FromArray(b)) >= kShortestLine))
        return 0;
    return IsHorizontalLine(a, b) == 0 ? 1 : 0;
}

int MGeomFunc::calcLineLocalVector(double const *a, double const *b, double beta, double m[3][3], int mode,
                                   int *isVertical, int *isOther) {
    Vec3 const start = Vec3::FromArray(a);
    Vec3 const end = Vec3::FromArray(b);
    if (!(curves::Distance(start, end) >= kShortestLine))
        return 0;
    int const vertical = IsVertical(a, b, mode);
    if (isVertical)
        *isVertical = vertical;
    if (isOther)
        *isOther = mode != 0 && vertical != 0 && IsVerticalLine(a, b) == 0 ? 1 : 0;
    Axes axes;
    if (!LineAxes(start, end, beta, vertical != 0, axes))
        return 0;
    Store(axes, m);
    return 1;
}

int MGeomFunc::calcLineLocalVector(T_POINT3D const &a, T_POINT3D const &b, double beta, double m[3][3], int mode,
                                   int *isVertical) {
    double const start[3] = {a.x, a.y, a.z};
    double const end[3] = {b.x, b.y, b.z};
    return calcLineLocalVector(start, end, beta, m, mode, isVertical, nullptr);
}

int MGeomFunc::calcLineLocalVector(float const *a, float const *b, double beta, float m[3][3], int mode,
                                   int *isVertical, int *isOther) {
    double const start[3] = {a[0], a[1], a[2]};
    double const end[3] = {b[0], b[1], b[2]};
    double wide[3][3];
    if (calcLineLocalVector(start, end, beta, wide, mode, isVertical, isOther) == 0)
        return 0;
    for (std::size_t i = 0; i < 3; ++i) {
        for (std::size_t j = 0; j < 3; ++j)
            m[i][j] = static_cast<float>(wide[i][j]);
    }
    return 1;
}

double MGeomFunc::calcLineLocalAngle(double const *a, double const *b, double const m[3][3]) {
    double axes[3][3];
    if (calcLineLocalVector(a, b, 0.0, axes, 0, nullptr, nullptr) == 0)
        return 0.0;
    double const angle = MMathFunc::mathCrossAngleNew(axes[2], m[2]);
    if (!(angle > kNoAngle))
        return 0.0;
    Vec3 const turn = curves::Normalized(curves::Cross(Vec3::FromArray(axes[2]), Vec3::FromArray(m[2])));
    return MMathFunc::mathCrossAngleNew(turn.Data(), m[0]) > 90.0 ? -angle : angle;
}

int MGeomFunc::CalcCurvInfoFrom3P(double const *a, double const *b, double const *c, double *center, double m[3][3],
                                  int flatten) {
    Vec3 first = Vec3::FromArray(a);
    Vec3 second = Vec3::FromArray(b);
    Vec3 third = Vec3::FromArray(c);
    if (flatten != 0)
        Flatten(first, second, third);
    Vec3 middle;
    Axes axes;
    if (!CircleThrough(first, second, third, middle, axes))
        return 0;
    MMathFunc::Copy(middle.Data(), center, 3);
    Store(axes, m);
    return 1;
}

int MGeomFunc::CalcCurvInfoFrom3P(double const *a, double const *b, double const *c, double *center, double *normal,
                                  int flatten) {
    double m[3][3];
    if (CalcCurvInfoFrom3P(a, b, c, center, m, flatten) == 0)
        return 0;
    MMathFunc::Copy(m[2], normal, 3);
    return 1;
}

int MGeomFunc::CalcCurvInfoFrom3P(double const *a, double const *b, double const *c, double &width, double &beta,
                                  int flatten) {
    Vec3 center;
    double m[3][3];
    if (CalcCurvInfoFrom3P(a, b, c, center.Data(), m, 1) == 0)
        return 0;
    Vec3 start = Vec3::FromArray(a);
    Vec3 end = Vec3::FromArray(c);
    if (flatten != 0)
        start[2] = end[2] = std::min(start[2], end[2]);
    T_LINE_G arc;
    arc.Set(start, end, 1, center, Vec3::FromArray(m[2]), 1, curves::kShortestChord);
    Vec3 top;
    if (arc.GetLineCenter(top) == 0)
        return 0;
    width = curves::Distance(curves::Midpoint(start, end), top);
    beta = calcLineLocalAngle(start.Data(), end.Data(), m);
    return 1;
}

int MGeomFunc::calcPlaneLocalVector(int count, double const pts[][3], double m[3][3]) {
    if (count != 3 && count != 4)
        return 0;
    Vec3 p[4];
    for (int i = 0; i < count; ++i)
        p[i] = Vec3::FromArray(pts[i]);
    Axes axes;
    if (count == 3)
        axes = {{p[1] - p[0], p[2] - p[1], {}}};
    else
        axes = {{p[2] + p[1] - p[3] - p[0], p[3] + p[2] - p[0] - p[1], {}}};
    if (!curves::Normalize(axes.row[0]) || !curves::Normalize(axes.row[1]))
        return 0;
    axes.row[2] = curves::Normalized(curves::Cross(axes.row[0], axes.row[1]));
    axes.row[1] = curves::Normalized(curves::Cross(axes.row[2], axes.row[0]));
    Store(axes, m);
    return 1;
}

} // namespace zvi::lib
