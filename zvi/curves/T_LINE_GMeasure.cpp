#include "zvi/base/Pi.h"
#include "zvi/curves/T_LINE_G.h"
#include "zvi/math/elementary/Elementary.h"

#include "zvi/curves/ArcDetail.h"
#include "zvi/curves/MGeomFunc.h"
#include "zvi/curves/VectorDetail.h"
#include "zvi/math/func/MMathFunc.h"

#include <algorithm>
#include <cmath>

namespace zvi::lib {

using curves::Vec3;

namespace {

/// An angle this near to 180 makes the area that of the half disc (degrees).
constexpr double kHalfDiscAngle = 1e-8;
/// An arc this near to a semicircle rises by its radius: by its half chord (units of the input), and by its angle
/// (degrees).
constexpr double kSemicircle = 1e-12;
/// Sines and cosines this near to 0, 1 or -1 are taken as such.
constexpr double kSnap = 1e-12;

double Snapped(double v) {
    for (double const whole : {0.0, 1.0, -1.0}) {
        if (std::fabs(v - whole) < kSnap)
            return whole;
    }
    return v;
}

double HalfChord(T_LINE_G const &arc) {
    double const chord =
        arc.Is2D != 0 ? curves::PlanDistance(arc.Pos1, arc.Pos2) : curves::Distance(arc.Pos1, arc.Pos2);
    return chord / 2.0;
}

bool AgreeWithin(Vec3 const &a, Vec3 const &b, double tol) {
    return std::fabs(a[0] - b[0]) <= tol && std::fabs(a[1] - b[1]) <= tol && std::fabs(a[2] - b[2]) <= tol;
}

/// True if the point lies on the carrier of the curve.
bool IsOnCarrier(T_LINE_G const &curve, Vec3 const &point, double tol) {
    Vec3 projected = point;
    return curve.ProjectToLine(projected) != 0 && curves::Distance(point, projected) < tol;
}

/// `point` turned about the axis of the arc.
Vec3 Turned(T_LINE_G const &arc, Vec3 point, double degrees) {
    MMathFunc::mathRotate(degrees, arc.Normal[0], arc.Normal[1], arc.Normal[2], arc.Center[0], arc.Center[1],
                          arc.Center[2], point[0], point[1], point[2]);
    return point;
}

/// Angles from the reference point at which an arc can be broadest: its two ends and the half turns between them.
/// Keeps the first of those with the largest and with the smallest cosine.
class BreadthAngles {
public:
    BreadthAngles(double start, double end) : m_greatest(start), m_least(start) {
        Offer(end);
        for (double angle = end - std::fmod(end, 180.0); angle > start; angle -= 180.0)
            Offer(angle);
    }

    double Greatest() const { return m_greatest; }
    double Least() const { return m_least; }

private:
    static double Cosine(double degrees) { return Snapped(Cos(degrees * base::kRadiansPerDegree)); }

    void Offer(double angle) {
        double const cosine = Cosine(angle);
        if (cosine > Cosine(m_greatest))
            m_greatest = angle;
        if (cosine < Cosine(m_least))
            m_least = angle;
    }

