#pragma once

// The array family of the math kernel: scalars, vectors, rotations, lines, planes, simple surfaces and plan polygons.
//
// - A point or vector is a pointer to three adjacent doubles x, y, z, or to two where the name ends in 2D or the
//   comment says "plan". A ring is a count and an array of double[2], not closed unless the comment says so.
// - A 4 x 4 matrix is double (*)[4]: rows of four, a row vector on the left, the translation in the last row.
// - Angles are degrees unless the comment says radians. An int result is 1 for true or success and 0 otherwise.
// - Nothing is reported or thrown. Degenerate input gives 0, false, or NaN, as each comment says; NaN in gives NaN out
//   or failure, never a crash. Outputs may be the same array as an input where "in place" is said.
// - The thresholds are this family's own. The free functions of zvi::lib have others, and the two stay separate.

#include "zvi/Export.h"

namespace zvi::lib {

/// The array family of the math kernel; see the notes at the top of this file. It has static members alone.
class ZVI_API MMathFunc {
public:
    // Constants. They hold their values before any load-time code runs; callers must not change them.

    static double m_NormalZero; ///< 1e-15: shorter lengths have no direction; sines and cosines snap within it.
    static double m_pi;         ///< pi, the value of 4 atan(1).
    static double m_trrad;      ///< Radians per degree, pi / 180.
    static double m_trang;      ///< Degrees per radian, 180 / pi.

    // Scalars and guards.

    /// 1 if `value` lies strictly between -1e-8 and 1e-8.
    static int IsZero(double value);
    /// 1 if the squared length of `v` is strictly below 1e-12, so up to a length of 1e-6.
    static int IsZero(double const *v);
    /// 1 if a - b lies strictly between -1e-8 and 1e-8.
    static int IsEqual(double a, double b);
    /// The scalar limit 1e-8.
    static double NonZero();
    /// The limit 1e-12 of a squared length.
    static double SquareNonZero();
    /// Makes a value inside the `IsZero` range +1e-8, whatever its sign was.
    static void MakeNonZero(double &value);
    /// Makes a vector inside the `IsZero` range (0, 0, 1e-8).
    static void MakeNonZero(double *v);
    /// Sine of radians, snapped to 0, 1 and -1 within `m_NormalZero`, so that `mathSin(m_pi)` is 0.
    static double mathSin(double radians);
    /// Cosine of radians, snapped like `mathSin`.
    static double mathCos(double radians);
    /// Arc sine in radians of `value` clamped to -1..1.
    static double mathAsin(double value);
    /// Arc cosine in radians of `value` clamped to -1..1.
    static double mathAcos(double value);
    /// Square root; a negative value counts as 0.
    static double mathSqrt(double value);
    /// Absolute value; the smallest int, which has none, gives the largest int.
    static int mathAbs(int value);
    /// Absolute value.
    static double mathAbs(double value);
    /// a + (b - a) t.
    static double mathLerp(double a, double b, double t);
    /// out = a + (b - a) t per coordinate; in place.
    static void mathLerp(double const *a, double const *b, double t, double *out);
    /// `value` rounded to `digits` decimals (tens for negative digits), halves away from zero. In these three a decimal
    /// that a double cannot hold counts as the decimal: 1.005 to 2 digits is 1.01, and 1.1 rounded up to 1 is 1.1.
    static double mathRoundOff(double value, int digits = 0);
    /// The same, always away from zero.
    static double mathRoundUp(double value, int digits = 0);
    /// The same, always toward zero.
    static double mathRoundDown(double value, int digits = 0);
    /// Side of the third plan point: 1 if 1, 2, 3 turn left, -1 if right, 0 if (x2 - x1)(y3 - y1) - (y2 - y1)(x3 - x1)
    /// is below 1e-10 in size. NaN gives -1.
    static int math_ccw(double x1, double y1, double x2, double y2, double x3, double y3);
    /// Direction of the plan vector in 0 up to 360, which itself is given when dy is negative by less than rounding
    /// keeps; 0 for the zero vector.
    static double GetAngle(double dx, double dy);
    /// Direction from point 1 to point 2. With `direction` 0 it is the slope angle in -90..90, with 90 for straight up
    /// and -90 for straight down; otherwise the direction in 0 up to 360. Points closer than 0.001 give 0.
    static double GetAngle(double x1, double y1, double x2, double y2, int direction);

