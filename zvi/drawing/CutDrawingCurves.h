#pragma once

#include "zvi/Export.h"
#include "zvi/drawing/DrawingRecords.h"

#include <vector>

namespace zvi::lib {

/// The pieces of a drawing between its meeting points.
struct DrawingPieces {
    std::vector<DrawingPiece> pieces;       ///< along the direction of their curves, none reversed
    std::vector<DrawingLeftover> leftovers; ///< duplicates, curves without length, unsupported ones
    DrawingCounts counts;                   ///< how often each repair was made
};

/// The first half of MakeDrawingDomains by itself: joins ends, cuts the curves where they meet and drops duplicates, by
/// the same options and with the same care for bad input. Unless `split` is off, pieces meet at their ends alone, and
/// ends that meet are equal to the last bit.
ZVI_API DrawingPieces CutDrawingCurves(std::vector<DrawingCurve> const &curves, DrawingOptions const &options = {});

} // namespace zvi::lib
