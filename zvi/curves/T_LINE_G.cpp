#include "zvi/curves/T_LINE_G.h"

#include "zvi/curves/ArcDetail.h"
#include "zvi/curves/MGeomFunc.h"
#include "zvi/curves/VectorDetail.h"
#include "zvi/interface/IUnitCtrl.h"
#include "zvi/units/MUnitCtrl.h"

namespace zvi::lib {

using curves::Vec3;

namespace {

/// The quantity kind of a length, and the index of the newton, in which a length has no part.
constexpr int kLengthKind = 1;
constexpr int kForceIndex = 2;

/// `BetaAng` of an arc that is given by centre and normal.
double BetaOfArc(Vec3 const &p1, Vec3 const &p2, Vec3 const &normal, int is2D) {
    if (curves::Length(normal) == 0.0)
        return 0.0;
    if (is2D != 0)
        return normal[2] < 0.0 ? 180.0 : 0.0;
    if (p1[2] == p2[2] && normal[0] == 0.0 && normal[1] == 0.0)
        return normal[2] < 0.0 ? 180.0 : 0.0;
    // The axes of the arc are deliberately all zero here, so that the angle comes out as 90; existing records hold it.
    double const noAxes[3][3] = {};
    return MGeomFunc::calcLineLocalAngle(p1.Data(), p2.Data(), noAxes);
}

/// An arc over a chord, as its rise and rotation give it.
struct RisenArc {
    Vec3 center;
    double radius = 0.0;
    Vec3 axesNormal;   ///< third of the chord's local axes
    Vec3 circleNormal; ///< normal of the circle through the ends and the top
};

bool RaiseArc(Vec3 const &p1, Vec3 const &p2, double width, double betaAng, int is2D, RisenArc &arc) {
    bool const isPlan = is2D != 0;
    Vec3 const start = isPlan ? curves::WithZ(p1, 0.0) : p1;
    Vec3 const end = isPlan ? curves::WithZ(p2, 0.0) : p2;
    double axes[3][3];
    if (MGeomFunc::calcLineLocalVector(start.Data(), end.Data(), betaAng, axes, 0, nullptr, nullptr) == 0)
        return false;
    Vec3 const top = curves::Midpoint(start, end) - width * Vec3::FromArray(axes[1]);
    double circleAxes[3][3];
    if (MGeomFunc::CalcCurvInfoFrom3P(start.Data(), top.Data(), end.Data(), arc.center.Data(), circleAxes, 0) == 0)
        return false;
    arc.radius = isPlan ? curves::PlanDistance(arc.center, p1) : curves::Distance(arc.center, p1);
    if (isPlan)
        arc.center[2] = (p1[2] + p2[2]) / 2.0;
    arc.axesNormal = Vec3::FromArray(axes[2]);
    arc.circleNormal = Vec3::FromArray(circleAxes[2]);
    return true;
}

/// Changes the seven plan lengths of the record, each by a call of its own.
template <typename Change>
void ChangePlanLengths(T_LINE_G &line, Change change) {
    for (Vec3 *const point : {&line.Pos1, &line.Pos2, &line.Center}) {
        (*point)[0] = change((*point)[0]);
        (*point)[1] = change((*point)[1]);
    }
    line.Radius = change(line.Radius);
}

} // namespace

void T_LINE_G::Initialize() {
    *this = T_LINE_G();
}

T_LINE_G &T_LINE_G::Set(Point const &p1, Point const &p2) {
    T_LINE_G line;
    line.Pos1 = p1;
    line.Pos2 = p2;
    return *this = line;
}

T_LINE_G &T_LINE_G::Set(Point const &p1, Point const &p2, int isCurv, Point const &center, Point const &normal,
                        int is2D, double tol) {
    if (tol > curves::Distance(p1, p2) || isCurv == 0)
        return Set(p1, p2);
    T_LINE_G arc;
    arc.Pos1 = p1;
    arc.Pos2 = p2;
    arc.IsCurv = isCurv;
    arc.Radius = is2D != 0 ? curves::PlanDistance(center, p1) : curves::Distance(center, p1);
    arc.BetaAng = BetaOfArc(p1, p2, normal, is2D);
    arc.Center = center;
    arc.Normal = curves::Normalized(normal);
    arc.Is2D = is2D;
    if (is2D != 0)
        arc.Normal = {0.0, 0.0, normal[2] >= 0.0 ? 1.0 : -1.0};
    return *this = arc;
}

T_LINE_G &T_LINE_G::Set(Point const &p1, Point const &p2, int isCurv, double width, double betaAng, int is2D,
                        double tol) {
    RisenArc risen;
    if (tol > curves::Distance(p1, p2) || isCurv == 0 || !RaiseArc(p1, p2, width, betaAng, is2D, risen))
        return Set(p1, p2);
    T_LINE_G arc;
    arc.Pos1 = p1;
    arc.Pos2 = p2;
    arc.IsCurv = isCurv;
    arc.Radius = risen.radius;
    arc.BetaAng = betaAng;
    arc.Center = risen.center;
    arc.Normal = risen.axesNormal;
    arc.Is2D = is2D;
    return *this = arc;
}

T_LINE_G &T_LINE_G::Set(Point const &center, double radius, Point const &normal) {
    T_LINE_G circle;
    circle.BetaAng = normal[0] == 0.0 && normal[1] == 0.0 && normal[2] < 0.0 ? 180.0 : 0.0;
    circle.Pos1 = center + Vec3(radius, 0.0, 0.0);
    circle.Pos2 = circle.Pos1;
    circle.IsCurv = 1;
    circle.IsCircle = 1;
    circle.Radius = radius;
    circle.Center = center;
    circle.Normal = curves::Normalized(normal);
    return *this = circle;
}

int T_LINE_G::MoveTo(Point const &newP1, Point const &newP2) {
    if (IsCurv == 0) {
        Vec3 const end = newP2;
        Pos1 = newP1;
        Pos2 = end;
        return 1;
    }
    if (IsCircle != 0) {
        Vec3 const start = newP1;
        Pos2 = newP2;
        Pos1 = start;
        Center = start - Vec3(Radius, 0.0, 0.0);
        return 1;
    }
    double width = 0.0;
    if (GetLineWidth(width) == 0 || width == 0.0)
        return 0;
    if (curves::IsZeroLength(curves::Distance(newP1, newP2)))
        return 1;
    RisenArc risen;
    if (!RaiseArc(newP1, newP2, width, BetaAng, Is2D, risen))
        return 0;
    Vec3 const end = newP2;
    Pos1 = newP1;
    Pos2 = end;
    Center = risen.center;
    Radius = risen.radius;
    Normal = risen.circleNormal;
    return 1;
}

void T_LINE_G::ReverseDir() {
    Set(Pos2, Pos1, IsCurv, Center, -Normal, Is2D, curves::kShortestChord);
}

void T_LINE_G::MirrorCurv() {
    double width = 0.0;
    GetLineWidth(width);
    double betaAng = BetaAng + 180.0;
    if (betaAng > 360.0)
        betaAng -= 360.0;
    Set(Pos1, Pos2, IsCurv, width, betaAng, Is2D, curves::kShortestChord);
}

void T_LINE_G::ConvertUnitIn(zvi_interface::IUnitCtrl *unitCtrl) {
    if (!unitCtrl)
        return;
    ChangePlanLengths(*this, [=](double v) { return v * unitCtrl->GetConvertFactorCurrent(kLengthKind); });
}

void T_LINE_G::ConvertUnitOut(zvi_interface::IUnitCtrl *unitCtrl) {
    if (!unitCtrl)
        return;
    ChangePlanLengths(*this, [=](double v) { return v / unitCtrl->GetConvertFactorCurrent(kLengthKind); });
}

void T_LINE_G::ConvertUnitPrev(zvi_interface::IUnitCtrl *unitCtrl) {
    if (!unitCtrl)
        return;
    ChangePlanLengths(*this, [=](double v) { return v * unitCtrl->GetConvertFactorPrevious(kLengthKind); });
}

void T_LINE_G::ConvertCurUnit(MUnitCtrl *unitCtrl, unsigned int const &unit) {
    if (!unitCtrl)
        return;
    int const length = static_cast<int>(unit);
    ChangePlanLengths(
        *this, [=](double v) { return unitCtrl->ConvValueTgtUnit2CurUnit(kForceIndex, length, kLengthKind, v); });
}

} // namespace zvi::lib
