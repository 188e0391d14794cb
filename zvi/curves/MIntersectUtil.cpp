#include "zvi/curves/MIntersectUtil.h"

#include "zvi/curves/ArcDetail.h"
#include "zvi/curves/VectorDetail.h"
#include "zvi/math/func/MMathFunc.h"

#include <cmath>
#include <utility>

namespace zvi::lib {

using curves::Vec3;

namespace {

/// An arc whose unit normal has a smaller z is not horizontal.
constexpr double kHorizontalNormal = 1e-9;
/// A discriminant of smaller size makes a line a tangent (fourth power of the units of the input).
constexpr double kTangentDiscriminant = 1e-6;
/// Circles touch when their half chord is below this part of the distance of the centres.
constexpr double kTouchingHalfChord = 1e-6;
/// Meeting points closer than this are one (units of the input).
constexpr double kSamePoint = 1e-9;
/// Above this the z of a cross product gives an angle its sign in `mathCrossAngleNormalizeWithSign`, on which
/// `SortByDist` relies (square of the input's units).
constexpr double kSignComponent = 1e-10;

Vec3 const *CenterOf(T_LINE_G const &curve) {
    return curve.IsCurv != 0 ? &curve.Center : nullptr;
}

bool AreApart(T_REGION2D_G const &a, T_REGION2D_G const &b) {
    return a.MinX > b.MaxX || b.MinX > a.MaxX || a.MinY > b.MaxY || b.MinY > a.MaxY;
}

curves::PlanVector Radial(Vec3 const &center, Vec3 const &p) {
    return {p[0] - center[0], p[1] - center[1]};
}

/// The counter-clockwise plan arc on which a range test is made; a line when its chord is too short.
T_LINE_G RangeArc(Vec3 const &a, Vec3 const &b, Vec3 const &center) {
    T_LINE_G arc;
    return arc.Set(a, b, 1, center, {0.0, 0.0, 1.0}, 1, curves::kShortestChord);
}

/// The range test by angles, and whether the projection on the arc moves the point by no more than `tol`.
bool IsInRange(Vec3 const &p, T_LINE_G const &arc, double tol) {
    double const whole = arc.GetAngleOf(arc.Pos1, arc.Pos2);
    double const swept = arc.GetAngleOf(arc.Pos1, p);
    if (!(0.0 <= swept && swept <= whole))
        return false;
    Vec3 projected = p;
    arc.ProjectToLine(projected);
    return !(curves::Distance(p, projected) > tol);
}

/// Whether the projection on a level plan arc, certainly within its range, moves the point by no more than `tol`: no
/// angle is needed, because the height of the projection is that of the ends.
bool IsNearLevelArc(Vec3 const &p, double z, Vec3 const &center, double radius, double tol) {
    double const footZ = center[2] + (p[2] - center[2]);
    Vec3 const radial = curves::Normalized({p[0] - center[0], p[1] - center[1], p[2] - footZ});
    Vec3 const projected = {center[0] + radius * radial[0], center[1] + radius * radial[1], z};
    return !(curves::Distance(p, projected) > tol);
}

/// True if the angle from the start of the arc to the point certainly has the sign of their plan turn, and the point is
/// not one just before the start: then the angles of `SortByDist` are those of a full turn.
bool HasPlainSortAngle(T_LINE_G const &arc, Vec3 const &p) {
    curves::PlanVector const start = Radial(arc.Center, arc.Pos1);
    curves::PlanVector const v = Radial(arc.Center, p);
    bool const isFlat = arc.Pos1[2] == arc.Center[2] && (arc.Is2D != 0 || p[2] == arc.Center[2]);
    return isFlat && std::fabs(start.x * v.y - start.y * v.x) > kSignComponent &&
           curves::Distance(arc.Pos1, p) > kSamePoint;
}

/// Whether the first of two points comes first along the arc: 1 yes, -1 no, 0 if only the angles tell.
int CompareAlongArc(T_LINE_G const &arc, Vec3 const &p, Vec3 const &q) {
    if (!HasPlainSortAngle(arc, p) || !HasPlainSortAngle(arc, q))
        return 0;
    int const order = curves::CompareSweep(Radial(arc.Center, arc.Pos1), Radial(arc.Center, p), Radial(arc.Center, q));
    return arc.Normal[2] < 0.0 ? -order : order;
}

} // namespace

int MIntersectUtil::IsPointOnLine(Point const &p, T_LINE_G const &line, double tol, int withEnds) {
    if (line.IsCurv == 0)
        return IsPointOnLine(p, line.Pos1, line.Pos2, nullptr, tol, withEnds);
    if (!(std::fabs(line.Normal[2]) >= kHorizontalNormal))
        return 0;
    if (line.Normal[2] > 0.0)
        return IsPointOnLine(p, line.Pos1, line.Pos2, &line.Center, tol, withEnds);
    return IsPointOnLine(p, line.Pos2, line.Pos1, &line.Center, tol, withEnds);
}

int MIntersectUtil::IsPointOnLine(Point const &p, Point const &a, Point const &b, Point const *center, double tol,
                                  int withEnds) {
    T_MBR3D box;
    GetMbr_line(box, a, b, center, tol);
    if (IsInnerPoint(box, p) == 0)
        return 0;
    if (withEnds == 0 && (curves::Distance(p, a) < tol || curves::Distance(p, b) < tol))
        return 0;
    return center ? IsPointOnLineSub_curv(p, a, b, tol, box, *center, 1) : IsPointOnLineSub_line(p, a, b, tol, box, 1);
}

int MIntersectUtil::GetMbr_line(T_MBR3D &box, T_LINE_G const &line, double tol) {
    return GetMbr_line(box, line.Pos1, line.Pos2, CenterOf(line), tol);
}

int MIntersectUtil::GetMbr_line(T_MBR3D &box, Point const &a, Point const &b, Point const *center, double tol) {
    if (center)
        box.SetWithCurv(a, b, tol, *center);
    else
        box.Set(a, b, tol);
    return 1;
}

int MIntersectUtil::IsInnerPoint(T_MBR3D const &box, Point const &p) {
    return box.IsInnerPoint(p);
}

int MIntersectUtil::IsPointOnLineSub_line(Point const &p, Point const &a, Point const &b, double tol,
                                          T_MBR3D const &box, int checkRange) {
    if (curves::Distance(p, a) < tol || curves::Distance(p, b) < tol)
        return 1;
    Vec3 direction = b - a;
    double const length = curves::Length(direction);
    curves::Normalize(direction);
    Vec3 foot;
    double const t = MMathFunc::mathPLCrossPoint(a[0], a[1], a[2], direction[0], direction[1], direction[2], p[0], p[1],
                                                 p[2], foot[0], foot[1], foot[2]);
    if (checkRange != 0 && (t < 0.0 || t > length))
        return 0;
    if (curves::Distance(p, foot) > tol)
        return 0;
    return checkRange == 0 ? 1 : IsInnerPoint(box, foot);
}

int MIntersectUtil::IsPointOnLineSub_curv(Point const &p, Point const &a, Point const &b, double tol,
                                          T_MBR3D const & /*box*/, Point const &center, int checkRange) {
    if (curves::Distance(p, a) < tol || curves::Distance(p, b) < tol)
        return 1;
    double const radius = curves::PlanDistance(center, a);
    if (std::fabs(radius - curves::PlanDistance(center, p)) > tol)
        return 0;
    if (checkRange == 0)
        return 1;
    double const chord = curves::Distance(a, b);
    if (chord == 0.0)
        return 1; // A full circle: the arc between its ends is a line without length, which rejects no point.
    bool const isArc = chord >= curves::kShortestChord;
    int const order = isArc ? curves::CompareSweep(Radial(center, a), Radial(center, p), Radial(center, b)) : 0;
    if (order < 0)
        return 0;
    if (order > 0 && a[2] == b[2])
        return IsNearLevelArc(p, a[2], center, radius, tol) ? 1 : 0;
    return IsInRange(p, RangeArc(a, b, center), tol) ? 1 : 0;
}

namespace {

/// The tests of `MIntersectUtil` that clients do not call, for the steps below.
class CurveTests : private MIntersectUtil {
public:
    /// Adds the candidate to `out` if it lies on both curves.
    static void AddIfOnBoth(Vec3 const &p, T_LINE_G const &a, T_LINE_G const &b, double tol, MArray<Vec3> &out) {
        if (IsOn(p, a, tol) && IsOn(p, b, tol))
            out.PushBack(p);
    }

