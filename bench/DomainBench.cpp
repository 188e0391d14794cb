// MakeDomain beside GEOS's polygonizer, CGAL's arrangement and a plain half-edge walk, on the same input in the same
// run. Counters: milliseconds of each, the ratios to ours, and the growth exponent against the size before.

#include "bench/DomainBenchPeers.h"
#include "zvi/curves/MDomainMaker.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <ctime>
#include <functional>
#include <map>
#include <numbers>
#include <string>

namespace zvi::bench {

namespace {

/// Seed of the random meshes.
constexpr unsigned int kMeshSeed = 12345;

/// Adds a ring of `corners` points about a centre; the points are new.
void AddRing(PlaneGraph &graph, double x, double y, double radius, int corners, double turn) {
    int const first = static_cast<int>(graph.points.size());
    for (int i = 0; i < corners; ++i) {
        double const angle = turn + 2 * std::numbers::pi * i / corners;
        graph.points.push_back({x + radius * std::cos(angle), y + radius * std::sin(angle)});
        graph.edges.push_back({first + i, first + (i + 1) % corners});
    }
}

/// Unit squares, m by m of them.
PlaneGraph Grid(int m) {
    PlaneGraph graph;
    for (int y = 0; y <= m; ++y) {
        for (int x = 0; x <= m; ++x) {
            int const at = static_cast<int>(graph.points.size());
            graph.points.push_back({x, y});
            if (x > 0)
                graph.edges.push_back({at - 1, at});
            if (y > 0)
                graph.edges.push_back({at - m - 1, at});
        }
    }
    return graph;
}

PlaneGraph Mesh(int edges) {
    return RandomMesh(static_cast<std::size_t>(edges), kMeshSeed);
}

/// Upright squares, each within the one before.
PlaneGraph Nested(int count) {
    PlaneGraph graph;
    for (int i = 0; i < count; ++i) {
        double const low = i;
        double const high = 2.0 * count - i;
        int const first = static_cast<int>(graph.points.size());
        graph.points.insert(graph.points.end(), {{low, low}, {high, low}, {high, high}, {low, high}});
        for (int k = 0; k < 4; ++k)
            graph.edges.push_back({first + k, first + (k + 1) % 4});
    }
    return graph;
}

/// Upright squares in rows and columns that do not touch.
PlaneGraph Separate(int count) {
    PlaneGraph graph;
    int const columns = static_cast<int>(std::sqrt(count));
    for (int i = 0; i < count; ++i)
        AddRing(graph, 3.0 * (i % columns), 3.0 * (i / columns), 1.0, 4, std::numbers::pi / 4);
    return graph;
}

/// Hexagons in rows and columns within one large square.
PlaneGraph Islands(int count) {
    PlaneGraph graph;
    int const columns = static_cast<int>(std::sqrt(count));
    for (int i = 0; i < count; ++i)
        AddRing(graph, 3.0 * (i % columns), 3.0 * (i / columns), 1.0, 6, 0.1);
    AddRing(graph, 1.5 * columns, 1.5 * columns, 5.0 * columns, 4, 0.2);
    return graph;
}

/// Triangles about a hub, half a turn of them.
PlaneGraph Fan(int count) {
    PlaneGraph graph;
    graph.points.push_back({0, 0});
    for (int i = 0; i <= count; ++i) {
        double const angle = std::numbers::pi * i / count;
        int const at = static_cast<int>(graph.points.size());
        graph.points.push_back({count * std::cos(angle), count * std::sin(angle)});
        graph.edges.push_back({0, at});
        if (i > 0)
            graph.edges.push_back({at - 1, at});
    }
    return graph;
}

/// Kites in a row, each touching the next in one point.
PlaneGraph Chain(int count) {
    PlaneGraph graph;
    graph.points.push_back({0, 0});
    for (int i = 0; i < count; ++i) {
        int const left = static_cast<int>(graph.points.size()) - 1;
        double const x = 2.0 * i;
        graph.points.insert(graph.points.end(),
                            {{x + 1, -0.6 - 0.01 * i / count}, {x + 1.1, 0.7}, {x + 2, 0.3 * (i % 2)}});
        graph.edges.insert(graph.edges.end(),
                           {{left, left + 1}, {left + 1, left + 3}, {left + 3, left + 2}, {left + 2, left}});
    }
    return graph;
}

lib::MDomainMaker Feed(std::vector<Segment> const &segments) {
    lib::MDomainMaker maker;
    unsigned int id = 0;
    for (Segment const &s : segments)
        maker.AddCurv(++id, {s.x1, s.y1}, {s.x2, s.y2});
    return maker;
}

double Now() {
    return static_cast<double>(std::clock()) / CLOCKS_PER_SEC;
}

/// The best of `tries` runs.
FaceRun BestOf(int tries, std::function<FaceRun()> const &run) {
    FaceRun best = run();
    for (int i = 1; i < tries; ++i) {
        FaceRun const next = run();
        best.seconds = std::min(best.seconds, next.seconds);
    }
    return best;
}

/// Edges and seconds of the size before, by the name of the input.
std::map<std::string, std::pair<double, double>> &SizesBefore() {
    static std::map<std::string, std::pair<double, double>> sizes;
    return sizes;
}

void Report(benchmark::State &state, std::string const &name, double edges, double ours, double add,
            std::vector<Segment> const &segments, PlaneGraph const &graph, std::size_t domains) {
    FaceRun const geos = BestOf(3, [&] { return RunGeosPolygonize(segments); });
    FaceRun const cgal = BestOf(3, [&] { return RunCgalArrangement(segments); });
    FaceRun const walk = BestOf(5, [&] { return RunHalfEdgeWalk(graph); });
    // An edge that runs along a boundary within 0.081 degrees is no chord, so a few slivers of a mesh stay undivided.
    if (walk.faces != cgal.faces || domains > walk.faces || domains + walk.faces / 1000 < walk.faces)
        state.SkipWithError("the number of domains differs from the peers' faces");
    state.counters["edges"] = edges;
    state.counters["domains"] = static_cast<double>(domains);
    state.counters["ms"] = ours * 1e3;
    state.counters["addMs"] = add * 1e3;
    state.counters["geos/ours"] = geos.seconds / ours;
    state.counters["cgal/ours"] = cgal.seconds / ours;
    state.counters["ours/walk"] = ours / walk.seconds;
    auto &before = SizesBefore()[name];
    if (before.first > 0 && before.first < edges)
        state.counters["exponent"] = std::log(ours / before.second) / std::log(edges / before.first);
    before = {edges, ours};
}

void MakeDomainOn(benchmark::State &state, std::string const &name, PlaneGraph (*make)(int)) {
    PlaneGraph const graph = make(static_cast<int>(state.range(0)));
    std::vector<Segment> const segments = graph.Segments();
    double const beforeAdd = Now();
    lib::MDomainMaker const fed = Feed(segments);
    double const add = Now() - beforeAdd;
    double best = 1e30;
    std::size_t domains = 0;
    for (auto _ : state) {
        lib::MDomainMaker maker(fed);
        double const start = Now();
        maker.MakeDomain();
        double const seconds = Now() - start;
        state.SetIterationTime(seconds);
        best = std::min(best, seconds);
        domains = maker.GetResultSurf().Size();
    }
    Report(state, name, static_cast<double>(segments.size()), best, add, segments, graph, domains);
}

#define ZVI_DOMAIN_BENCH(input)                                                                                        \
    BENCHMARK_CAPTURE(MakeDomainOn, input, #input, input)->UseManualTime()->Unit(benchmark::kMillisecond)

ZVI_DOMAIN_BENCH(Grid)->Arg(30)->Arg(100)->Arg(300)->Arg(424);
ZVI_DOMAIN_BENCH(Mesh)->Arg(10000)->Arg(100000)->Arg(200000);
ZVI_DOMAIN_BENCH(Nested)->Arg(100)->Arg(1000);
ZVI_DOMAIN_BENCH(Separate)->Arg(100)->Arg(1000)->Arg(10000);
ZVI_DOMAIN_BENCH(Islands)->Arg(100)->Arg(1000)->Arg(10000);
ZVI_DOMAIN_BENCH(Fan)->Arg(100)->Arg(1000)->Arg(10000);
ZVI_DOMAIN_BENCH(Chain)->Arg(100)->Arg(1000)->Arg(10000);

} // namespace

} // namespace zvi::bench
