#pragma once

#include "zvi/base/Workers.h"
#include "zvi/drawing/PlanarMapDetail.h"

#include <memory>
#include <vector>

namespace zvi::lib::drawing {

/// The sides of the faces of a map: closed walks with the face on the left. `area` counts what the walk encloses,
/// positive counter-clockwise.
struct FaceWalk {
    HalfEdge first;
    double area = 0.0;
    double perimeter = 0.0;
    bool isOutside = false; ///< it runs round its connected part from outside
};

struct FaceWalks {
    std::vector<FaceWalk> walks;
    std::shared_ptr<WalkNumbers const> numbers; ///< of the same walks

    /// The walk of a half-edge, -1 when that is not in the map.
    int Of(HalfEdge h) const { return numbers->Of(h); }
};

/// All walks of the map. The outside of each connected part is the walk of least area. Lengths and areas are those of
/// the borders, and where these do not meet at a place, of the steps between them.
FaceWalks WalkFaces(PlanarMap const &map, base::Workers const &workers);

/// The half-edges of the walk that `first`, which is in the map, belongs to.
std::vector<HalfEdge> WalkFrom(PlanarMap const &map, HalfEdge first);

/// The area that a closed walk encloses.
double AreaOf(PlanarMap const &map, std::vector<HalfEdge> const &walk);

/// Where the border of a half-edge begins and ends as the half-edge runs.
DrawingPoint BeginOf(PlanarMap const &map, HalfEdge h);
DrawingPoint EndOf(PlanarMap const &map, HalfEdge h);

/// Sets aside the edges that have the same face on both sides: they hang loose or join two parts.
void SetAsideUnboundingEdges(PlanarMap &map);

} // namespace zvi::lib::drawing
