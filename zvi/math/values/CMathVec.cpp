#include "zvi/math/values/CMathVec.h"

#include "zvi/base/Pi.h"
#include "zvi/math/elementary/Elementary.h"
#include "zvi/math/values/CMathPln.h"

#include <cmath>

namespace zvi::lib {

static_assert(sizeof(CMathPnt) == 3 * sizeof(double) && sizeof(CMathVec) == sizeof(CMathPnt));

namespace {

using base::kPi;

/// The cosine of 45 degrees to 14 digits: nearer to an axis than this the sine is the more accurate.
constexpr double kCosine45 = 0.70710678118655;
/// A turn below it, in radians, leaves a vector as it is.
constexpr double kSmallestTurn = 1e-10;
/// A vector this near to a plane, in radians, is taken to lie in it.
constexpr double kInPlane = 1e-5;

double FromRadians(double angle, int inRadians) {
    return inRadians != 0 ? angle : angle * 180.0 / kPi;
}

} // namespace

CMathVec::CMathVec(double x, double y, double z) : CMathPnt(x, y, z) {}

CMathVec::CMathVec(double const *xyz) : CMathPnt(xyz) {}

CMathVec::CMathVec(CMathPnt const &p) : CMathPnt(p) {}

CMathVec::CMathVec(CMathPnt const &from, CMathPnt const &to) : CMathPnt(to - from) {}

void CMathVec::Set(double const *from, double const *to) {
    Set(to[0] - from[0], to[1] - from[1], to[2] - from[2]);
}

void CMathVec::Reverse() {
    *this *= -1.0;
}

CMathVec CMathVec::Reversed() const {
    CMathVec result(*this);
    result.Reverse();
    return result;
}

double CMathVec::operator*(CMathVec const &other) const {
    return X() * other.X() + Y() * other.Y() + Z() * other.Z();
}

CMathVec &CMathVec::operator^=(CMathVec const &other) {
    return *this = Crossed(other);
}

CMathVec CMathVec::Crossed(CMathVec const &other) const {
    return CMathVec(Y() * other.Z() - Z() * other.Y(), Z() * other.X() - X() * other.Z(),
                    X() * other.Y() - Y() * other.X());
}

void CMathVec::CrossCross(CMathVec const &a, CMathVec const &b) {
    *this = CrossCrossed(a, b);
}

CMathVec CMathVec::CrossCrossed(CMathVec const &a, CMathVec const &b) const {
    return Crossed(a.Crossed(b));
}

double CMathVec::Magnitude() const {
    return std::sqrt(SquareMagnitude());
}

double CMathVec::SquareMagnitude() const {
    return X() * X() + Y() * Y() + Z() * Z();
}

void CMathVec::Normalize() {
    *this /= Magnitude();
}

CMathVec CMathVec::Normalized() const {
    CMathVec result(*this);
    result.Normalize();
    return result;
}

int CMathVec::IsEqual(CMathVec const &other, double lengthTol, double angleTol) const {
    double const m1 = Magnitude();
    double const m2 = other.Magnitude();
    double const difference = std::abs(m1 - m2);
    if (!(m1 > lengthTol) || !(m2 > lengthTol))
        return lengthTol >= difference ? 1 : 0;
    if (difference > lengthTol)
        return 0;
    return angleTol >= Angle(other, 1) ? 1 : 0;
}

int CMathVec::IsNormal(CMathVec const &other, double tol) const {
    return tol >= std::abs(kPi / 2.0 - Angle(other, 1)) ? 1 : 0;
}

int CMathVec::IsOpposite(CMathVec const &other, double tol) const {
    return tol >= kPi - Angle(other, 1) ? 1 : 0;
}

int CMathVec::IsParallel(CMathVec const &other, double tol) const {
    double const angle = Angle(other, 1);
    return tol >= angle || tol >= kPi - angle ? 1 : 0;
}

double CMathVec::Angle(CMathVec const &other, int inRadians) const {
    CMathVec const unit = Normalized();
    CMathVec const otherUnit = other.Normalized();
    double const cosine = unit * otherUnit;
    if (cosine > -kCosine45 && cosine < kCosine45)
        return FromRadians(Acos(cosine), inRadians);
    double const angle = Asin(unit.Crossed(otherUnit).Magnitude());
    return FromRadians(cosine < 0.0 ? kPi - angle : angle, inRadians);
}

double CMathVec::AngleWithRef(CMathVec const &other, CMathVec const &ref, int inRadians) const {
    double const angle = Angle(other, inRadians);
    return Crossed(other) * ref < 0.0 ? angle * -1.0 : angle;
}

void CMathVec::Rotate(CMathVec const &axis, double angle) {
    if (std::abs(angle) < kSmallestTurn)
        return;
    CMathVec const unit = axis.Normalized();
    double const u = unit.X();
    double const v = unit.Y();
    double const w = unit.Z();
    double const s = Sin(angle);
    double const k = 1.0 - Cos(angle);
    CMathVec const row1(1.0 + (-w * w - v * v) * k, u * v * k - w * s, u * w * k + v * s);
    CMathVec const row2(u * v * k + w * s, 1.0 + (-u * u - w * w) * k, v * w * k - u * s);
    CMathVec const row3(u * w * k - v * s, v * w * k + u * s, 1.0 + (-u * u - v * v) * k);
    Set(row1 * *this, row2 * *this, row3 * *this);
}

CMathVec CMathVec::Rotated(CMathVec const &axis, double angle) const {
    CMathVec result(*this);
    result.Rotate(axis, angle);
    return result;
}

void CMathVec::Project(CMathPln const &plane) {
    CMathVec const normal = plane.GetNormal();
    double const elevation = kPi / 2.0 - normal.Angle(*this, 1);
    if (std::abs(elevation) < kInPlane)
        return;
    Rotate(normal.Crossed(*this), elevation);
    *this *= Cos(elevation);
}

CMathVec CMathVec::Projected(CMathPln const &plane) const {
    CMathVec result(*this);
    result.Project(plane);
    return result;
}

} // namespace zvi::lib
