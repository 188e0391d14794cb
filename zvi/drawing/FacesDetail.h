#pragma once

#include "zvi/drawing/FaceWalkDetail.h"
#include "zvi/drawing/LandmarksDetail.h"

#include <vector>

namespace zvi::lib::drawing {

/// A simple closed loop of half-edges. It begins at its first place from the left, and of those at its lowest.
struct Loop {
    std::vector<HalfEdge> halves;
    double area = 0.0; ///< positive counter-clockwise
};

/// A bounded face: its border and the loops inside it.
struct Face {
    Loop outer;
    std::vector<Loop> holes;
};

/// The bounded faces of a map, ordered by the beginnings of their outer loops, from left to right and from below, then
/// by the middles of their first edges alike; holes of one face alike. The parts of the drawing are nested in one
/// another: what stands free inside a face is a hole of it, once for each simple loop of its outside. Places are at
/// least `snap` apart, less than `same` is nothing, borders that are nearer to one another than `moved` may have
/// changed places, and `walks` are those of the map.
std::vector<Face> FindFaces(PlanarMap const &map, FaceWalks const &walks, double snap, double same, double moved,
                            Landmarks const &landmarks, base::Workers const &workers);

} // namespace zvi::lib::drawing