    // Vectors. The four Vector... operations work in place and return `out`.

    /// Dot product of vectors of space.
    static double Dot(double const *a, double const *b);
    /// Dot product clamped to -1..1: of unit vectors, on its way to the arc cosine.
    static double mathDot(double const *a, double const *b);
    /// The same of plan vectors.
    static double mathDot(double ax, double ay, double bx, double by);
    /// a + b.
    static double *VectorAdd(double const *a, double const *b, double *out);
    /// a - b.
    static double *VectorSubtract(double const *a, double const *b, double *out);
    /// a times the number k.
    static double *VectorMult(double const *a, double k, double *out);
    /// a x b.
    static double *VectorCross(double const *a, double const *b, double *out);
    /// out = a + b; in place.
    static void Add(double const *a, double const *b, double *out);
    /// a += b.
    static void Add(double *a, double const *b);
    /// out = a k; in place.
    static void Multiply(double const *a, double k, double *out);
    /// out = (x, y, z).
    static void Copy(double x, double y, double z, double *out);
    /// Copies `n` doubles; none when n is not positive.
    static void Copy(double const *src, double *dst, int n);
    /// a x b, not normalised, whatever the name says; in place.
    static void mathNormal(double const *a, double const *b, double *out);
    /// Multiplies by 1 / length. A zero vector becomes NaN.
    static void VectorNormalise(double *v);
    /// Divides by the length; a vector shorter than 1e-6 is first multiplied by 1000, once. Gives 1 unless the length
    /// divided by is below 1e-10. A zero vector becomes NaN.
    static int Normalize(double *v);
    /// Writes out[0] = a.y b.z - a.z b.y and deliberately nothing else: callers use the one component and keep what
    /// they have in out[1] and out[2]. `VectorCross` gives the whole product.
    static void mathVecCross(double const *a, double const *b, double *out);
    /// v = -v.
    static void mathReverse(double *v);
    /// dst = -src; in place.
    static void mathReverse(double const *src, double *dst);
    /// a + c - b: the fourth corner of the parallelogram a, b, c; in place.
    static void Get4thPoint(double const *a, double const *b, double const *c, double *out);
    /// Squared distance of two points.
    static double PointSquareDistance(double const *a, double const *b);
    /// Squared distance from `pt` to the infinite line ab, with its foot a + t (b - a). With a = b all are NaN.
    static double PointLineSquareDistance3D(double const *pt, double const *a, double const *b, double &t,
                                            double *foot);
    /// The point at `distance` from `p` toward `dir` (any length). Gives 0, and `p`, if `dir` is shorter than
    /// `m_NormalZero`; in place.
    static int mathGetVectorDirectionPoint(double const *p, double const *dir, double distance, double *out);

    // Angles between vectors. A zero vector gives NaN where the lengths divide.

    /// Angle in 0..180: acos of a . b / (|a| |b|).
    static double mathCrossAngle(double const *a, double const *b);
    /// The same of (ax, ay, az) and (bx, by, bz).
    static double mathCrossAngle(double ax, double ay, double az, double bx, double by, double bz);
    /// The angle, or 360 minus it if a x b is turned by more than 90 from `ref`: the angle from a to b about `ref`.
    static double mathCrossAngle(double const *a, double const *b, double const *ref);
    /// `mathCrossAngle` of the two vectors made unit by division.
    static double mathCrossAngleNormalize(double const *a, double const *b);
    /// The angle of `mathCrossAngleNormalize`, negative if a component of a x b is: its z if above 1e-10 in size, else
    /// its x if above 1e-10, else its y.
    static double mathCrossAngleNormalizeWithSign(double const *a, double const *b);
    /// Angle in 0..180 of unit vectors: acos of their clamped dot product.
    static double mathCrossAngleNew(double const *a, double const *b);
    /// Signed angle from a to b, unit plan vectors: acos of their clamped dot product, in 0..180, made negative if
    /// a.x b.y - a.y b.x is. Counter-clockwise is positive, opposite vectors give 180.
    static double mathCrossAngle2D(double const *a, double const *b);
    /// The same of (ax, ay) and (bx, by).
    static double mathCrossAngle2D(double ax, double ay, double bx, double by);
    /// The signed angle of `mathCrossAngle2D` for plan vectors of any length; 0 if one is shorter than `m_NormalZero`.
    static double mathCrossAngle2DSign(double const *a, double const *b);

