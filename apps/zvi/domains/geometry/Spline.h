#pragma once

#include "apps/zvi/domains/geometry/Affine.h"

#include "zvi/drawing/DrawingRecords.h"

#include <optional>
#include <vector>

namespace zvi::app {

/// A spline by knots and control points, or, when it has none, by the points it runs through.
struct Spline {
    int degree = 3;
    bool closed = false;
    std::vector<double> knots;
    std::vector<double> weights; ///< empty: all 1
    std::vector<Point3> controls;
    std::vector<Point3> fitPoints;
    Point3 startTangent; ///< zero: free
    Point3 endTangent;   ///< zero: free
};

/// Highest degree of a spline that is read.
inline constexpr int kHighestDegree = 32;

/// The spline by knots and control points whatever it was given by. Without knots they are even, with the ends held.
/// Without usable control points: the cubic spline of continuous curvature through the fit points, its parameter the
/// length of the chords, closed smoothly when the spline is closed, its ends free where no tangent is given. Nothing
/// when the numbers describe no curve (too few points, falling knots, weights that are not positive).
std::optional<Spline> WithControlPoints(Spline const &spline);

/// The corners of chords within `error` of the spline, seen from above after `map`. `spline` must come from
/// WithControlPoints. Its knots, and so its fit points, are corners. Stops short once there are more than `mostPoints`.
std::vector<lib::DrawingPoint> FlattenSpline(Spline const &spline, Affine const &map, double error,
                                             std::size_t mostPoints);

} // namespace zvi::app
