#pragma once

#include "zvi/Export.h"
#include "zvi/core/CArray.h"
#include "zvi/core/MArray.h"
#include "zvi/core/MVector.h"
#include "zvi/curves/T_REGION2D_G.h"

namespace zvi_interface {
class IUnitCtrl;
}

namespace zvi::lib {

class MUnitCtrl;

/// The library's curve: a straight segment, a circular arc or a full circle in space.
///
/// An arc runs from `Pos1` to `Pos2` counter-clockwise about `Normal` (right-hand rule), so a negative `Normal[2]`
/// means clockwise in plan. With `Is2D` the arc is defined in x and y, and z runs from `Pos1[2]` to `Pos2[2]` with the
/// swept angle. Angles are degrees, lengths the units of the coordinates. A length within 1e-12 of 0 counts as zero,
/// and such a vector is left unnormalised or the operation fails, as its comment says. An int result is 1 for success
/// or yes and 0 otherwise; on failure outputs keep what they had. Nothing throws or logs.
///
///     T_LINE_G arc;
///     arc.Set({1, 0, 0}, {0, 1, 0}, 1, {0, 0, 0}, {0, 0, 1}, 1, 1e-4);
///     arc.GetLineAngle(); // 90
struct ZVI_API T_LINE_G {
    /// A point, or a vector, of space.
    using Point = MVector<double, 3>;

    Point Pos1;                  ///< start
    Point Pos2;                  ///< end; equal to `Pos1` for a full circle
    int IsCurv = 0;              ///< 0 for a line, nonzero for an arc or a circle
    int IsCircle = 0;            ///< nonzero for a full circle; only the centre overload of `Set` sets it
    double Radius = 0.0;         ///< 0 for a line
    double BetaAng = 0.0;        ///< rotation of the arc's plane about the chord, kept for clients and for rebuilding
    Point Center;                ///< centre of the arc
    Point Normal = {0., 0., 1.}; ///< unit normal of the arc's plane
    int Is2D = 0;                ///< nonzero for a plan-view arc

    /// Makes every field 0, and then `Normal` (0, 0, 1).
    void Initialize();

    // --- Construction. All return the record itself. ---

    /// A straight line.
    T_LINE_G &Set(Point const &p1, Point const &p2);
    /// An arc by centre and normal. A chord shorter than `tol`, or `isCurv` 0, deliberately gives a line. With `is2D`
    /// the normal becomes (0, 0, 1) or (0, 0, -1) by the sign of its z. `BetaAng` of a plan-view or level arc is 0, or
    /// 180 if it runs clockwise; any other arc gets 90, the value that existing records hold, or 0 without a normal.
    T_LINE_G &Set(Point const &p1, Point const &p2, int isCurv, Point const &center, Point const &normal, int is2D,
                  double tol);
    /// An arc by its rise `width` over the chord and the rotation `betaAng` of its plane about the chord. A chord
    /// shorter than `tol`, `isCurv` 0, or a rise and chord that make no circle give a line.
    T_LINE_G &Set(Point const &p1, Point const &p2, int isCurv, double width, double betaAng, int is2D, double tol);
    /// A full circle that starts and ends at `center` + (`radius`, 0, 0), whatever the normal.
    T_LINE_G &Set(Point const &center, double radius, Point const &normal);

    // --- Measures ---

    /// Length. Of a line in x and y only when `plan` is nonzero; of a plan-view arc the plan length when `plan` is
    /// nonzero and that of the helix otherwise.
    double GetLineLength(int plan) const;
    /// Swept angle from the direction of `a` to that of `b` about the centre, 0 up to 360; 0 for a line, 360 for a full
    /// circle whatever the points. A point on the centre gives NaN.
    double GetAngleOf(Point const &a, Point const &b) const;
    /// `GetAngleOf(Pos1, p)`.
    double GetLineAngleFromP1(Point const &p) const;
    /// `GetAngleOf(Pos1, Pos2)`.
    double GetLineAngle() const;
    /// Area between arc and chord; 0 for a line.
    double GetLineArea() const;
    /// `Radius`.
    double GetRadius() const { return Radius; }
    /// Midpoint of the curve, not the centre of the arc. 0 if an arc has no radius.
    int GetLineCenter(Point &out) const;
    /// Plan box, grown by `tol`; the box of a full circle deliberately is not. Always 1.
    int GetMBR2D(T_REGION2D_G &region, double tol) const;
    /// Rise of the arc over its chord. A line gives a rise of 0 and 1, an arc of angle 0 a rise of 0 and 0.
    int GetLineWidth(double &width) const;
    /// Local axes as the rows of `m`: along the chord, n x t, and their product; of a line as
    /// `MGeomFunc::calcLineLocalVector` with beta 0. 0 for a chord of zero length.
    int GetLineLocalAxis(double m[3][3]) const;
    /// `BetaAng`. Always 1.
    int GetLineBetaAng(double &betaAng) const;
    /// Distance to the segment, or to the circle of an arc in the plane through the point: the extent of the arc is
    /// deliberately not considered.
    double GetDistance(Point const &point) const;
    /// Replaces `out` by the two extreme points of the curve: of an arc those farthest along and against
    /// `Normal` x `axis`, which for a full circle come out as one point twice; of a line its ends. Always 1.
    int GetLineBreadth(double const *axis, MArray<Point> &out) const;
    /// The same for the axis (cos, sin, 0).
    int GetLineBreadth(double angleDeg, MArray<Point> &out) const;

