#pragma once

#include "apps/zvi/domains/geometry/Affine.h"

namespace zvi::app {

/// Segments with a smaller bulge are straight: they rise less than half of this part of their chord.
inline constexpr double kStraightBulge = 1e-8;

/// Whether a segment of a polyline with this bulge is a line.
bool IsStraightBulge(double bulge);

/// An arc in the plane of its polyline: `sweep` radians from the direction `from`, counter-clockwise where positive.
struct BulgeArc {
    Point3 center;
    double radius = 0.0;
    double from = 0.0;
    double sweep = 0.0;
};

/// The arc from `start` to `end`, two different points, that a bulge of a DXF polyline means: the tangent of a quarter
/// of its sweep. The centre lies off the middle of the chord by (1 - bulge^2) / (4 bulge) chords, to the left for a
/// positive bulge below 1. The bulge must not be straight.
BulgeArc ArcOfBulge(Point3 const &start, Point3 const &end, double bulge);

} // namespace zvi::app
