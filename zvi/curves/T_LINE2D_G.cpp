#include "zvi/curves/T_LINE2D_G.h"

#include "zvi/curves/ArcDetail.h"

#include <cmath>

namespace zvi::lib {

void T_LINE2D_G::Initialize() {
    IsCurv = 0;
    Radius = 0.0;
    IsCCW = 1;
}

T_LINE2D_G &T_LINE2D_G::Set(double const *p1, double const *p2) {
    Initialize();
    Pos1[0] = p1[0];
    Pos1[1] = p1[1];
    Pos2[0] = p2[0];
    Pos2[1] = p2[1];
    return *this;
}

T_LINE2D_G &T_LINE2D_G::Set(double const *p1, double const *p2, int isCurv, double const *center, int isCCW) {
    double const dx = p1[0] - center[0];
    double const dy = p1[1] - center[1];
    T_ARC2D_INFO arc;
    arc.IsCurv = isCurv;
    arc.Center[0] = center[0];
    arc.Center[1] = center[1];
    arc.Radius = std::sqrt(dx * dx + dy * dy);
    arc.IsCCW = isCCW;
    return Set(p1, p2, arc);
}

T_LINE2D_G &T_LINE2D_G::Set(double const *p1, double const *p2, T_ARC2D_INFO const &arc) {
    Set(p1, p2);
    IsCurv = arc.IsCurv;
    Center[0] = arc.Center[0];
    Center[1] = arc.Center[1];
    Radius = arc.Radius;
    IsCCW = arc.IsCCW;
    return *this;
}

int T_LINE2D_G::GetMBR2D(T_REGION2D_G &region, double tol) const {
    // Copies, because the fields of a packed record have no aligned address.
    double const p1[2] = {Pos1[0], Pos1[1]};
    double const p2[2] = {Pos2[0], Pos2[1]};
    double const center[2] = {Center[0], Center[1]};
    T_REGION2D_G const box =
        IsCurv == 0 ? curves::BoxOfEnds(p1, p2) : curves::ArcBox(p1, p2, center, Radius, IsCCW != 0);
    region = curves::Grown(box, tol);
    return 1;
}

} // namespace zvi::lib
