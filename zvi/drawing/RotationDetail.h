#pragma once

#include "zvi/base/Workers.h"
#include "zvi/drawing/PlanarMapDetail.h"

namespace zvi::lib::drawing {

/// Orders the half-edges counter-clockwise round each place of a new map, by the directions in which they leave it.
/// Two that leave it in nearly one direction are compared where the nearer of them ends: that place is at least `snap`
/// away from the other one, so that rounding does not decide.
void OrderRoundPlaces(PlanarMap &map, double snap, base::Workers const &workers);

} // namespace zvi::lib::drawing
