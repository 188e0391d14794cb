#pragma once

#include "zvi/drawing/DrawingDuplicatesDetail.h"
#include "zvi/drawing/DrawingFacesDetail.h"

namespace zvi::lib::drawing {

/// Fills the domains and leftovers of `result` in their final order. `parents` are those of NestOutsides.
void Report(Network const &network, std::vector<DrawingCurve> const &curves, Blocks const &blocks, Faces const &faces,
            std::vector<int> const &parents, std::vector<KeptDuplicate> const &duplicates, DrawingResult &result);

} // namespace zvi::lib::drawing
