#include "zvi/curves/T_MBR3D.h"

#include "zvi/curves/VectorDetail.h"

#include <algorithm>

namespace zvi::lib {

namespace {

void Widen(double value, double tol, double &least, double &greatest) {
    if (value < least)
        least = value - tol;
    if (value > greatest)
        greatest = value + tol;
}

} // namespace

void T_MBR3D::Initialize() {
    *this = T_MBR3D();
}

void T_MBR3D::Set(MVector<double, 3> const &p1, MVector<double, 3> const &p2, double tol) {
    MinX = std::min(p1[0], p2[0]) - tol;
    MaxX = std::max(p1[0], p2[0]) + tol;
    MinY = std::min(p1[1], p2[1]) - tol;
    MaxY = std::max(p1[1], p2[1]) + tol;
    MinZ = std::min(p1[2], p2[2]) - tol;
    MaxZ = std::max(p1[2], p2[2]) + tol;
}

void T_MBR3D::SetWithCurv(MVector<double, 3> const &p1, MVector<double, 3> const & /*p2*/, double tol,
                          MVector<double, 3> const &center) {
    double const half = curves::PlanDistance(center, p1) + tol;
    MinX = center[0] - half;
    MaxX = center[0] + half;
    MinY = center[1] - half;
    MaxY = center[1] + half;
    MinZ = center[2] - half;
    MaxZ = center[2] + half;
}

int T_MBR3D::IsInnerPoint(MVector<double, 3> const &p) const {
    return p[0] >= MinX && p[0] <= MaxX && p[1] >= MinY && p[1] <= MaxY && p[2] >= MinZ && p[2] <= MaxZ ? 1 : 0;
}

int T_MBR3D::IsOverlap(T_MBR3D const &other) const {
    return MinX <= other.MaxX && other.MinX <= MaxX && MinY <= other.MaxY && other.MinY <= MaxY && MinZ <= other.MaxZ &&
                   other.MinZ <= MaxZ
               ? 1
               : 0;
}

void T_MBR3D::UpdateWith(double x, double y, double z, double tol) {
    Widen(x, tol, MinX, MaxX);
    Widen(y, tol, MinY, MaxY);
    Widen(z, tol, MinZ, MaxZ);
}

} // namespace zvi::lib
