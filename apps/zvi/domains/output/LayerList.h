#pragma once

#include "apps/zvi/domains/model/DrawingInput.h"

#include <cstddef>
#include <string>
#include <vector>

namespace zvi::app {

/// How many curves of the drawing are on each of its layers, beside DrawingInput::layers.
std::vector<std::size_t> CurvesOnLayers(DrawingInput const &input);

/// "on", "off" or "frozen".
char const *StateName(DrawingLayer const &layer);

/// Table of the layers (curves, other entities, state, name) with the totals as its last line. `color` makes the
/// heading bold.
std::string LayerTable(DrawingInput const &input, bool color);

} // namespace zvi::app
