#pragma once

#include "apps/zvi/domains/model/DrawingInput.h"

#include "zvi/drawing/DrawingRecords.h"

#include <string>

namespace zvi::app {

/// The result as an SVG picture in pixels from its own corner: each domain in a fill that no neighbour has, with its
/// true arcs and open holes, its number inside, leftovers dashed, free ends dotted, gaps ringed, and a legend of these.
/// Light or dark as the viewer prefers. Pieces whose numbers are not finite are left out.
std::string SvgPicture(std::string const &name, DrawingInput const &input, lib::DrawingResult const &result);

} // namespace zvi::app