    // Rotations, matrices, coordinate systems. Rotations are right-handed; a result coordinate below 1e-10 in size is
    // 0.

    /// The identity.
    static void mathMxIdentity(double (*matrix)[4]);
    /// C = A B; in place.
    static void mathMxMult(double const (*a)[4], double const (*b)[4], double (*c)[4]);
    /// Copies the single element [0][0] and deliberately nothing else: callers keep the rest of their matrix.
    static void mathMxCopy(double const (*src)[4], double (*dst)[4]);
    /// out[j] = sum of v[i] M[i][j] over the four elements; in place.
    static void mathVecMult(double const *v, double const (*matrix)[4], double *out);
    /// Rotates a point about the x axis: y' = c y - s z, z' = s y + c z.
    static void mathRotateX(double deg, double &x, double &y, double &z);
    /// About the y axis: x' = c x + s z, z' = c z - s x.
    static void mathRotateY(double deg, double &x, double &y, double &z);
    /// About the z axis: x' = c x - s y, y' = s x + c y.
    static void mathRotateZ(double deg, double &x, double &y, double &z);
    /// Rotates about the axis (ax, ay, az) through the origin: the axis is turned to z about x and y, the rotation done
    /// there, and turned back. An angle of 0 does nothing. A zero axis counts as the z axis.
    static void mathRotate(double deg, double ax, double ay, double az, double &x, double &y, double &z);
    /// The same about the axis through the point (bx, by, bz).
    static void mathRotate(double deg, double ax, double ay, double az, double bx, double by, double bz, double &x,
                           double &y, double &z);
    /// Carries a point of the XY plane to the plane through the origin with normal `n`: rotates by the angle between
    /// `n` and z about (-n.y, n.x, 0), then fixes the frame: n.y < 0 negates y; n.x > 0 swaps x and y; n.x < 0 makes
    /// (x, y) into (y, -x). With `n` within 1e-7 degrees of z the point stays. A zero `n` gives NaN; in place.
    static void mathRotateXYPlane(double const *n, double const *in, double *out);
    /// The angles that `mathRotate` takes its axis to z with: `a` about x, then `b` about y negated. Each 0 when the
    /// length it is taken in is below 1e-15.
    static void mathVec2Ang(double x, double y, double z, double &a, double &b);
    /// Rotation by `deg` about `axis` (any length) as a 3 x 3 block for a column vector in a 4 x 4 matrix. The block is
    /// deliberately the transpose of what `mathVecMult` needs. An axis shorter than 1e-8 gives the identity.
    static void mathGetRotateMatrix(double deg, double const *axis, double (*matrix)[4]);
    /// Global to user coordinates: out[i] = (p - origin) . axes[i]; `axes` are the unit axes, one a row; in place.
    static void mathGCS2UCS(double const *origin, double const (*axes)[3], double const *p, double *out);
    /// User to global coordinates: out = origin + sum of p[i] axes[i]; in place.
    static void mathUCS2GCS(double const *origin, double const (*axes)[3], double const *p, double *out);
    /// From one user system to another, through global coordinates; in place.
    static void mathTranUCS(double const *fromOrigin, double const (*fromAxes)[3], double const *toOrigin,
                            double const (*toAxes)[3], double const *p, double *out);

    // Lines. The intersections set their outputs to 0 first; `out` must be none of the inputs.

