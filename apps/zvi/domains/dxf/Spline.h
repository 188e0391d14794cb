#pragma once

#include "apps/zvi/domains/dxf/DxfEntities.h"

#include "zvi/drawing/DrawingRecords.h"

#include <optional>
#include <vector>

namespace zvi::app {

/// Highest degree of a spline that is read.
inline constexpr int kHighestDegree = 32;

/// The spline by knots and control points whatever it was given by. Without knots they are even, with the ends held.
/// Without usable control points: the cubic spline of continuous curvature through the fit points, its parameter the
/// length of the chords, closed smoothly when the spline is closed, its ends free where no tangent is given. Nothing
/// when the numbers describe no curve (too few points, falling knots, weights that are not positive).
std::optional<DxfSpline> WithControlPoints(DxfSpline const &spline);

/// The corners of chords within `error` of the spline, seen from above after `map`. `spline` must come from
/// WithControlPoints. Its knots, and so its fit points, are corners. Stops short once there are more than `mostPoints`.
std::vector<lib::DrawingPoint> FlattenSpline(DxfSpline const &spline, Affine const &map, double error,
                                             std::size_t mostPoints);

} // namespace zvi::app
