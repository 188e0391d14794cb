#pragma once

#include "zvi/drawing/DrawingGraphDetail.h"

namespace zvi::lib::drawing {

/// The loose ends that miss another curve by little: for each place with a single spoke the nearest other curve within
/// 100 times the join tolerance, if there is one. A nearly closed arc misses itself. `uncut` are the edges before they
/// were cut.
std::vector<DrawingGap> FindGaps(Network const &network, Spokes const &spokes, std::vector<Edge> const &uncut,
                                 std::vector<DrawingCurve> const &curves, double joinTolerance);

} // namespace zvi::lib::drawing
