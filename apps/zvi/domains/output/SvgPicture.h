#pragma once

#include "apps/zvi/domains/model/DrawingInput.h"

#include "zvi/drawing/DrawingRecords.h"

#include <string>

namespace zvi::app {

/// The result as an SVG picture in drawing units, y turned down: each domain in a colour of its own with its true arcs
/// and open holes, its number inside, leftovers dashed, gaps ringed. Light or dark as the viewer prefers. Pieces whose
/// numbers are not finite are left out.
std::string SvgPicture(std::string const &name, DrawingInput const &input, lib::DrawingResult const &result);

} // namespace zvi::app
