#pragma once

#include "apps/zvi/domains/model/DrawingInput.h"

#include "zvi/spatial/MQuadTree.h"

#include <string>

namespace zvi::app {

/// The quadtree of the curves as an SVG picture in drawing units, y turned down: the region of each leaf, the darker
/// the more curves it holds, and over them the curves, those of inner nodes in a colour of their own. Light or dark as
/// the viewer prefers.
std::string IndexPicture(std::string const &name, DrawingInput const &input, lib::MQuadTree const &tree);

} // namespace zvi::app
