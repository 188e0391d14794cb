#pragma once

#include "zvi/math/values/CMathPnt.h"
#include "zvi/math/values/CMathVec.h"

namespace zvi::lib {

/// A plane: a base point and a normal. Whether the normal is a unit vector depends on how it was set; each setter says
/// so. Distances are products with the stored normal and are not divided by its length.
/// A default-made plane has a zero normal. Nothing is reported on degenerate input.
class ZVI_API CMathPln {
public:
    /// Base in the origin and a zero normal.
    CMathPln() = default;
    /// Through `base`, with `normal` normalised (a zero vector gives NaN).
    CMathPln(CMathPnt const &base, CMathVec const &normal);
    /// Through three points; see the `Set` of the same arguments. Collinear points leave a default-made plane.
    CMathPln(CMathPnt const &p1, CMathPnt const &p2, CMathPnt const &p3);
    /// The plane a x + b y + c z + d = 0; see the `Set` of the same arguments.
    CMathPln(double a, double b, double c, double d);
    /// Parallel to `other`; see the `Set` of the same arguments.
    CMathPln(CMathPln const &other, double dist);

    /// Stores both as given. Unlike the constructor it does not normalise, deliberately: with a normal of length 5
    /// `Distance` scales by 5.
    void Set(CMathPnt const &base, CMathVec const &normal);
    /// Base `p1`, unit normal along (p2 - p1) x (p3 - p1). If that product is shorter than 1e-6, so if the triangle has
    /// less than half of that area, the plane keeps what it held.
    void Set(CMathPnt const &p1, CMathPnt const &p2, CMathPnt const &p3);
    /// a x + b y + c z + d = 0, the normal (a, b, c) normalised. The base lies on the axis of the coefficient of
    /// largest absolute value, on a tie the later axis. All-zero coefficients are not guarded and give NaN.
    void Set(double a, double b, double c, double d);
    /// `other` moved along its stored normal by `dist` times that normal; a move shorter than 1e-10 is dropped.
    void Set(CMathPln const &other, double dist);
    /// Moves the plane to another base; the normal stays.
    void SetBasePnt(CMathPnt const &base) { m_base = base; }
    /// Stores the vector as given, without normalising it.
    void SetNormal(CMathVec const &normal) { m_normal = normal; }
    /// The base point as it was set.
    CMathPnt GetBasePnt() const { return m_base; }
    /// The normal as it is stored, a unit vector or not.
    CMathVec GetNormal() const { return m_normal; }

    /// a, b, c are the coordinates of the stored normal, and d = -(a x0 + b y0 + c z0) for the base (x0, y0, z0).
    void Coefficients(double &a, double &b, double &c, double &d) const;
    /// (p - base) . normal, positive on the side of the normal.
    double DistanceWithSign(CMathPnt const &p) const;
    /// The absolute value of `DistanceWithSign`.
    double Distance(CMathPnt const &p) const;

private:
    CMathPnt m_base;
    CMathVec m_normal;
};

} // namespace zvi::lib
