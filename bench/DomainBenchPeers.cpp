#include "bench/DomainBenchPeers.h"

#include <CGAL/Arr_landmarks_point_location.h>
#include <CGAL/Arr_non_caching_segment_traits_2.h>
#include <CGAL/Arrangement_2.h>
#include <CGAL/Delaunay_triangulation_2.h>
#include <CGAL/Exact_predicates_inexact_constructions_kernel.h>
#include <CGAL/Triangulation_vertex_base_with_info_2.h>

#include <geos_c.h>

#include <algorithm>
#include <cmath>
#include <ctime>
#include <random>

namespace zvi::bench {

namespace {

using Kernel = CGAL::Exact_predicates_inexact_constructions_kernel;
using Traits = CGAL::Arr_non_caching_segment_traits_2<Kernel>;
using Arrangement = CGAL::Arrangement_2<Traits>;
/// Processor seconds since `start`.
double SecondsSince(std::clock_t start) {
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

struct Face {
    std::vector<int> points;
    std::vector<int> edges;
};

/// Walks the face to the left of `first`; gives twice its signed area.
double TraceFace(PlaneGraph const &graph, std::vector<int> const &next, std::vector<int> const &origin,
                 std::vector<char> &isTraced, int first, Face &face) {
    double area = 0;
    int half = first;
    do {
        isTraced[static_cast<std::size_t>(half)] = 1;
        int const from = origin[static_cast<std::size_t>(half)];
        auto const &[x1, y1] = graph.points[static_cast<std::size_t>(from)];
        auto const &[x2, y2] = graph.points[static_cast<std::size_t>(origin[static_cast<std::size_t>(half ^ 1)])];
        area += x1 * y2 - x2 * y1;
        face.points.push_back(from);
        face.edges.push_back(half / 2);
        half = next[static_cast<std::size_t>(half)];
    } while (half != first);
    return area;
}

std::vector<Traits::X_monotone_curve_2> CurvesOf(std::vector<Segment> const &segments) {
    std::vector<Traits::X_monotone_curve_2> curves;
    for (Segment const &s : segments)
        curves.emplace_back(Kernel::Point_2(s.x1, s.y1), Kernel::Point_2(s.x2, s.y2));
    return curves;
}

} // namespace

std::vector<Segment> PlaneGraph::Segments() const {
    std::vector<Segment> segments;
    for (auto const &[a, b] : edges) {
        auto const &p = points[static_cast<std::size_t>(a)];
        auto const &q = points[static_cast<std::size_t>(b)];
        segments.push_back({p.first, p.second, q.first, q.second});
    }
    return segments;
}

PlaneGraph RandomMesh(std::size_t edgeCount, unsigned int seed) {
    using Vertex = CGAL::Triangulation_vertex_base_with_info_2<int, Kernel>;
    using Mesh = CGAL::Delaunay_triangulation_2<Kernel, CGAL::Triangulation_data_structure_2<Vertex>>;
    std::mt19937 random(seed);
    double const side = std::sqrt(static_cast<double>(edgeCount));
    std::uniform_real_distribution<double> place(0.0, side);
    PlaneGraph graph;
    std::vector<std::pair<Kernel::Point_2, int>> points;
    for (std::size_t i = 0; i < edgeCount / 3; ++i) {
        double const x = place(random);
        double const y = place(random);
        points.push_back({Kernel::Point_2(x, y), static_cast<int>(i)});
        graph.points.push_back({x, y});
    }
    Mesh const mesh(points.begin(), points.end());
    for (auto edge = mesh.finite_edges_begin(); edge != mesh.finite_edges_end(); ++edge) {
        graph.edges.push_back(
            {edge->first->vertex((edge->second + 1) % 3)->info(), edge->first->vertex((edge->second + 2) % 3)->info()});
    }
    std::shuffle(graph.edges.begin(), graph.edges.end(), random);
    return graph;
}

FaceRun RunGeosPolygonize(std::vector<Segment> const &segments) {
    GEOSContextHandle_t const context = GEOS_init_r();
    std::vector<GEOSGeometry *> lines;
    for (Segment const &s : segments) {
        GEOSCoordSequence *const ends = GEOSCoordSeq_create_r(context, 2, 2);
        GEOSCoordSeq_setXY_r(context, ends, 0, s.x1, s.y1);
        GEOSCoordSeq_setXY_r(context, ends, 1, s.x2, s.y2);
        lines.push_back(GEOSGeom_createLineString_r(context, ends));
    }
    std::clock_t const start = std::clock();
    GEOSGeometry *const faces = GEOSPolygonize_r(context, lines.data(), static_cast<unsigned int>(lines.size()));
    FaceRun const run{SecondsSince(start), static_cast<std::size_t>(GEOSGetNumGeometries_r(context, faces))};
    GEOSGeom_destroy_r(context, faces);
    for (GEOSGeometry *const line : lines)
        GEOSGeom_destroy_r(context, line);
    GEOS_finish_r(context);
    return run;
}

FaceRun RunCgalArrangement(std::vector<Segment> const &segments) {
    std::vector<Traits::X_monotone_curve_2> const curves = CurvesOf(segments);
    std::clock_t const start = std::clock();
    Arrangement arrangement;
    CGAL::insert_non_intersecting_curves(arrangement, curves.begin(), curves.end());
    return {SecondsSince(start), arrangement.number_of_faces() - arrangement.number_of_unbounded_faces()};
}

LocationRun RunCgalPointLocation(std::vector<Segment> const &segments,
                                 std::vector<std::pair<double, double>> const &points) {
    std::vector<Traits::X_monotone_curve_2> const curves = CurvesOf(segments);
    Arrangement arrangement;
    CGAL::insert_non_intersecting_curves(arrangement, curves.begin(), curves.end());
    CGAL::Arr_landmarks_point_location<Arrangement> const location(arrangement);
    std::vector<Kernel::Point_2> queries;
    for (auto const &[x, y] : points)
        queries.emplace_back(x, y);
    LocationRun run;
    std::clock_t const start = std::clock();
    for (Kernel::Point_2 const &query : queries) {
        auto const place = location.locate(query);
        auto const *const face = boost::get<Arrangement::Face_const_handle>(&place);
        run.held += face && !(*face)->is_unbounded() ? 1 : 0;
    }
    run.seconds = SecondsSince(start);
    return run;
}

FaceRun RunHalfEdgeWalk(PlaneGraph const &graph) {
    std::clock_t const start = std::clock();
    std::size_t const halfCount = 2 * graph.edges.size();
    std::vector<int> origin(halfCount);
    std::vector<double> angle(halfCount);
    std::vector<int> firstOut(graph.points.size() + 1);
    for (std::size_t i = 0; i < graph.edges.size(); ++i) {
        auto const [a, b] = graph.edges[i];
        origin[2 * i] = a;
        origin[2 * i + 1] = b;
        ++firstOut[static_cast<std::size_t>(a) + 1];
        ++firstOut[static_cast<std::size_t>(b) + 1];
        auto const &p = graph.points[static_cast<std::size_t>(a)];
        auto const &q = graph.points[static_cast<std::size_t>(b)];
        angle[2 * i] = std::atan2(q.second - p.second, q.first - p.first);
        angle[2 * i + 1] = std::atan2(p.second - q.second, p.first - q.first);
    }
    for (std::size_t v = 0; v < graph.points.size(); ++v)
        firstOut[v + 1] += firstOut[v];
    std::vector<int> out(halfCount);
    std::vector<int> filled(firstOut.begin(), firstOut.end() - 1);
    for (std::size_t h = 0; h < halfCount; ++h)
        out[static_cast<std::size_t>(filled[static_cast<std::size_t>(origin[h])]++)] = static_cast<int>(h);

    // The face to the left of a half-edge goes on with the one clockwise before its twin.
    std::vector<int> next(halfCount);
    for (std::size_t v = 0; v < graph.points.size(); ++v) {
        auto const first = out.begin() + firstOut[v];
        auto const last = out.begin() + firstOut[v + 1];
        std::sort(first, last, [&](int a, int b) {
            return angle[static_cast<std::size_t>(a)] < angle[static_cast<std::size_t>(b)];
        });
        for (auto at = first; at != last; ++at)
            next[static_cast<std::size_t>(*at ^ 1)] = at == first ? *(last - 1) : *(at - 1);
    }
    std::vector<char> isTraced(halfCount);
    std::vector<Face> faces;
    for (std::size_t h = 0; h < halfCount; ++h) {
        Face face;
        if (isTraced[h] == 0 && TraceFace(graph, next, origin, isTraced, static_cast<int>(h), face) > 0)
            faces.push_back(std::move(face));
    }
    return {SecondsSince(start), faces.size()};
}

} // namespace zvi::bench