    /// Meeting point of the infinite lines p1 p2 and q1 q2. 0 if a direction is shorter than 1e-15, the sine between
    /// them is below 0.0001, or they pass each other by more than `tol`; `dist`, that distance, is written before its
    /// test. The point lies on the second line, also for skew lines: its parameter comes from the two equations that
    /// the largest component of the directions' cross product selects.
    static int mathIntersectLine(double const *p1, double const *p2, double const *q1, double const *q2, double tol,
                                 double &dist, double *out);
    /// The same of segments: each parameter must lie in its segment, ends included, extended by 1e-7 of its length.
    /// `out` stays 0 if not.
    static int mathIntersectLine2(double const *p1, double const *p2, double const *q1, double const *q2, double tol,
                                  double &dist, double *out);
    /// Meeting point of the plan lines 1 2 and 3 4, infinite with `segment` 0, else with the test of
    /// `mathIntersectLine2`. 0 for a length below 1e-15 or a sine below 0.0001.
    static int mathIntersectLine2D(double x1, double y1, double x2, double y2, double x3, double y3, double x4,
                                   double y4, double &x, double &y, int segment);
    /// Foot p + t d of the point q on the line through p with direction d; gives t = (q - p) . d / d . d. A zero
    /// direction gives NaN.
    static double mathPLCrossPoint(double px, double py, double pz, double dx, double dy, double dz, double qx,
                                   double qy, double qz, double &x, double &y, double &z);
    /// The same; `t` gets it too.
    static double mathPLCrossPoint(double px, double py, double pz, double dx, double dy, double dz, double qx,
                                   double qy, double qz, double &x, double &y, double &z, double &t);
    /// Foot of (px, py) on the plan line 1 2; gives its distance from point 1 along the line. A line shorter than
    /// `m_NormalZero` gives NaN.
    static double mathPLCrossPoint2D(double x1, double y1, double x2, double y2, double px, double py, double &x,
                                     double &y);

    // Planes.

    /// Plane a x + b y + c z + d = 0 with the unit normal of (p2 - p1) x (p3 - p1), d = -p1 . n. All 0, and 0, if that
    /// product is shorter than 1e-15.
    static int mathPlaneEquation(double const *p1, double const *p2, double const *p3, double &a, double &b, double &c,
                                 double &d);
    /// The same through `point`; makes `normal` unit in place. Always 1; a zero normal gives NaN.
    static int mathPlaneEquation(double const *point, double *normal, double &a, double &b, double &c, double &d);
    /// Foot of `p` on the plane through a, b, c: p + n ((a . n) - (p . n)) / (n . n) with n = (b - a) x (c - a). False,
    /// with `out` untouched, if n . n is below `tol` (a squared double area); in place.
    static bool project_on_plane_normal(double const *p, double const *a, double const *b, double const *c, double tol,
                                        double *out);
    /// Foot of `p` on the plane a x + b y + c z = d: p + n (d - n . p) / (n . n). Mind that d stands on the right here,
    /// so its sign is opposite to that of `mathPlaneEquation`. False if n . n is below `tol`; in place.
    static bool project_on_plane_normal(double const *p, double a, double b, double c, double d, double tol,
                                        double *out);
    /// Where the line through `p` along `dir` (any length) meets the plane a, b, c. False if the unit direction and
    /// unit normal have a product below 0.0174524, about one degree off the plane; `tol` takes no part. Zero lengths
    /// give NaN and true; in place.
    static bool project_on_plane_mf_vector(double const *p, double const *dir, double const *a, double const *b,
                                           double const *c, double tol, double *out);
    /// The same with the limit 1e-10.
    static bool project_on_plane_mf_vector_for_CuttingPlane(double const *p, double const *dir, double const *a,
                                                            double const *b, double const *c, double *out);
    /// Part of the unit vector `v` in the plane of unit normal `n`: v - n k with k = n . v. 0 if 1 - |k| is below 1e-7.
    static int project_on_plane_vector(double const *n, double const *v, double *out);

    // Surfaces of revolution about z. `normal` projects along the surface normal and keeps the angle of `p` about z,
    // which is pi/2 with the sign of y if |x| < tol. `mf_vector` projects along `dir` (any length), to the root of
    // A t^2 + 2 B t + C = 0 nearer to `p`, and to (-B - sqrt(B^2 - A C)) / A on equal distance; to -C / (2 B) if
    // |A| < tol <= |B|. It is false if there is no root. False leaves `out` untouched. r is the distance of `p` from z.

