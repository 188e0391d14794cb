#pragma once

#include <cstddef>
#include <utility>
#include <vector>

namespace zvi::bench {

struct Segment {
    double x1, y1, x2, y2;
};

/// A plane graph: points, and edges as pairs of point numbers.
struct PlaneGraph {
    std::vector<std::pair<double, double>> points;
    std::vector<std::pair<int, int>> edges;

    std::vector<Segment> Segments() const;
};

/// The edges of the Delaunay triangulation of evenly distributed random points, about `edgeCount` of them.
PlaneGraph RandomMesh(std::size_t edgeCount, unsigned int seed);

/// Seconds and bounded faces of one run.
struct FaceRun {
    double seconds = 0;
    std::size_t faces = 0;
};

/// GEOS's polygonizer on line strings that are built beforehand.
FaceRun RunGeosPolygonize(std::vector<Segment> const &segments);

/// CGAL's arrangement of segments that meet in their ends alone: inexact kernel, non-caching traits.
FaceRun RunCgalArrangement(std::vector<Segment> const &segments);

/// Seconds of looking up all points, without making the index, and how many of them lie in bounded faces.
struct LocationRun {
    double seconds = 0;
    int held = 0;
};

/// CGAL's point location by landmarks in such an arrangement: its vertices, from the nearest of which it walks.
LocationRun RunCgalPointLocation(std::vector<Segment> const &segments,
                                 std::vector<std::pair<double, double>> const &points);

/// A plain half-edge walk, which knows nothing but faces: sort the edges at each point by angle, trace every face,
/// count those that run counter-clockwise.
FaceRun RunHalfEdgeWalk(PlaneGraph const &graph);

} // namespace zvi::bench
