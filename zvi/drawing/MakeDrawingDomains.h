#pragma once

#include "zvi/Export.h"
#include "zvi/drawing/DrawingRecords.h"

#include <vector>

namespace zvi::lib {

/// From a loose, untidy set of curves to its true closed domains, in one call: ends are joined, curves are cut where
/// they meet, duplicates are dropped, and what encloses nothing is returned with its reason.
///
/// What holds for every result:
/// - each stretch of each curve is on the border of a domain, at most once on each side, or among the leftovers, once;
/// - loops are closed and simple, outer ones run counter-clockwise, holes clockwise; domains do not overlap;
/// - arcs stay arcs, and areas are those of the true curves;
/// - the same curves in the same order give the same result, whatever the host.
/// The second needs curves that do not cross, so it may fail with `split` off.
///
/// Joining: an end joins the nearest place that is nearer than the tolerance, else founds one. A loose end is moved
/// onto a curve that passes nearer than the tolerance; a corner, where several ends met, onto one that passes nearer
/// than a tenth of it. Curves between the same two places that stay nearer than the tolerance to one another are
/// duplicates. A hole is a simple loop: parts of the drawing that touch in one point are holes of their own.
///
/// Ids are carried through and not looked at. Curves with coordinates or radii that are not finite, beyond 1e150, or
/// with a radius below 1e-150, and arcs whose ends miss their circle by more than the join tolerance and a millionth of
/// the radius, are unsupported. An arc that starts where it ends has no length; a full turn is a kCircle.
/// Cost: n log n in the curves and their meeting points. Curves that overlap one another all at once have as many
/// meeting points as pairs.
ZVI_API DrawingResult MakeDrawingDomains(std::vector<DrawingCurve> const &curves, DrawingOptions const &options = {});

} // namespace zvi::lib
