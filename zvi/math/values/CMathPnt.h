#pragma once

#include "zvi/Export.h"

namespace zvi::lib {

class CMathPln;
class CMathVec;

/// A point in space: three adjacent doubles x, y, z and nothing else, so that `Data()` serves wherever the array-style
/// families take a `double const *`. A plain value; a default-made point is the origin.
/// Tests answer 1 or 0. Nothing is reported: a division by zero gives what the arithmetic gives, and a NaN coordinate
/// passes through every operation.
class ZVI_API CMathPnt {
public:
    /// The origin.
    CMathPnt() = default;
    /// The point (x, y, z).
    CMathPnt(double x, double y, double z);
    /// Copies three adjacent coordinates.
    explicit CMathPnt(double const *xyz);
    /// The midpoint: (p1 + p2) * 0.5.
    CMathPnt(CMathPnt const &p1, CMathPnt const &p2);
    /// The mean of three points: (p1 + p2 + p3) / 3.0.
    CMathPnt(CMathPnt const &p1, CMathPnt const &p2, CMathPnt const &p3);
    /// The mean of four points: (p1 + p2 + p3 + p4) * 0.25.
    CMathPnt(CMathPnt const &p1, CMathPnt const &p2, CMathPnt const &p3, CMathPnt const &p4);

    /// Becomes (x, y, z).
    void Set(double x, double y, double z);
    /// Copies three adjacent coordinates.
    void Set(double const *xyz);
    /// Writes coordinate number 0, 1 or 2. The index is not checked.
    void Set(int index, double value);
    /// Writes the first coordinate.
    void SetX(double x) { m_xyz[0] = x; }
    /// Writes the second coordinate.
    void SetY(double y) { m_xyz[1] = y; }
    /// Writes the third coordinate.
    void SetZ(double z) { m_xyz[2] = z; }
    /// The first coordinate.
    double X() const { return m_xyz[0]; }
    /// The second coordinate.
    double Y() const { return m_xyz[1]; }
    /// The third coordinate.
    double Z() const { return m_xyz[2]; }
    /// All three coordinates.
    void Get(double &x, double &y, double &z) const;

    /// The first of the three adjacent coordinates, for the array-style families.
    double *Data() { return m_xyz; }
    /// The same for reading.
    double const *Data() const { return m_xyz; }

    /// All three coordinates become 0.0.
    void Nullify();
    /// 1 unless some coordinate is above 1e-10 in absolute value; exactly 1e-10 still counts as null, and so does
    /// a NaN.
    int IsNull() const;

    /// Becomes the midpoint, as the constructors give it. In these three the point itself may be an argument.
    void SetCenter(CMathPnt const &p1, CMathPnt const &p2);
    /// Becomes the mean of three points.
    void SetCenter(CMathPnt const &p1, CMathPnt const &p2, CMathPnt const &p3);
    /// Becomes the mean of four points.
    void SetCenter(CMathPnt const &p1, CMathPnt const &p2, CMathPnt const &p3, CMathPnt const &p4);
    /// Becomes the weighted mean (alpha * this + beta * p) / (alpha + beta). A zero sum of weights is not guarded and
    /// gives infinite or NaN coordinates.
    void BaryCenter(double alpha, CMathPnt const &p, double beta);

    /// 1 if each coordinate differs by at most `tol`: a box test, not a distance; a difference of exactly `tol` passes,
    /// a NaN does not.
    int IsEqual(CMathPnt const &other, double tol) const;
    /// Euclidean distance.
    double Distance(CMathPnt const &other) const;
    /// Its square.
    double SquareDistance(CMathPnt const &other) const;
    /// The angle at this point between the directions to `p1` and `p2`, 0 to pi; in radians if `inRadians` is non-zero,
    /// else in degrees. If this point equals `p1` or `p2` within 1e-6 in each coordinate, the angle is 0.0.
    double GetAngle(CMathPnt const &p1, CMathPnt const &p2, int inRadians) const;

    /// The sum, coordinate by coordinate.
    CMathPnt Added(CMathPnt const &other) const;
    /// The difference, coordinate by coordinate.
    CMathPnt Subtracted(CMathPnt const &other) const;
    /// Every coordinate times `factor`.
    CMathPnt Multiplied(double factor) const;
    /// Every coordinate over `divisor`; 0 is not guarded.
    CMathPnt Divided(double divisor) const;
    /// `Added`.
    CMathPnt operator+(CMathPnt const &other) const { return Added(other); }
    /// `Subtracted`.
    CMathPnt operator-(CMathPnt const &other) const { return Subtracted(other); }
    /// `Multiplied`.
    CMathPnt operator*(double factor) const { return Multiplied(factor); }
    /// `Divided`.
    CMathPnt operator/(double divisor) const { return Divided(divisor); }
    /// Becomes the sum.
    CMathPnt &operator+=(CMathPnt const &other);
    /// Becomes the difference.
    CMathPnt &operator-=(CMathPnt const &other);
    /// Becomes the multiple.
    CMathPnt &operator*=(double factor);
    /// Becomes the quotient; 0 is not guarded.
    CMathPnt &operator/=(double divisor);

    /// Moves the point by `translation`. A translation shorter than 1e-10 is dropped altogether.
    void Transform(CMathVec const &translation);
    /// The moved point; this one stays.
    CMathPnt Transformed(CMathVec const &translation) const;
    /// Moves the point onto the plane along the plane's normal. The normal is used as it is stored: one that is not a
    /// unit vector scales the offset by its squared length. An offset shorter than 1e-10 is dropped.
    void Project(CMathPln const &plane);
    /// The projected point; this one stays.
    CMathPnt Projected(CMathPln const &plane) const;

private:
    double m_xyz[3] = {0.0, 0.0, 0.0};
};

} // namespace zvi::lib
