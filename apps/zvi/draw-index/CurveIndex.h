#pragma once

#include "zvi/drawing/DrawingRecords.h"
#include "zvi/spatial/MQuadTree.h"

#include <cstddef>
#include <memory>
#include <vector>

namespace zvi::app {

/// The rectangle around a curve: exact for lines and circles, and for arcs but for rounding.
lib::MQuadMBR2D RectangleOf(lib::DrawingCurve const &curve);

/// The quadtree of curves, under their places in the list as keys. Its root region starts at a sixteenth of what they
/// take up, so that it grows with them. Those whose numbers are not finite, or too large for the tree, are left out.
std::unique_ptr<lib::MQuadTree> MakeCurveIndex(std::vector<lib::DrawingCurve> const &curves, int capacity);

/// What there is below a node.
struct IndexTotals {
    std::size_t nodes = 0;
    std::size_t leaves = 0;
    std::size_t depth = 0;       ///< levels below the root
    std::size_t inLeaves = 0;    ///< curves
    std::size_t inInner = 0;     ///< curves that cross mid lines
    std::size_t largestLeaf = 0; ///< curves in the fullest leaf
};

/// Counts from the root down; all 0 without a root.
IndexTotals TotalsOf(lib::MQuadTree const &tree);

} // namespace zvi::app
