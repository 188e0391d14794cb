#pragma once

#include "zvi/curves/MGeomFunc.h"

namespace zvi::lib::test {

using Polygon = MArray<T_POINT2D>;

/// How far the point is from the nearest edge.
double DistanceToBorder(T_POINT2D const &p, Polygon const &polygon);

/// `MGeomFunc::IsPointInPolygon2` by its definition: box, distance to every edge, and the parity of the crossings of a
/// ray to the left with every edge, each counted in a frame that is turned along the ray.
int ContainsByDefinition(T_POINT2D const &p, Polygon const &polygon, int closed);

} // namespace zvi::lib::test