    /// x^2 + y^2 = radius^2, endless: result (radius cos, radius sin, z). False unless height > 0, or if r < tol.
    static bool project_on_cylinder_normal(double const *p, double radius, double height, double tol, double *out);
    /// A = dx^2 + dy^2, B = px dx + py dy, C = px^2 + py^2 - radius^2. First a unit direction with |x|, |y| < tol and
    /// |z| < 0.17452 is rejected: only a large `tol` can meet that test, which stays as callers know it. The height
    /// takes no part.
    static bool project_on_cylinder_mf_vector(double const *p, double const *dir, double radius, double height,
                                              double tol, double *out);
    /// x^2 + y^2 + z^2 = radius^2. The new height is sqrt(radius^2 / ((r / z)^2 + 1)) with the sign of z, and the new
    /// distance from z sqrt(radius^2 - height^2). r < tol gives the pole of z's sign, or false if |z| < tol too.
    /// False unless radius > 0.
    static bool project_on_sphere_normal(double const *p, double radius, double tol, double *out);
    /// A = 1, B = p . d, C = p . p - radius^2.
    static bool project_on_sphere_mf_vector(double const *p, double const *dir, double radius, double tol, double *out);
    /// x^2 + y^2 = R(z)^2, R = radius1 + (radius2 - radius1) z / height: the endless double cone with radius1 at z = 0
    /// and radius2 at z = height. The foot on the generator of p's half plane, with the mirrored one where R(z) < 0;
    /// equal radii give the cylinder. False unless height > 0, or if r < tol.
    static bool project_on_cone_normal(double const *p, double radius1, double radius2, double height, double tol,
                                       double *out);
    /// A = dx^2 + dy^2 - k^2 dz^2, B = px dx + py dy - k dz R, C = px^2 + py^2 - R^2 with k = (radius2 - radius1) /
    /// height and R = R(pz). False unless height > 0.
    static bool project_on_cone_mf_vector(double const *p, double const *dir, double radius1, double radius2,
                                          double height, double tol, double *out);
    /// (x^2 + y^2) / a^2 + z^2 / b^2 = 1. In the half plane of `p` the directions from the two foci to `p` have a mean
    /// w, the normal there of the confocal ellipse through `p`; the result is the point with that normal, (a^2 cos w,
    /// b^2 sin w) / sqrt(a^2 cos^2 w + b^2 sin^2 w). A point of the surface keeps its place. r < tol gives (0, 0, b),
    /// also below the plane z = 0. False unless a > 0 and b > 0.
    static bool project_on_ellipsoid_normal(double const *p, double a, double b, double tol, double *out);
    /// A = (dx^2 + dy^2) (m / a)^2 + dz^2 (m / b)^2 with m the larger of a, b, and B, C likewise (C less m^2), so that
    /// it is the sphere's for a = b. False unless a > 0 and b > 0.
    static bool project_on_ellipsoid_mf_vector(double const *p, double const *dir, double a, double b, double tol,
                                               double *out);

    // Plan points, segments and rings.

