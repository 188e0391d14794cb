#pragma once

#include "zvi/drawing/DrawingRecords.h"

#include <vector>

namespace drawing_fixtures {

/// A region as another method finds it: its area without what lies in it, and its holes.
struct TracedFace {
    double area = 0.0;
    int holes = 0;
};

/// The bounded faces of curves that meet at their very ends alone, smallest area first. Slow and plain: it walks along
/// the sides of all curves, bridges and loose ends included, at each end taking the next curve by the direction of a
/// point a little way along it; nests the walks by counting crossings with finely cut curves; and counts the holes of a
/// region from the numbers of its border's curves, ends and parts.
std::vector<TracedFace> TraceFaces(std::vector<zvi::lib::DrawingCurve> const &curves);

} // namespace drawing_fixtures
