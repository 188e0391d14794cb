#pragma once

#include "zvi/drawing/FaceWalkDetail.h"
#include "zvi/drawing/LandmarksDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// For each walk that runs round a connected part from outside, the walk of the bounded face that the part stands in;
/// -1 for parts that stand free, and for all other walks. A part stands in the face that its leftmost point sees to
/// its left, along the direction of the landmarks. Curves that pass nearer than `snap` to one another there share a
/// place.
std::vector<int> NestOutsides(PlanarMap const &map, FaceWalks const &walks, double snap, Landmarks const &landmarks);

} // namespace zvi::lib::drawing
