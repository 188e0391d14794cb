#pragma once

#include "apps/zvi/domains/model/DrawingInput.h"

#include "zvi/drawing/DrawingRecords.h"

#include <string>

namespace zvi::app {

/// The number of the form below; it grows when a key changes its meaning or goes.
inline constexpr int kDomainSchema = 1;

/// The result as one JSON object, a domain, leftover or gap to a line:
///     {"schema":1,"units":..,"domains":[{"area":..,"perimeter":..,"outer":[piece..],"holes":[[piece..]..]}],
///      "leftovers":[{"curve":..,"reason":..,...}],"gaps":[{"at":[x,y],"distance":..,"curves":[id,id],"tolerance":..}],
///      "advice":{"join":..,"closes":..},"join":..,"counts":{"joined":..,"cut":..,"duplicates":..}}
/// "advice" is a join tolerance that would close that many of the gaps, null without gaps; "join" is the one used.
/// A piece is {"curve","layer","entity","handle","type","reversed","from","to"} with "start" and "end" for lines and
/// arcs, and "centre", "radius" and "clockwise" for arcs and circles; layer, entity and handle are empty for curve
/// text. Numbers read back to the last bit; a number that is not finite is null.
std::string DomainJson(DrawingInput const &input, lib::DrawingResult const &result, double joinTolerance);

} // namespace zvi::app
