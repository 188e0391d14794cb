#pragma once

#include "apps/zvi/domains/model/DrawingInput.h"

#include "zvi/drawing/DrawingRecords.h"

#include <string>

namespace zvi::app {

/// The number of the form of both objects below; it grows when a key changes its meaning or goes.
inline constexpr int kDomainSchema = 1;

/// The result as one JSON object, a domain, leftover or gap to a line; docs/domains-json.md has its keys. Numbers read
/// back to the last bit; a number that is not finite is null.
std::string DomainJson(DrawingInput const &input, lib::DrawingResult const &result, double joinTolerance);

/// The layers of the drawing as one JSON object, {"schema":..,"units":..,"layers":[..]}, a layer to a line.
std::string LayerJson(DrawingInput const &input);

} // namespace zvi::app
