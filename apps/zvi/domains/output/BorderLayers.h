#pragma once

#include "apps/zvi/domains/model/DrawingInput.h"

#include "zvi/drawing/DrawingRecords.h"

#include <cstdint>
#include <vector>

namespace zvi::app {

/// The layers that the border of a domain is drawn on, as indices into DrawingInput::layers: that of its longest part
/// first, and of equal ones the first along the border.
std::vector<std::uint32_t> BorderLayers(DrawingInput const &input, lib::DrawingDomain const &domain);

} // namespace zvi::app
