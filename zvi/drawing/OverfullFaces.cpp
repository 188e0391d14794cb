#include "zvi/drawing/OverfullFacesDetail.h"

namespace zvi::lib::drawing {

namespace {

bool IsOverfull(PlanarMap const &map, Face const &face, double noWidth) {
    double area = face.outer.area, length = 0.0;
    for (Loop const &hole : face.holes)
        area += hole.area;
    for (HalfEdge const h : face.outer.halves)
        length += LengthOf(map.Edge(h).stretch);
    return area <= 0.5 * noWidth * length;
}

int LongestEdge(PlanarMap const &map, Loop const &loop, double same, Landmarks const &landmarks) {
    std::vector<Measured> edges;
    for (HalfEdge const h : loop.halves) {
        Stretch const &s = map.Edge(h).stretch;
        DrawingPoint const middle = PointAt(s, 0.5);
        edges.push_back({0, -LengthOf(s), landmarks.Rank(middle), middle, h.Edge()});
    }
    SortShortestFirst(edges, same);
    return edges.front().number;
}

} // namespace

bool DropOverfullFaces(DividedDrawing &drawing, std::vector<Face> const &faces, base::Workers const &workers) {
    Landmarks const &landmarks = drawing.curves.landmarks;
    double const same = SameDistance(drawing.curves.tolerance, drawing.snap, landmarks);
    bool any = false;
    for (Face const &face : faces) {
        if (face.holes.empty() || !IsOverfull(drawing.map, face, drawing.noWidth))
            continue;
        int const edge = LongestEdge(drawing.map, face.outer, same, landmarks);
        if (!drawing.map.IsInMap(edge))
            continue;
        drawing.map.Remove(edge, EdgeState::kDuplicate);
        drawing.dropped.push_back({edge});
        any = true;
    }
    if (any) {
        SetAsideUnboundingEdges(drawing.map);
        drawing.walks = WalkFaces(drawing.map, workers);
    }
    return any;
}

} // namespace zvi::lib::drawing
