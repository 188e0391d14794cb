#pragma once

#include "zvi/Export.h"
#include "zvi/drawing/DrawingRecords.h"

#include <vector>

namespace zvi::lib {

/// The size of a drawing: the longer side of the smallest box of its curves, stray ones left out, in drawing units.
/// A curve is stray when it lies wholly beyond ten times the distance from the middle of the drawing (the median of the
/// curves' middles, in x and in y) that holds three of four curves; distances are the larger of those in x and in y.
/// Curves that are not finite or have no radius do not count. 0 for none.
ZVI_API double DrawingSize(std::vector<DrawingCurve> const &curves);

/// The join tolerance to begin with: a millionth of the size, so that a drawing gives the same domains in metres and in
/// millimetres. 0 for none.
ZVI_API double SuggestedJoinTolerance(std::vector<DrawingCurve> const &curves);

} // namespace zvi::lib
