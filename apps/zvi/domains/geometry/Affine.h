#pragma once

namespace zvi::app {

/// A point or direction in space, in drawing units.
struct Point3 {
    double x = 0.0;
    double y = 0.0;
    double z = 0.0;
};

/// An affine map of space: a point goes to (rows times column) plus the last column. The default is the identity, which
/// leaves every coordinate as it is, to the last bit.
struct Affine {
    double m[3][4] = {{1.0, 0.0, 0.0, 0.0}, {0.0, 1.0, 0.0, 0.0}, {0.0, 0.0, 1.0, 0.0}};

    Point3 Point(Point3 const &p) const;
    /// As Point, without the shift.
    Point3 Direction(Point3 const &v) const;
};

/// The map that applies `second` after `first`.
Affine Then(Affine const &first, Affine const &second);

Affine Translation(Point3 const &by);
Affine Scaling(Point3 const &factors);
/// Counter-clockwise about the z axis; exact at multiples of 90 degrees.
Affine RotationZ(double degrees);

/// The map from an entity's own coordinates to those of the drawing, for its extrusion direction (the arbitrary axis
/// algorithm of the DXF format). A direction without length or with a number that is not finite counts as (0, 0, 1).
Affine FromExtrusion(Point3 const &extrusion);

Point3 Cross(Point3 const &a, Point3 const &b);

/// Cosine and sine of an angle in degrees, exact at multiples of 90 degrees.
Point3 UnitAtDegrees(double degrees);

} // namespace zvi::app