    /// True if the point lies on the infinite line or full circle that carries the curve.
    static bool IsOnCarrier(Vec3 const &p, T_LINE_G const &curve, double tol) {
        T_MBR3D const unused;
        if (curve.IsCurv == 0)
            return IsPointOnLineSub_line(p, curve.Pos1, curve.Pos2, tol, unused, 0) != 0;
        return IsPointOnLineSub_curv(p, curve.Pos1, curve.Pos2, tol, unused, curve.Center, 0) != 0;
    }

    static bool AreEndsOnCarrier(T_LINE_G const &curve, T_LINE_G const &carrier, double tol) {
        return IsOnCarrier(curve.Pos1, carrier, tol) && IsOnCarrier(curve.Pos2, carrier, tol);
    }

    /// True if ends and midpoint of the arc lie on the carrier of the other curve.
    static bool IsArcOnCarrier(T_LINE_G const &arc, T_LINE_G const &carrier, double tol) {
        if (!AreEndsOnCarrier(arc, carrier, tol))
            return false;
        Vec3 middle;
        return arc.GetLineCenter(middle) != 0 && IsOnCarrier(middle, carrier, tol);
    }

private:
    static bool IsOn(Vec3 const &p, T_LINE_G const &curve, double tol) {
        if (curve.IsCurv != 0)
            return IsPointOnLine(p, curve, tol, 1) != 0;
        T_MBR3D box;
        MIntersectUtil::GetMbr_line(box, curve, tol);
        return IsInnerPoint(box, p) != 0 && IsPointOnLineSub_line(p, curve.Pos1, curve.Pos2, tol, box, 1) != 0;
    }
};

/// Parameters along the line, from its start with its chord as the unit, at which its plan meets the circle of the arc.
int SolveLineAndCircle(T_LINE_G const &arc, T_LINE_G const &line, double parameters[2]) {
    double const px = line.Pos1[0];
    double const py = line.Pos1[1];
    double const dx = line.Pos2[0] - px;
    double const dy = line.Pos2[1] - py;
    double const cx = arc.Center[0];
    double const cy = arc.Center[1];
    double const quadratic = dx * dx + dy * dy;
    double const linear = 2.0 * ((px - cx) * dx + (py - cy) * dy);
    double const constant =
        cx * cx + cy * cy + (px * px + py * py) - 2.0 * (cx * px + cy * py) - arc.Radius * arc.Radius;
    double const discriminant = linear * linear - 4.0 * quadratic * constant;
    if (std::fabs(discriminant) < kTangentDiscriminant) {
        parameters[0] = -linear / (2.0 * quadratic);
        return quadratic != 0.0 ? 1 : 0;
    }
    if (!(discriminant > 0.0))
        return 0;
    double const root = std::sqrt(discriminant);
    parameters[0] = (root - linear) / (2.0 * quadratic);
    parameters[1] = (-root - linear) / (2.0 * quadratic);
    return 2;
}

/// Plan points at which the circles of two arcs meet, at the height of the start of the first arc.
int SolveCircles(T_LINE_G const &a, T_LINE_G const &b, double tol, Vec3 points[2]) {
    double const dx = b.Center[0] - a.Center[0];
    double const dy = b.Center[1] - a.Center[1];
    double const d = std::sqrt(dx * dx + dy * dy);
    double const r1 = a.Radius;
    double const r2 = b.Radius;
    if (d < tol || r1 + r2 < d || d + r2 < r1 || d + r1 < r2)
        return 0;
    double const along = (d * d - r2 * r2 + r1 * r1) / (2.0 * d);
    double const half = std::sqrt(r1 * r1 - along * along) / d;
    Vec3 const base = {a.Center[0] + dx * along / d, a.Center[1] + dy * along / d, a.Pos1[2]};
    if (std::fabs(half) < kTouchingHalfChord) {
        points[0] = base;
        return 1;
    }
    if (!(half > 0.0))
        return 0;
    Vec3 const offset = {dy * half, -dx * half, 0.0};
    points[0] = base + offset;
    points[1] = base - offset;
    return 2;
}

} // namespace

int MIntersectUtil::IsIntersectLine2Line(T_LINE_G const &a, T_LINE_G const &b, MArray<Point> &out, double tol) {
    if (a.IsCurv == 0 && b.IsCurv == 0)
        return IsIntersectLine2LineSub_line2line(a, b, out, tol);
    if (a.IsCurv != 0 && b.IsCurv != 0)
        return IsIntersectLine2LineSub_curv2curv(a, b, out, tol);
    return a.IsCurv != 0 ? IsIntersectLine2LineSub_curv2line(a, b, out, tol)
                         : IsIntersectLine2LineSub_curv2line(b, a, out, tol);
}

int MIntersectUtil::IsIntersectLine2LineSub_line2line(T_LINE_G const &a, T_LINE_G const &b, MArray<Point> &out,
                                                      double tol) {
    out.Clear();
    Vec3 point;
    double distance = 0.0;
    if (MMathFunc::mathIntersectLine2(a.Pos1.Data(), a.Pos2.Data(), b.Pos1.Data(), b.Pos2.Data(), tol, distance,
                                      point.Data()) == 0)
        return 0;
    CurveTests::AddIfOnBoth(point, a, b, tol, out);
    if (out.Empty() || CurveTests::AreEndsOnCarrier(a, b, tol) || CurveTests::AreEndsOnCarrier(b, a, tol))
        return 0;
    return 1;
}

int MIntersectUtil::IsIntersectLine2LineSub_curv2line(T_LINE_G const &arc, T_LINE_G const &line, MArray<Point> &out,
                                                      double tol) {
    out.Clear();
    double parameters[2];
    int const count = SolveLineAndCircle(arc, line, parameters);
    for (int i = 0; i < count; ++i) {
        double const t = parameters[i];
        Vec3 const point = {line.Pos1[0] + t * (line.Pos2[0] - line.Pos1[0]),
                            line.Pos1[1] + t * (line.Pos2[1] - line.Pos1[1]), line.Pos1[2]};
        CurveTests::AddIfOnBoth(point, line, arc, tol, out);
    }
    if (out.Empty() || CurveTests::IsArcOnCarrier(arc, line, tol) || CurveTests::AreEndsOnCarrier(line, arc, tol))
        return 0;
    return 1;
}

int MIntersectUtil::IsIntersectLine2LineSub_curv2curv(T_LINE_G const &a, T_LINE_G const &b, MArray<Point> &out,
                                                      double tol) {
    out.Clear();
    Vec3 points[2];
    int const count = SolveCircles(a, b, tol, points);
    for (int i = 0; i < count; ++i)
        CurveTests::AddIfOnBoth(points[i], a, b, tol, out);
    if (out.Empty() || CurveTests::IsArcOnCarrier(a, b, tol) || CurveTests::IsArcOnCarrier(b, a, tol))
        return 0;
    return 1;
}

int MIntersectUtil::GetIntersectPointByLine2Line(T_LINE_G const &a, T_LINE_G const &b, MArray<Point> &out, double tol) {
    out.Clear();
    T_REGION2D_G boxA;
    T_REGION2D_G boxB;
    if (a.GetMBR2D(boxA, tol) == 0 || b.GetMBR2D(boxB, tol) == 0 || AreApart(boxA, boxB))
        return 0;
    int const result = IsIntersectLine2Line(a, b, out, tol);
    if (result == 0)
        out.Clear();
    else
        SortDividedPoints(a, out);
    return result;
}

int MIntersectUtil::SortDividedPoints(T_LINE_G const &line, MArray<Point> &points) {
    int const order = points.Size() == 2 && line.IsCurv != 0 ? CompareAlongArc(line, points[0], points[1]) : 0;
    if (order < 0)
        std::swap(points[0], points[1]);
    if (order == 0 && points.Size() >= 2) {
        MArray<int> unused;
        line.SortByDist(points, kSamePoint, unused);
    }
    for (std::size_t i = points.Size(); i-- > 1;) {
        if (curves::Distance(points[i], points[i - 1]) < kSamePoint)
            points.RemoveAt(i);
    }
    return 1;
}

} // namespace zvi::lib