    double m_greatest;
    double m_least;
};

} // namespace

double T_LINE_G::GetLineLength(int plan) const {
    if (IsCurv == 0)
        return plan != 0 ? curves::PlanDistance(Pos1, Pos2) : curves::Distance(Pos1, Pos2);
    double const planLength = 2.0 * base::kPi * Radius * (GetLineAngle() / 360.0);
    if (Is2D == 0 || plan != 0)
        return planLength;
    double const height = Pos1[2] - Pos2[2];
    return std::sqrt(planLength * planLength + height * height);
}

double T_LINE_G::GetAngleOf(Point const &a, Point const &b) const {
    if (IsCurv == 0)
        return 0.0;
    if (IsCircle != 0)
        return 360.0;
    Vec3 u = a - Center;
    Vec3 v = b - Center;
    if (Is2D != 0)
        u[2] = v[2] = 0.0;
    double const angle = MMathFunc::mathCrossAngleNormalize(u.Data(), v.Data());
    Vec3 const turn = curves::Normalized(curves::Cross(u, v));
    return curves::Dot(turn, Normal) < 0.0 ? 360.0 - angle : angle;
}

double T_LINE_G::GetLineAngleFromP1(Point const &p) const {
    return GetAngleOf(Pos1, p);
}

double T_LINE_G::GetLineAngle() const {
    return GetAngleOf(Pos1, Pos2);
}

double T_LINE_G::GetLineArea() const {
    double const angle = GetLineAngle();
    if (IsCurv == 0 || angle == 0.0)
        return 0.0;
    double const sector = Radius * Radius * angle * 0.5 * base::kPi / 180.0;
    if (std::fabs(angle - 180.0) <= kHalfDiscAngle)
        return sector;
    double const half = HalfChord(*this);
    double const triangle = MMathFunc::mathSqrt(Radius * Radius - half * half) * half;
    return angle > 180.0 ? sector + triangle : sector - triangle;
}

int T_LINE_G::GetLineCenter(Point &out) const {
    if (IsCurv == 0) {
        out = curves::Midpoint(Pos1, Pos2);
        return 1;
    }
    Vec3 radial = Turned(*this, Pos1, GetLineAngle() / 2.0) - Center;
    if (Is2D != 0)
        radial[2] = 0.0;
    double const length = curves::Length(radial);
    if (curves::IsZeroLength(length))
        return 0;
    out = {Center[0] + Radius * radial[0] / length, Center[1] + Radius * radial[1] / length,
           Is2D != 0 ? (Pos1[2] + Pos2[2]) / 2.0 : Center[2] + Radius * radial[2] / length};
    return 1;
}

int T_LINE_G::GetMBR2D(T_REGION2D_G &region, double tol) const {
    if (IsCurv == 0)
        region = curves::Grown(curves::BoxOfEnds(Pos1.Data(), Pos2.Data()), tol);
    else if (IsCircle != 0) // The tolerance deliberately does not widen a full circle.
        region = {Center[0] - Radius, Center[1] - Radius, Center[0] + Radius, Center[1] + Radius};
    else
        region = curves::Grown(curves::ArcBox(Pos1.Data(), Pos2.Data(), Center.Data(),
                                              curves::PlanDistance(Center, Pos1), Normal[2] >= 0.0),
                               tol);
    return 1;
}

int T_LINE_G::GetLineWidth(double &width) const {
    width = 0.0;
    if (IsCurv == 0)
        return 1;
    double const half = HalfChord(*this);
    if (std::fabs(half - Radius) <= kSemicircle) {
        width = Radius;
        return 1;
    }
    double const depth = Radius - half < 0.0 ? 0.0 : std::sqrt(Radius * Radius - half * half);
    double const angle = GetLineAngle();
    if (angle == 0.0)
        return 0;
    if (std::fabs(angle - 180.0) <= kSemicircle)
        width = Radius;
    else
        width = angle > 180.0 ? Radius + depth : Radius - depth;
    return 1;
}

int T_LINE_G::GetLineLocalAxis(double m[3][3]) const {
    if (IsCurv == 0)
        return MGeomFunc::calcLineLocalVector(Pos1.Data(), Pos2.Data(), 0.0, m, 0, nullptr, nullptr);
    Vec3 along = Pos2 - Pos1;
    if (Is2D != 0)
        along[2] = 0.0;
    Vec3 normal = Normal;
    if (!curves::Normalize(along) || !curves::Normalize(normal))
        return 0;
    Vec3 const side = curves::Normalized(curves::Cross(normal, along));
    Vec3 const up = curves::Normalized(curves::Cross(along, side));
    MMathFunc::Copy(along.Data(), m[0], 3);
    MMathFunc::Copy(side.Data(), m[1], 3);
    MMathFunc::Copy(up.Data(), m[2], 3);
    return 1;
}

int T_LINE_G::GetLineBetaAng(double &betaAng) const {
    betaAng = BetaAng;
    return 1;
}

double T_LINE_G::GetDistance(Point const &point) const {
    if (IsCurv == 0) {
        Vec3 direction = Pos2 - Pos1;
        double const length = curves::Length(direction);
        curves::Normalize(direction);
        double const t = curves::Dot(point - Pos1, direction);
        if (t <= 0.0)
            return curves::Distance(Pos1, point);
        return t >= length ? curves::Distance(Pos2, point) : curves::Distance(Pos1 + t * direction, point);
    }
    if (Is2D != 0)
        return std::fabs(Radius - curves::PlanDistance(Center, point));
    Vec3 foot;
    MMathFunc::mathPLCrossPoint(Center[0], Center[1], Center[2], Normal[0], Normal[1], Normal[2], point[0], point[1],
                                point[2], foot[0], foot[1], foot[2]);
    return std::fabs(Radius - curves::Distance(foot, point));
}

int T_LINE_G::GetLineBreadth(double const *axis, MArray<Point> &out) const {
    out.Clear();
    if (IsCurv == 0) {
        out.PushBack(Pos1);
        out.PushBack(Pos2);
        return 1;
    }
    Vec3 const across = curves::Normalized(curves::Cross(Normal, curves::Normalized(Vec3::FromArray(axis))));
    Vec3 const reference = Center + Radius * across;
    double start = GetAngleOf(reference, Pos1);
    double const end = GetAngleOf(reference, Pos2);
    if (start > end)
        start -= 360.0;
    BreadthAngles const angles(start, end);
    out.PushBack(Turned(*this, reference, angles.Greatest()));
    out.PushBack(Turned(*this, reference, angles.Least()));
    return 1;
}

int T_LINE_G::GetLineBreadth(double angleDeg, MArray<Point> &out) const {
    double const radians = angleDeg * base::kRadiansPerDegree;
    double const axis[3] = {Cos(radians), Snapped(Sin(radians)), 0.0};
    return GetLineBreadth(axis, out);
}

int T_LINE_G::IsSameLine(T_LINE_G const &other, double tol, int sameDirOnly) const {
    if (IsCurv != other.IsCurv)
        return 0;
    bool const isForward = curves::Distance(Pos1, other.Pos1) < tol && curves::Distance(Pos2, other.Pos2) < tol;
    if (!isForward && (sameDirOnly != 0 || !(curves::Distance(Pos1, other.Pos2) < tol) ||
                       !(curves::Distance(Pos2, other.Pos1) < tol)))
        return 0;
    if (IsCurv == 0)
        return 1;
    Vec3 middle;
    Vec3 otherMiddle;
    if (GetLineCenter(middle) == 0 || other.GetLineCenter(otherMiddle) == 0 ||
        !(curves::Distance(middle, otherMiddle) < tol))
        return 0;
    Vec3 const otherNormal = isForward ? other.Normal : -other.Normal;
    return AgreeWithin(curves::Normalized(Normal), curves::Normalized(otherNormal), tol) ? 1 : 0;
}

int T_LINE_G::IsContinuousLine(T_LINE_G const &other, double tol, int headToTailOnly) const {
    if (IsCurv != other.IsCurv)
        return 0;
    bool const isHeadToTail = curves::Distance(other.Pos2, Pos1) < tol || curves::Distance(other.Pos1, Pos2) < tol;
    // Curves that share only their starts deliberately do not count.
    if (!isHeadToTail && !(curves::Distance(other.Pos2, Pos2) < tol))
        return 0;
    Vec3 middle;
    if (other.GetLineCenter(middle) == 0 || !IsOnCarrier(*this, other.Pos1, tol) ||
        !IsOnCarrier(*this, other.Pos2, tol) || !IsOnCarrier(*this, middle, tol))
        return 0;
    return headToTailOnly != 0 && !isHeadToTail ? 0 : 1;
}

} // namespace zvi::lib
