#pragma once

#include "zvi/drawing/PlaceIndexDetail.h"

namespace zvi::lib::drawing {

/// Turns the caller's curves into edges whose ends share places. Curves that are none, and those that shrink to a
/// point, become leftovers.
/// An end joins the nearest place that is nearer than the join tolerance; otherwise it founds a place of its own, so
/// that a chain of short curves is thinned out but never collapses. The start of a circle counts as a place that
/// attracts ends, but it yields to none.
void JoinEnds(std::vector<DrawingCurve> const &curves, DrawingOptions const &options, Network &network);

} // namespace zvi::lib::drawing
