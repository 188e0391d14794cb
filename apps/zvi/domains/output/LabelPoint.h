#pragma once

#include "zvi/drawing/DrawingRecords.h"

namespace zvi::app {

/// A place in a domain for its number: the centre of a circle that meets no border and is nearly the largest such
/// circle, and its radius.
struct LabelPoint {
    lib::DrawingPoint at;
    double radius = 0.0;
};

/// Finds the place by a search that halves squares and follows the most promising one (the pole of inaccessibility of
/// Garcia-Castellanos and Lombardo, searched with a queue of squares), to about 1% of the domain's size, and prefers
/// the centre of gravity where that is nearly as good. A domain without an inside gives a point of its border and
/// radius 0.
LabelPoint FindLabelPoint(lib::DrawingDomain const &domain);

} // namespace zvi::app