    // --- Comparison ---

    /// 1 if the curves have the same ends (strictly closer than `tol`), and arcs the same midpoint and normal. Unless
    /// `sameDirOnly` is nonzero the other may run the other way.
    int IsSameLine(T_LINE_G const &other, double tol, int sameDirOnly) const;
    /// 1 if the other curve touches an end of this one and lies on the same carrier. With `headToTailOnly` one must end
    /// where the other starts. Curves that meet only at their starts are deliberately not continuous.
    int IsContinuousLine(T_LINE_G const &other, double tol, int headToTailOnly) const;

    // --- Positions ---

    /// Replaces the point by its projection on the infinite line, or on the circle of an arc; the z of a plan-view arc
    /// follows the swept angle. Always 1. A line of length 0 gives NaN.
    int ProjectToLine(Point &point) const;
    /// Position at `ratio` of the length; above 1 runs past the end, below 0 fails.
    int GetPosByRatio(Point &out, double ratio) const;
    /// Position at `angle` from the start; fails on a line.
    int GetPosByAngle(Point &out, double angle) const;
    /// Position at `length` from the start. With `plan` nonzero the length is that of the plan view. Fails when a line
    /// has no length, or an arc no radius.
    int GetPosByLength(Point &out, double length, int plan) const;
    /// Signed distance along a line, or length of the arc, from `Pos1` to the projection of the point. Any point but
    /// `Pos1` itself gives the whole length on a full circle.
    int GetDistOnChordFromP1_2D(Point const &point, double &distance) const;
    /// `GetDistOnChordFromP1_2D` of b less that of a, so it is signed.
    int GetDistOnChord_2D(Point const &a, Point const &b, double &distance) const;
    /// The same for the points (ax, ay, az) and (bx, by, bz).
    int GetDistOnChord_2D(double ax, double ay, double az, double bx, double by, double bz, double &distance) const;
    /// Unit tangent at `length` from the start. On a line it is (dx, dy, dy) made unit: the third component
    /// deliberately is the y difference again. Fails when a vector has no direction.
    int GetTagentVectorByLength(double length, Point &out, int plan) const;
    /// Unit tangent at `ratio` of the plan length; fails outside 0 to 1.
    int GetTagentVectorByRatio(double ratio, Point &out) const;
    /// Sorts the points along the curve and fills `order` with their former indices. Points just before the start of an
    /// arc, within `tol`, stay first; a clockwise arc (negative `Normal[2]`) sorts by the negated angle. Fewer than two
    /// points append a 0 to what `order` holds, and give 1. A line of length 0 changes nothing and gives 0.
    int SortByDist(MArray<Point> &points, double tol, MArray<int> &order) const;
    /// Cuts the curve into `count` equal parts and replaces `points` by the inner points of division, and both ends
    /// when `withEnds` is nonzero; `lengths`, if given, by their distances along the curve. A `count` of 0 is found
    /// from `stepAngle` by `CalcArcUnitAngle`, so a line then gets no inner points. Always 1.
    int MakeCurvPoints(MArray<Point> &points, int withEnds, double stepAngle, CArray<double> *lengths, int count) const;
    /// The smallest multiple of 8 equal steps of at most `maxStep` in `total`: their number and size. Nothing is
    /// written unless `maxStep` is positive; a `total` of 0 gives 0 steps of a size that is not a number.
    static void CalcArcUnitAngle(double total, double maxStep, double &unit, int &count);

    // --- Changes ---

    /// Moves the ends. An arc keeps its rise and `BetaAng`; a full circle's centre becomes `newP1` less the radius in
    /// x. A new chord of zero length leaves an arc as it is and gives 1. 0, without a change, if the arc has no rise or
    /// cannot be built.
    int MoveTo(Point const &newP1, Point const &newP2);
    /// Swaps the ends and negates the normal. A full circle has no chord and deliberately becomes a line of length 0.
    void ReverseDir();
    /// Turns the arc over to the other side of its chord. A full circle has none and becomes a line of length 0.
    void MirrorCurv();
    /// Multiplies by, divides by, or multiplies by the former length factor of the unit system: x and y of `Pos1`,
    /// `Pos2` and `Center`, and `Radius`. The z coordinates deliberately stay. Null changes nothing.
    void ConvertUnitIn(zvi_interface::IUnitCtrl *unitCtrl);
    /// Divides the same values by the current length factor.
    void ConvertUnitOut(zvi_interface::IUnitCtrl *unitCtrl);
    /// Moves the same values over the last change of units: former length factor over current one.
    void ConvertUnitPrev(zvi_interface::IUnitCtrl *unitCtrl);
    /// Converts the same values from the length unit with index `unit` to the current unit.
    void ConvertCurUnit(MUnitCtrl *unitCtrl, unsigned int const &unit);
};

} // namespace zvi::lib
