#pragma once

#include "zvi/core/Export.h"
#include "zvi/drawing/DrawingRecords.h"

#include <vector>

namespace zvi::lib {

/// From a loose, untidy set of curves to its true closed domains, in one call: ends are joined, curves are cut where
/// they meet, duplicates are dropped, and what encloses nothing is returned with its reason. Nothing of the input is
/// lost: every stretch of every curve is in a domain or among the leftovers.
ZVI_API DrawingResult MakeDrawingDomains(std::vector<DrawingCurve> const &curves, DrawingOptions const &options = {});

} // namespace zvi::lib