    /// 1 if `p` lies between a and b: the unit vectors from `p` to them have a cross product below 1e-10 and are
    /// opposed. `endValue` if p is nearer to an end than t in x and in y, t being 1e-11 of the segment's length and at
    /// most 1.
    static int mathIsPointOfLine2D(double const *a, double const *b, double const *p, int endValue);
    /// 1 if `p` is nearer to the plan segment ab than `tol`, or at that distance.
    static int mathIncludePointInLine(double const *a, double const *b, double const *p, double tol);
    /// 1 if `p` is inside the ring, 0 if not; on an edge, within 1e-10, 1 for any nonzero `closed`. Counts the edges
    /// that a ray to the right crosses; at a vertex only an edge whose lower end it is counts. A count of 0 gives 0.
    static int mathIsInsidePoint2D(double const *p, int n, double const poly[][2], int closed);
    /// Segments ab and cd: 1 if they cross, 0 if they touch or overlap, -1 if neither. An end counts as on the other's
    /// line by `math_ccw`, and then by x alone, or by y alone if the other's x are exactly equal. A segment that is one
    /// point touches where that point lies on the other.
    static int mathIntersect_ccw2D(double const *a, double const *b, double const *c, double const *d);
    /// Meeting point of infinite lines; (0, 0) and 0 if their sine is below 1e-15, or 1e-10 with `strict` 0, or a line
    /// has no length.
    static int mathLineLineCross2D(double const l1[2][2], double const l2[2][2], double *out, int strict);
    /// 1 if the infinite line meets the segment s1 s2, ends included. `out` is the point on the segment's line; (0, 0)
    /// for parallel lines.
    static int mathLineSegCross2D(double const line[2][2], double const *s1, double const *s2, double *out);
    /// Distance of `p` from its foot on the infinite line ab. `where` is 0 for a foot before a, 2 after b, 1 between. A
    /// line shorter than 1e-15 gives the distance to a, and 1.
    static double mathDistanceFromIntersectPointToLine2D(double const *a, double const *b, double const *p, int &where);
    /// 1 if `p` is left of the line from a to b, 0 if right, 2 on it: the double area below 1e-7 in size. NaN
    /// gives 0.
    static int Get2DPointPosByLine(double const *p, double const *a, double const *b);
    /// Centre of the arc over a chord whose height is `bulge`; its side follows the sign. A bulge of 0 gives 0 and the
    /// chord's midpoint; a chord of no length gives 1 and its point.
    static int GetCenter_Bulge(double const chord[2][2], double bulge, double *out);
    /// Height of the arc of `radius` over a chord, of the smaller arc or, with `minor` 0, the larger one; it has the
    /// radius's sign. A semicircle gives the radius, a chord longer than the diameter 0.
    static double GetBulge(double const chord[2][2], double radius, int minor);
    /// The whole numbers around `value`: its whole part w and w + 1, or w - 1 and w if its fraction is below 1e-15 in
    /// size. Always 1. Beyond the range of int, the ends of that range.
    static int GetDivideNum(double value, int &upper, int &lower);
    /// 1 if two rings touch: an edge test that takes only the closing edges as edges and every other index as its
    /// point, and then whether the boxes of the rings meet. A count of 0 gives 0.
    static int IsOverLap_Polyline(int n1, double const p1[][2], int n2, double const p2[][2]);
    /// Offsets a ring in place by `dist` (negative: the other way): to the right of each edge for `side` 1, to the left
    /// for another; with `side` below 1 away from the inside. Each vertex goes to where its two moved edges meet, at
    /// convex and reflex corners alike. Points closer than 1e-15 to their neighbour, a repeated first point among them,
    /// move with it. 0, with `pts` as it was, for fewer than 3 points or neighbouring edges with a sine below 1e-15.
    /// Edges that an inward offset turns round are not taken out.
    static int mathOffsetOfPolyline(double dist, int n, double pts[][2], int side);
    /// Circle through three plan points. 0, with the outputs untouched, if their double area is below 1e-15.
    static int mathCircleForm3Point(double const *p1, double const *p2, double const *p3, double *center,
                                    double &radius);
    /// Arc from p1 through p2 to p3: besides the circle the directions, in 0 up to 360, of its start and end as it runs
    /// counter-clockwise, so p3 is the start of a clockwise arc. 0 as in `mathCircleForm3Point`.
    static int mathArcForm3Point(double const *p1, double const *p2, double const *p3, double *center, double &radius,
                                 double &startDeg, double &endDeg);
    /// Area of a triangle in space.
    static double mathArea(double const *a, double const *b, double const *c);
    /// Area of a plane polygon in space; 0 for fewer than 3 points.
    static double mathArea(int n, double const poly[][3]);
    /// Signed area of a plan triangle, positive counter-clockwise.
    static double mathArea2d(double const *a, double const *b, double const *c);
    /// The same of a ring; 0 for fewer than 3 points.
    static double mathArea2d(int n, double const poly[][2]);
    /// Centroid of the region inside a ring, and its signed area. 0, with the mean of the points (the origin for none),
    /// if the area is 0.
    static int mathPolyCentroid(int n, double const poly[][2], double *out, double &area);
};

} // namespace zvi::lib
