#pragma once

#include "zvi/curves/T_REGION2D_G.h"

#include <algorithm>

namespace zvi::lib::curves {

// Comparisons of angles without computing them. The curve operations define their results by angles in degrees, from
// arc cosines of normalised vectors. Such an angle is off by less than 2e-8 radians where the vectors are nearly
// parallel and by some 1e-10 elsewhere. Where the sines of the angles in question are well above that, cross products
// decide the same comparison; where they are not, these operations answer 0, and the caller computes the angles.

/// A direction in plan, of any length.
struct PlanVector {
    double x;
    double y;
};

/// Vectors whose angle has a smaller sine are not certainly turned to one side; fifty times the error of an angle.
inline constexpr double kCertainSine = 1e-6;

/// 1 if `v` is certainly to the left of `u`, -1 if to the right, 0 if the sine between them is at most `sine`.
inline int CertainTurn(PlanVector u, PlanVector v, double sine = kCertainSine) {
    double const cross = u.x * v.y - u.y * v.x;
    double const limit = sine * sine * ((u.x * u.x + u.y * u.y) * (v.x * v.x + v.y * v.y));
    if (!(cross * cross > limit))
        return 0;
    return cross > 0.0 ? 1 : -1;
}

/// Counter-clockwise from `start`: 1 if `v` certainly comes before `w`, -1 if after, 0 if that is not certain.
int CompareSweep(PlanVector start, PlanVector v, PlanVector w);

/// Chord below which an arc that the operations themselves build is a line (units of the coordinates).
inline constexpr double kShortestChord = 0.0001;

/// Box of two plan points.
inline T_REGION2D_G BoxOfEnds(double const *p1, double const *p2) {
    return {std::min(p1[0], p2[0]), std::min(p1[1], p2[1]), std::max(p1[0], p2[0]), std::max(p1[1], p2[1])};
}

/// The box moved outward by `tol` on all four sides.
inline T_REGION2D_G Grown(T_REGION2D_G const &box, double tol) {
    return {box.MinX - tol, box.MinY - tol, box.MaxX + tol, box.MaxY + tol};
}

/// Box of a plan arc from `p1` to `p2`, without a tolerance, as `T_LINE2D_G::GetMBR2D` defines it.
T_REGION2D_G ArcBox(double const *p1, double const *p2, double const *center, double radius, bool counterClockwise);

} // namespace zvi::lib::curves
