#pragma once

#include "zvi/drawing/DrawingGraphDetail.h"

namespace zvi::lib::drawing {

/// Distance from the origin of the half-edge up to which it can only go away from it.
double ReachOf(Edge const &e);

/// Direction, in radians, from the origin of the half-edge to where it leaves the circle of the radius `distance`
/// about the origin; with 0, its tangent. At most ReachOf the edge.
double DirectionAt(Edge const &e, int halfEdge, double distance);

/// Orders the spokes of each place counter-clockwise as the true curves leave it, and gives the direction of each
/// half-edge by which it was ordered (an angle from -pi to pi; entries of half-edges without spoke are not set).
/// All spokes of a place are compared where they leave one small circle, which orders tangent curves by curvature and
/// is sure for curves that do not cross inside; spokes that leave it side by side are compared on a larger circle.
std::vector<double> SortByDirection(Network const &network, Spokes &spokes);

} // namespace zvi::lib::drawing
