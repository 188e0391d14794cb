#pragma once

#include "zvi/Export.h"
#include "zvi/drawing/DrawingRecords.h"

namespace zvi::lib {

/// Centre of gravity of a domain, its holes left out, exact for arcs; far from the origin it loses nothing. It may lie
/// outside of the domain, as that of a ring does. Without an area there is none: the place where the outer loop begins,
/// (0, 0) without one.
ZVI_API DrawingPoint DomainCentroid(DrawingDomain const &domain);

} // namespace zvi::lib
