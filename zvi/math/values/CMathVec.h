#pragma once

#include "zvi/math/values/CMathPnt.h"

namespace zvi::lib {

/// A vector in space: a `CMathPnt` with the operations of a direction and no further data, so that its memory is three
/// adjacent doubles. It is not kept normalised. The sums and multiples inherited from the point give a `CMathPnt`.
/// Degenerate input: a zero vector normalises to NaN coordinates, deliberately, and each operation that normalises
/// (the angles, the relations, `Rotate`, `Project`) passes the NaN on; a test then answers 0. `IsNull` tells
/// beforehand.
class ZVI_API CMathVec : public CMathPnt {
public:
    /// The zero vector.
    CMathVec() = default;
    /// The vector (x, y, z).
    CMathVec(double x, double y, double z);
    /// Copies three adjacent coordinates.
    explicit CMathVec(double const *xyz);
    /// The position vector of a point, or the vector that a sum or difference of points gave.
    explicit CMathVec(CMathPnt const &p);
    /// to - from: the second argument is the head.
    CMathVec(CMathPnt const &from, CMathPnt const &to);

    using CMathPnt::Set;
    /// to - from, each of three adjacent coordinates.
    void Set(double const *from, double const *to);

    using CMathPnt::operator-;
    using CMathPnt::operator*;
    /// The reversed vector: each coordinate multiplied by -1.0.
    CMathVec operator-() const { return Reversed(); }
    /// Becomes the reversed vector.
    void Reverse();
    /// The reversed vector; this one stays.
    CMathVec Reversed() const;

    /// Dot product.
    double operator*(CMathVec const &other) const;
    /// Cross product this x other.
    CMathVec operator^(CMathVec const &other) const { return Crossed(other); }
    /// Becomes this x other.
    CMathVec &operator^=(CMathVec const &other);
    /// This x other; this vector stays.
    CMathVec Crossed(CMathVec const &other) const;
    /// Becomes this x (a x b).
    void CrossCross(CMathVec const &a, CMathVec const &b);
    /// The same; this vector stays.
    CMathVec CrossCrossed(CMathVec const &a, CMathVec const &b) const;

    /// Length.
    double Magnitude() const;
    /// Squared length: x^2 + y^2 + z^2.
    double SquareMagnitude() const;
    /// Divides by the magnitude, unguarded: a zero vector becomes NaN.
    void Normalize();
    /// The same; this vector stays.
    CMathVec Normalized() const;

    using CMathPnt::IsEqual;
    /// 1 if the magnitudes differ by at most `lengthTol` and the angle between the vectors is at most `angleTol`
    /// radians. If either magnitude is not above `lengthTol`, the angle is not looked at.
    int IsEqual(CMathVec const &other, double lengthTol, double angleTol) const;
    /// 1 if the angle to `other` is pi/2 within `tol` radians, inclusively.
    int IsNormal(CMathVec const &other, double tol) const;
    /// 1 if the angle to `other` is pi within `tol` radians, inclusively.
    int IsOpposite(CMathVec const &other, double tol) const;
    /// 1 if the angle to `other` is 0 or pi within `tol` radians, inclusively: opposite vectors are parallel.
    int IsParallel(CMathVec const &other, double tol) const;

    /// The angle to `other`, 0 to pi; in radians if `inRadians` is non-zero, else in degrees. Between 45 and 135
    /// degrees it comes from the cosine, elsewhere from the sine, so it stays accurate near 0 and near pi.
    double Angle(CMathVec const &other, int inRadians) const;
    /// The same angle, negative if (this x other) . ref is below 0.0. The reference is not normalised.
    double AngleWithRef(CMathVec const &other, CMathVec const &ref, int inRadians) const;

    /// Turns the vector about `axis` by `angle` radians, counterclockwise seen from the head of the axis. An angle
    /// below 1e-10 in absolute value leaves it as it is; the axis is not looked at then.
    void Rotate(CMathVec const &axis, double angle);
    /// The turned vector; this one stays.
    CMathVec Rotated(CMathVec const &axis, double angle) const;

    /// The orthogonal projection of the vector on the plane, made by turning the vector into the plane and shortening
    /// it. A vector within 1e-5 radians of the plane stays unchanged, its slight part out of the plane included. A
    /// vector parallel to the normal has no direction to turn to and becomes NaN.
    void Project(CMathPln const &plane);
    /// The projected vector; this one stays.
    CMathVec Projected(CMathPln const &plane) const;
};

} // namespace zvi::lib
