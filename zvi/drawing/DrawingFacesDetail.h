#pragma once

#include "zvi/drawing/DrawingGraphDetail.h"

namespace zvi::lib::drawing {

/// One side of a block: a loop of half-edges with the face on their left. The outside of a block runs clockwise.
struct Face {
    int block = 0;
    bool isOutside = false;
    std::vector<int> halfEdges;
    double area = 0.0; ///< signed, exact for arcs; negative for an outside
};

struct Faces {
    std::vector<Face> faces;
    std::vector<int> faceOfHalf; ///< the face on the left of each half-edge, -1 for an edge of no block
};

/// Signed area within a loop of half-edges, positive when it runs counter-clockwise.
double LoopArea(Network const &network, std::vector<int> const &halfEdges);

/// Length of a loop of half-edges.
double LoopLength(Network const &network, std::vector<int> const &halfEdges);

/// The faces of all blocks, each block by itself. `spokes` are sorted by direction, `directions` those they bear.
Faces FindFaces(Network const &network, Blocks const &blocks, Spokes const &spokes,
                std::vector<double> const &directions);

} // namespace zvi::lib::drawing
