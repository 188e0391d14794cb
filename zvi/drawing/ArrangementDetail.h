#pragma once

#include "zvi/base/Workers.h"
#include "zvi/drawing/CoveredPartsDetail.h"
#include "zvi/drawing/NetworkDetail.h"
#include "zvi/drawing/PlanarMapDetail.h"
#include "zvi/drawing/ReadCurvesDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// The curves of a drawing cut where they meet, with connectors across its gaps, as a planar map.
struct Arrangement {
    PlanarMap map;
    std::vector<Stretch> vanished; ///< curves shorter than the snap distance
    std::vector<Stretch> repeated; ///< curves that are the same as an earlier one
    double snap = 0.0;             ///< distance below which two places are one
    std::vector<CarrierPlaces> carriers;
    std::vector<CoveredPart> covered; ///< parts of curves that have no edges, for others on their carrier have them
};

/// Cuts the curves at every place where they meet at the precision of rounding and orders them round each place.
///
/// Places stand at least a snap distance apart, and an edge that passes nearer than that to a place runs through it
/// (Hobby 1999, with discs instead of pixels), so that rounding decides neither the order of places along an edge nor
/// that of edges round a place. Whether the orders agree is not taken on trust: Euler's formula is checked, and where
/// it fails the drawing is arranged anew at a coarser precision, at which it agrees in the end.
/// With `split` off edges meet at their ends alone, and the map may be none of a plane. Where a circle starts is a
/// place only if something else is there, and equal curves are arranged once; with `keepDuplicates` neither holds.
Arrangement Arrange(UsableCurves const &curves, bool split, bool keepDuplicates, base::Workers const &workers);

} // namespace zvi::lib::drawing
