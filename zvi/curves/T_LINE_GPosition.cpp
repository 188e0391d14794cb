#include "zvi/base/Pi.h"
#include "zvi/curves/T_LINE_G.h"

#include "zvi/core/MQSort.h"
#include "zvi/curves/VectorDetail.h"
#include "zvi/math/func/MMathFunc.h"

#include <algorithm>
#include <cmath>

namespace zvi::lib {

using curves::Vec3;

namespace {

/// Curves are always cut into a multiple of this many parts.
constexpr int kPartMultiple = 8;
/// The largest such multiple that an int holds.
constexpr double kLargestPartCount = 2147483640.0;

/// Height of a plan-view arc at a point over it, by the swept angle; `fallback` when the arc has no angle.
double HeightAt(T_LINE_G const &arc, Vec3 const &point, double fallback) {
    double const whole = arc.GetLineAngle();
    if (!(whole > 0.0))
        return fallback;
    return arc.Pos1[2] + arc.GetLineAngleFromP1(point) / whole * (arc.Pos2[2] - arc.Pos1[2]);
}

bool PositionOnLine(T_LINE_G const &line, double length, int plan, Vec3 &out) {
    Vec3 direction = line.Pos2 - line.Pos1;
    double const rise = direction[2];
    if (plan != 0)
        direction[2] = 0.0;
    double const whole = curves::Length(direction);
    if (curves::IsZeroLength(whole))
        return false;
    out = line.Pos1 + length * direction / whole;
    if (plan != 0)
        out[2] = line.Pos1[2] + rise * length / whole;
    return true;
}

bool PositionOnArc(T_LINE_G const &arc, double length, int plan, Vec3 &out) {
    if (arc.Is2D != 0 && plan == 0)
        length *= arc.GetLineLength(1) / arc.GetLineLength(0);
    Vec3 const &center = arc.Center;
    Vec3 radial = arc.Pos1;
    MMathFunc::mathRotate(length / arc.Radius * 180.0 / base::kPi, arc.Normal[0], arc.Normal[1], arc.Normal[2],
                          center[0], center[1], center[2], radial[0], radial[1], radial[2]);
    radial -= center;
    if (arc.Is2D != 0)
        radial[2] = 0.0;
    double const size = curves::Length(radial);
    if (curves::IsZeroLength(size))
        return false;
    out = {center[0] + arc.Radius * radial[0] / size, center[1] + arc.Radius * radial[1] / size,
           center[2] + arc.Radius * radial[2] / size};
    if (arc.Is2D != 0)
        out[2] = HeightAt(arc, out, arc.Pos1[2]);
    return true;
}

/// Angle from the start of the arc by which points are sorted.
double SortAngle(T_LINE_G const &arc, Vec3 const &point, double tol) {
    Vec3 const start = arc.Pos1 - arc.Center;
    Vec3 radial = point - arc.Center;
    if (arc.Is2D != 0)
        radial[2] = 0.0;
    double angle = MMathFunc::mathCrossAngleNormalizeWithSign(start.Data(), radial.Data());
    if (angle < 0.0 && curves::Distance(arc.Pos1, point) > std::fabs(tol))
        angle += 360.0;
    return arc.Normal[2] < 0.0 ? -angle : angle;
}

} // namespace

int T_LINE_G::ProjectToLine(Point &point) const {
    if (IsCurv == 0) {
        Vec3 const direction = curves::Normalized(Pos2 - Pos1);
        Vec3 const p = point;
        MMathFunc::mathPLCrossPoint(Pos1[0], Pos1[1], Pos1[2], direction[0], direction[1], direction[2], p[0], p[1],
                                    p[2], point[0], point[1], point[2]);
        return 1;
    }
    Vec3 foot;
    MMathFunc::mathPLCrossPoint(Center[0], Center[1], Center[2], Normal[0], Normal[1], Normal[2], point[0], point[1],
                                point[2], foot[0], foot[1], foot[2]);
    Vec3 const radial = curves::Normalized(point - foot);
    double const z = point[2];
    point = Center + Radius * radial;
    if (Is2D != 0)
        point[2] = HeightAt(*this, point, z);
    return 1;
}

int T_LINE_G::GetPosByRatio(Point &out, double ratio) const {
    if (ratio < 0.0)
        return 0;
    if (ratio == 0.0 || ratio == 1.0) {
        out = ratio == 0.0 ? Pos1 : Pos2;
        return 1;
    }
    int const plan = IsCurv != 0 && Is2D != 0 ? 1 : 0;
    return GetPosByLength(out, GetLineLength(plan) * ratio, plan);
}

int T_LINE_G::GetPosByAngle(Point &out, double angle) const {
    if (IsCurv == 0)
        return 0;
    return GetPosByLength(out, 2.0 * base::kPi * Radius * angle / 360.0, 1);
}

int T_LINE_G::GetPosByLength(Point &out, double length, int plan) const {
    if (length == 0.0) {
        out = Pos1;
        return 1;
    }
    Vec3 position;
    bool const isFound =
        IsCurv == 0 ? PositionOnLine(*this, length, plan, position) : PositionOnArc(*this, length, plan, position);
    if (!isFound)
        return 0;
    out = position;
    return 1;
}

int T_LINE_G::GetDistOnChordFromP1_2D(Point const &point, double &distance) const {
    distance = 0.0;
    Vec3 projected = point;
    if (ProjectToLine(projected) == 0)
        return 0;
    if (point == Pos1)
        return 1;
    if (IsCurv == 0) {
        distance = curves::Dot(projected - Pos1, curves::Normalized(Pos2 - Pos1));
        return 1;
    }
    double const planLength = GetLineAngleFromP1(projected) / 360.0 * 2.0 * base::kPi * Radius;
    double const height = Is2D != 0 ? projected[2] - Pos1[2] : 0.0;
    distance = Is2D != 0 ? std::sqrt(planLength * planLength + height * height) : planLength;
    return 1;
}

int T_LINE_G::GetDistOnChord_2D(Point const &a, Point const &b, double &distance) const {
    distance = 0.0;
    double distanceA = 0.0;
    double distanceB = 0.0;
    if (GetDistOnChordFromP1_2D(a, distanceA) == 0 || GetDistOnChordFromP1_2D(b, distanceB) == 0)
        return 0;
    distance = distanceB - distanceA;
    return 1;
}

int T_LINE_G::GetDistOnChord_2D(double ax, double ay, double az, double bx, double by, double bz,
                                double &distance) const {
    return GetDistOnChord_2D(Vec3(ax, ay, az), Vec3(bx, by, bz), distance);
}

int T_LINE_G::GetTagentVectorByLength(double length, Point &out, int plan) const {
    Vec3 tangent;
    if (IsCurv == 0) {
        // The y difference stands in for the z difference on purpose; clients were built on it.
        tangent = {Pos2[0] - Pos1[0], Pos2[1] - Pos1[1], Pos2[1] - Pos1[1]};
    } else {
        Vec3 position;
        if (GetPosByLength(position, length, plan) == 0)
            return 0;
        Vec3 inward = Center - position;
        if (Is2D != 0)
            inward[2] = 0.0;
        tangent = curves::Cross(inward, Normal);
    }
    if (!curves::Normalize(tangent))
        return 0;
    out = tangent;
    return 1;
}

int T_LINE_G::GetTagentVectorByRatio(double ratio, Point &out) const {
    if (!(ratio >= 0.0 && ratio <= 1.0))
        return 0;
    return GetTagentVectorByLength(GetLineLength(1) * ratio, out, 1);
}

int T_LINE_G::SortByDist(MArray<Point> &points, double tol, MArray<int> &order) const {
    if (points.Size() < 2) {
        order.PushBack(0);
        return 1;
    }
    Vec3 direction = Pos2 - Pos1;
    if (IsCurv == 0 && !curves::Normalize(direction))
        return 0;
    MArray<double> keys;
    MArray<int> indices;
    keys.Reserve(points.Size());
    indices.Reserve(points.Size());
    for (std::size_t i = 0; i < points.Size(); ++i) {
        keys.PushBack(IsCurv == 0 ? curves::Dot(points[i], direction) : SortAngle(*this, points[i], tol));
        indices.PushBack(static_cast<int>(i));
    }
    MQSort::QSortDblWithIndex(indices.Data(), keys.Data(), indices.Size());
    MArray<Point> const former(points);
    for (std::size_t i = 0; i < points.Size(); ++i)
        points[i] = former[static_cast<std::size_t>(indices[i])];
    order = indices;
    return 1;
}

int T_LINE_G::MakeCurvPoints(MArray<Point> &points, int withEnds, double stepAngle, CArray<double> *lengths,
                             int count) const {
    points.Clear();
    if (lengths)
        lengths->RemoveAll();
    double unit = 0.0;
    if (count == 0)
        CalcArcUnitAngle(GetLineAngle(), stepAngle, unit, count);
    double const total = GetLineLength(0);
    auto const add = [&](Vec3 const &point, double length) {
        points.PushBack(point);
        if (lengths)
            lengths->Add(length);
    };
    if (withEnds != 0)
        add(Pos1, 0.0);
    for (int i = 1; i < count; ++i) {
        double const ratio = static_cast<double>(i) / count;
        Vec3 point;
        if (GetPosByRatio(point, ratio) != 0)
            add(point, ratio * total);
    }
    if (withEnds != 0)
        add(Pos2, total);
    return 1;
}

void T_LINE_G::CalcArcUnitAngle(double total, double maxStep, double &unit, int &count) {
    if (!(maxStep > 0.0))
        return;
    double const parts = std::ceil(std::ceil(total / maxStep) / kPartMultiple) * kPartMultiple;
    count = static_cast<int>(std::clamp(std::isnan(parts) ? 0.0 : parts, -kLargestPartCount, kLargestPartCount));
    unit = total / count;
}

} // namespace zvi::lib
