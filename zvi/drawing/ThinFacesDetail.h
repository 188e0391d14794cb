#pragma once

#include "zvi/drawing/ContractionDetail.h"
#include "zvi/drawing/FaceWalkDetail.h"
#include "zvi/drawing/PlanarMapDetail.h"
#include "zvi/drawing/ShortestFirstDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// Collapses the faces of a map without short edges that are thinner than `tolerance`: their two sides come to lie on
/// one another, place by place, and of each two edges that then join the same places one is a duplicate. Edges that
/// hang loose or join two parts are set aside, and edges that become short contracted. Appends what was dropped, in
/// that order.
void CollapseThinFaces(PlanarMap &map, double tolerance, double snap, Landmarks const &landmarks,
                       std::vector<DroppedEdge> &dropped, base::Workers const &workers);

/// Drops an edge of each face whose area is not above `same`, a distance that is nothing, times half its border, the
/// emptiest first (but for `same`, where the landmarks settle it), again and again, so that what is left encloses
/// something. Returns the walks of what is left.
FaceWalks DropEmptyFaces(PlanarMap &map, double same, Landmarks const &landmarks, std::vector<DroppedEdge> &dropped,
                         base::Workers const &workers);

} // namespace zvi::lib::drawing
