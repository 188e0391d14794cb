#pragma once

#include "zvi/drawing/DrawingRecords.h"

#include <vector>

namespace zvi::lib::test {

/// Which gaps between curves are taken for closed.
enum class Gaps {
    kAsDrawn, ///< none
    kClear,   ///< ends below the tolerance from curves that nothing stands about the tolerance from
    kAll      ///< all below the tolerance, places where curves pass one another included
};

/// The bounded regions that the curves cut the plane into.
struct ScannedRegions {
    std::vector<double> areas; ///< the largest first
    double total = 0.0;        ///< their sum
    double thin = 0.0;         ///< the sum of those that are as thin as rounding, which are not listed
};

/// Found by a vertical scan: walls through all ends and crossings, between them cells from curve to curve, and cells on
/// both sides of a wall belong together where they share some of it. Gaps are closed by short lines across them. It
/// stands on no order of curves around a point, so that a slip of rounding costs an area of its own size alone.
ScannedRegions ScanRegions(std::vector<DrawingCurve> const &curves, double tolerance, Gaps gaps);

} // namespace zvi::lib::test
