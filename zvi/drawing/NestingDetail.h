#pragma once

#include "zvi/drawing/FaceWalkDetail.h"
#include "zvi/drawing/LandmarksDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// For each walk that runs round a connected part from outside, the walk of the bounded face that the part stands in;
/// -1 for parts that stand free, and for all other walks. A part stands in the face that its leftmost point sees to
/// its left, along the direction of the landmarks, or another point of it if that lies within `same` of another part.
/// Where it sees several borders nearer to one another than `moved`, so that they may have changed places, all that
/// pass on its left are counted. Places are at least `snap` apart.
std::vector<int> NestOutsides(PlanarMap const &map, FaceWalks const &walks, double snap, double same, double moved,
                              Landmarks const &landmarks, base::Workers const &workers);

} // namespace zvi::lib::drawing
