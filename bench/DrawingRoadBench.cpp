// The whole road of MakeDrawingDomains on drawings that meet at their ends alone, beside the arrangement of CGAL and
// the polygonizer of GEOS on the same segments; drawings in which the boxes of most curves meet, which must cost no
// more than others; and the tests of many points beside GEOS's indexed one. Counters: milliseconds of processor time,
// the ratio to each peer, the growth exponent against the size before, nanoseconds of a query, and megabytes of memory
// at the peak.

#include "bench/DomainBenchPeers.h"
#include "bench/ResidentMemory.h"

#include "zvi/curves/PreparedPolygon.h"
#include "zvi/drawing/DomainLocator.h"
#include "zvi/drawing/MakeDrawingDomains.h"

#include <benchmark/benchmark.h>
#include <geos_c.h>

#include <chrono>
#include <cmath>
#include <cstdlib>
#include <ctime>
#include <map>
#include <numbers>
#include <random>
#include <string>

namespace zvi::bench {

namespace {

using lib::DrawingCurve;
using lib::DrawingCurveType;
using Curves = std::vector<DrawingCurve>;

constexpr unsigned int kSeed = 12;
constexpr double kTurn = 2.0 * std::numbers::pi;
/// Points that are looked up.
constexpr int kQueries = 100000;
/// How often a drawing is made by the clock.
constexpr int kRunsOnThreads = 3;

double SecondsSince(std::clock_t start) {
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

void AddLine(Curves &curves, double x1, double y1, double x2, double y2) {
    DrawingCurve c;
    c.id = static_cast<unsigned int>(curves.size()) + 1;
    c.start = {x1, y1};
    c.end = {x2, y2};
    curves.push_back(c);
}

void AddSquare(Curves &curves, double x, double y, double side) {
    AddLine(curves, x, y, x + side, y);
    AddLine(curves, x + side, y, x + side, y + side);
    AddLine(curves, x + side, y + side, x, y + side);
    AddLine(curves, x, y + side, x, y);
}

Curves Grid(int steps) {
    Curves curves;
    for (int j = 0; j <= steps; ++j)
        for (int i = 0; i < steps; ++i) {
            AddLine(curves, i, j, i + 1, j);
            AddLine(curves, j, i, j, i + 1);
        }
    return curves;
}

Curves Mesh(int edges) {
    Curves curves;
    for (Segment const &s : RandomMesh(static_cast<std::size_t>(edges), kSeed).Segments())
        AddLine(curves, s.x1, s.y1, s.x2, s.y2);
    return curves;
}

Curves NestedSquares(int count) {
    Curves curves;
    for (int i = 1; i <= count; ++i)
        AddSquare(curves, -i, -i, 2.0 * i);
    return curves;
}

/// Lines at 45 degrees that fill a square from side to side.
Curves Hatching(int count) {
    Curves curves;
    AddSquare(curves, 0, 0, count);
    for (int i = 1; i <= count; ++i) {
        double const d = 2.0 * count * i / (count + 1.0), beyond = std::max(0.0, d - count);
        AddLine(curves, beyond, d - beyond, d - beyond, beyond);
    }
    return curves;
}

Curves ConcentricCircles(int count) {
    Curves curves;
    for (int i = 1; i <= count; ++i) {
        AddLine(curves, i, 0, i, 0);
        curves.back().type = DrawingCurveType::kCircle;
        curves.back().radius = i;
    }
    return curves;
}

/// Quarter arcs that go on from one another about the corners of a small square.
Curves Spiral(int count) {
    Curves curves;
    double x = 1.0, y = 0.0, radius = 1.0;
    double const dx[] = {1, 0, -1, 0}, dy[] = {0, 1, 0, -1};
    for (int i = 0; i < count; ++i, radius += 0.25) {
        double const cx = x - radius * dx[i % 4], cy = y - radius * dy[i % 4];
        double const toX = cx + radius * dx[(i + 1) % 4], toY = cy + radius * dy[(i + 1) % 4];
        AddLine(curves, x, y, toX, toY);
        curves.back().type = DrawingCurveType::kArc;
        curves.back().center = {cx, cy};
        curves.back().radius = radius;
        x = toX;
        y = toY;
    }
    return curves;
}

Curves Fan(int count) {
    Curves curves;
    for (int i = 0; i < count; ++i)
        AddLine(curves, 0, 0, count * std::cos(0.25 * kTurn * i / count), count * std::sin(0.25 * kTurn * i / count));
    return curves;
}

Curves ThinTriangles(int count) {
    Curves curves;
    for (int i = 0; i < count; ++i) {
        double const a = kTurn * i / count, b = kTurn * (i + 0.5) / count;
        double const x1 = count * std::cos(a), y1 = count * std::sin(a);
        double const x2 = count * std::cos(b), y2 = count * std::sin(b);
        AddLine(curves, 0, 0, x1, y1);
        AddLine(curves, x1, y1, x2, y2);
        AddLine(curves, x2, y2, 0, 0);
    }
    return curves;
}

Curves SquaresInHugeFrame(int count) {
    Curves curves;
    int const perRow = static_cast<int>(std::ceil(std::sqrt(count)));
    AddSquare(curves, -1000.0 * perRow, -1000.0 * perRow, 2000.0 * perRow);
    for (int i = 0; i < count; ++i)
        AddSquare(curves, i % perRow + 0.25, i / perRow + 0.25, 0.5);
    return curves;
}

/// Lines of whole coordinates through the origin, in all directions.
Curves LinesThroughOnePoint(int count) {
    Curves curves;
    for (int i = 0; i < count / 2; ++i) {
        AddLine(curves, -count, 2.0 * i - count / 2, count, count / 2 - 2.0 * i);
        AddLine(curves, 2.0 * i + 1 - count / 2, -count, count / 2 - 2.0 * i - 1, count);
    }
    return curves;
}

/// What `draw(curves, any)` adds, `count` times over; `any()` is a random number from 0 to `most`.
template <typename Draw>
Curves AtRandom(int count, double most, Draw draw) {
    std::mt19937 random(kSeed);
    std::uniform_real_distribution<double> place(0.0, most);
    Curves curves;
    for (int i = 0; i < count; ++i)
        draw(curves, [&] { return place(random); });
    return curves;
}

/// Lines on one line between any two of its points.
Curves OverlappingLines(int count) {
    return AtRandom(count, 1000.0, [](Curves &curves, auto any) {
        double const from = any();
        AddLine(curves, from, 0, any(), 0);
    });
}

/// Arcs of one circle between any two of its points.
Curves OverlappingArcs(int count) {
    return AtRandom(count, kTurn, [](Curves &curves, auto any) {
        double const a = any(), b = any();
        AddLine(curves, 100 * std::cos(a), 100 * std::sin(a), 100 * std::cos(b), 100 * std::sin(b));
        curves.back().type = DrawingCurveType::kArc;
        curves.back().radius = 100;
    });
}

/// Raw lines of which each second one begins near the end of the one before it, within the tolerance.
Curves LinesInChains(int count) {
    return AtRandom(count / 2, 1000.0, [](Curves &curves, auto any) {
        auto const near = [&any](double v) { return v + 8e-8 * (any() - 500.0); };
        double const x1 = any(), y1 = any(), x2 = any(), y2 = any();
        AddLine(curves, x1, y1, x2, y2);
        double const x3 = near(x2), y3 = near(y2), x4 = any();
        AddLine(curves, x3, y3, x4, any());
    });
}

/// Raw lines between any two points of a square.
Curves CrossingLines(int count) {
    return AtRandom(count, 1000.0, [](Curves &curves, auto any) {
        double const x1 = any(), y1 = any(), x2 = any();
        AddLine(curves, x1, y1, x2, any());
    });
}

/// Seconds by the clock with so many threads, the best of some runs.
double SecondsOnThreads(Curves const &curves, int threads) {
    lib::DrawingOptions options;
    options.threads = threads;
    double best = HUGE_VAL;
    for (int run = 0; run < kRunsOnThreads; ++run) {
        auto const start = std::chrono::steady_clock::now();
        benchmark::DoNotOptimize(lib::MakeDrawingDomains(curves, options));
        best = std::min(best, std::chrono::duration<double>(std::chrono::steady_clock::now() - start).count());
    }
    return best;
}

std::map<std::string, std::pair<int, double>> lastTimes;

/// Runs the drawing and counts time and growth; returns the seconds of the best run.
double Run(benchmark::State &state, std::string const &kind, Curves const &curves, std::size_t domains) {
    double best = HUGE_VAL;
    for (auto _ : state) {
        std::clock_t const start = std::clock();
        std::size_t const found = lib::MakeDrawingDomains(curves).domains.size();
        best = std::min(best, SecondsSince(start));
        if (found != domains)
            state.SkipWithError("the number of domains is wrong");
    }
    int const size = static_cast<int>(curves.size());
    if (auto const before = lastTimes.find(kind); before != lastTimes.end() && before->second.first < size)
        state.counters["exponent"] =
            std::log(best / before->second.second) / std::log(static_cast<double>(size) / before->second.first);
    lastTimes[kind] = {size, best};
    state.counters["ms"] = 1e3 * best;
    state.counters["ms_by_clock"] = 1e3 * SecondsOnThreads(curves, 1);
    state.counters["ms_on_2_threads"] = 1e3 * SecondsOnThreads(curves, 2);
    state.counters["mb"] = 1e-6 * PeakBytesOf([&] { benchmark::DoNotOptimize(lib::MakeDrawingDomains(curves)); });
    return best;
}

std::vector<Segment> SegmentsOf(Curves const &curves) {
    std::vector<Segment> segments;
    for (DrawingCurve const &c : curves)
        segments.push_back({c.start.x, c.start.y, c.end.x, c.end.y});
    return segments;
}

void RunBesidePeers(benchmark::State &state, std::string const &kind, Curves const &curves, std::size_t domains) {
    double const seconds = Run(state, kind, curves, domains);
    std::vector<Segment> const segments = SegmentsOf(curves);
    FaceRun cgal, geos;
    state.counters["cgal_mb"] = 1e-6 * PeakBytesOf([&] { cgal = RunCgalArrangement(segments); });
    state.counters["geos_mb"] = 1e-6 * PeakBytesOf([&] { geos = RunGeosPolygonize(segments); });
    state.counters["cgal/zvi"] = cgal.seconds / seconds;
    state.counters["geos/zvi"] = geos.seconds / seconds;
    if (geos.faces != domains)
        state.SkipWithError("the peer finds other faces");
}

void RoadOfGrid(benchmark::State &state) {
    int const steps = static_cast<int>(state.range(0));
    RunBesidePeers(state, "grid", Grid(steps), static_cast<std::size_t>(steps) * static_cast<std::size_t>(steps));
}

void RoadOfMesh(benchmark::State &state) {
    Curves const curves = Mesh(static_cast<int>(state.range(0)));
    // Slivers at the hull are thinner than the tolerance now and then, so the drawing itself is the measure.
    RunBesidePeers(state, "mesh", curves, lib::MakeDrawingDomains(curves).domains.size());
}

void RoadOfNestedSquares(benchmark::State &state) {
    int const count = static_cast<int>(state.range(0));
    RunBesidePeers(state, "nested squares", NestedSquares(count), static_cast<std::size_t>(count));
}

void RoadOfCrossingLines(benchmark::State &state) {
    Curves const curves = CrossingLines(static_cast<int>(state.range(0)));
    Run(state, "crossing lines", curves, lib::MakeDrawingDomains(curves).domains.size());
}

void RoadOfLinesInChains(benchmark::State &state) {
    Curves const curves = LinesInChains(static_cast<int>(state.range(0)));
    Run(state, "lines in chains", curves, lib::MakeDrawingDomains(curves).domains.size());
}

struct Cliff {
    char const *name;
    Curves (*draw)(int);
    int perCurve;             ///< domains for each of the curves asked for
    int remaining;            ///< and besides
    bool meetsAtEnds = false; ///< so that the peers can do it
};

/// Peers are asked up to so many curves.
constexpr int kMostForPeers = 5000;

constexpr Cliff kCliffs[] = {{"hatching", Hatching, 1, 1},
                             {"concentric circles", ConcentricCircles, 1, 0},
                             {"spiral", Spiral, 0, 0},
                             {"fan", Fan, 0, 0, true},
                             {"thin triangles", ThinTriangles, 1, 0, true},
                             {"squares in a huge frame", SquaresInHugeFrame, 1, 1, true},
                             {"overlapping lines", OverlappingLines, 0, 0},
                             {"overlapping arcs of one circle", OverlappingArcs, 0, 1},
                             {"lines through one point", LinesThroughOnePoint, 0, 0}};

void CliffOf(benchmark::State &state) {
    Cliff const &cliff = kCliffs[state.range(0)];
    int const count = static_cast<int>(state.range(1));
    state.SetLabel(cliff.name);
    std::size_t const domains = static_cast<std::size_t>(cliff.perCurve * count + cliff.remaining);
    if (cliff.meetsAtEnds && count <= kMostForPeers)
        RunBesidePeers(state, cliff.name, cliff.draw(count), domains);
    else
        Run(state, cliff.name, cliff.draw(count), domains);
}

std::vector<lib::DrawingPoint> RandomPoints(double low, double high) {
    std::mt19937 random(kSeed + 1); // other points than those of the mesh
    std::uniform_real_distribution<double> place(low, high);
    std::vector<lib::DrawingPoint> points;
    for (int i = 0; i < kQueries; ++i) {
        double const x = place(random);
        points.push_back({x, place(random)});
    }
    return points;
}

/// Nanoseconds of a query of GEOS's prepared polygon, and how many points it holds.
std::pair<double, int> TimeGeosPrepared(std::vector<lib::T_POINT2D> const &ring,
                                        std::vector<lib::DrawingPoint> const &points) {
    GEOSContextHandle_t const geos = GEOS_init_r();
    unsigned int const count = static_cast<unsigned int>(ring.size());
    GEOSCoordSequence *const coordinates = GEOSCoordSeq_create_r(geos, count + 1, 2);
    for (unsigned int i = 0; i <= count; ++i)
        GEOSCoordSeq_setXY_r(geos, coordinates, i, ring[i % count].x, ring[i % count].y);
    GEOSGeometry *const polygon =
        GEOSGeom_createPolygon_r(geos, GEOSGeom_createLinearRing_r(geos, coordinates), nullptr, 0);
    GEOSPreparedGeometry const *const prepared = GEOSPrepare_r(geos, polygon);
    std::vector<GEOSGeometry *> probes;
    for (lib::DrawingPoint const p : points)
        probes.push_back(GEOSGeom_createPointFromXY_r(geos, p.x, p.y));
    GEOSPreparedContains_r(geos, prepared, probes[0]); // builds the index
    int held = 0;
    std::clock_t const start = std::clock();
    for (GEOSGeometry *const probe : probes)
        held += GEOSPreparedContains_r(geos, prepared, probe);
    double const seconds = SecondsSince(start);
    for (GEOSGeometry *const probe : probes)
        GEOSGeom_destroy_r(geos, probe);
    GEOSPreparedGeom_destroy_r(geos, prepared);
    GEOSGeom_destroy_r(geos, polygon);
    GEOS_finish_r(geos);
    return {1e9 * seconds / kQueries, held};
}

/// A round polygon whose vertices lie in and out, by as many hundredths at most as the second argument says.
void PointsInPolygon(benchmark::State &state) {
    int const count = static_cast<int>(state.range(0));
    std::mt19937 random(kSeed);
    std::uniform_real_distribution<double> radius(1.0 - 0.01 * static_cast<double>(state.range(1)), 1.0);
    std::vector<lib::T_POINT2D> ring;
    for (int i = 0; i < count; ++i) {
        double const r = radius(random), angle = kTurn * i / count;
        ring.push_back({r * std::cos(angle), r * std::sin(angle)});
    }
    MArray<lib::T_POINT2D> polygon;
    for (lib::T_POINT2D const &p : ring)
        polygon.PushBack(p);
    lib::PreparedPolygon const prepared(polygon);
    std::vector<lib::DrawingPoint> const points = RandomPoints(-1.1, 1.1);
    double best = HUGE_VAL;
    int held = 0;
    for (auto _ : state) {
        std::clock_t const start = std::clock();
        held = 0;
        for (lib::DrawingPoint const p : points)
            held += prepared.IsPointInPolygon({p.x, p.y});
        best = std::min(best, SecondsSince(start));
    }
    auto const [geos, heldByGeos] = TimeGeosPrepared(ring, points);
    // Points nearer to an edge than 1e-10 are on it here.
    if (std::abs(held - heldByGeos) > kQueries / 1000)
        state.SkipWithError("the peer holds other points");
    state.counters["ns"] = 1e9 * best / kQueries;
    state.counters["geos/zvi"] = geos * kQueries / (1e9 * best);
}

/// Which triangle of a mesh holds a point.
void PointsInDomains(benchmark::State &state) {
    Curves const mesh = Mesh(static_cast<int>(state.range(0)));
    lib::DomainLocator const locator(lib::MakeDrawingDomains(mesh).domains);
    std::vector<lib::DrawingPoint> const points = RandomPoints(0.0, std::sqrt(static_cast<double>(state.range(0))));
    double best = HUGE_VAL;
    int held = 0;
    for (auto _ : state) {
        std::clock_t const start = std::clock();
        held = 0;
        for (lib::DrawingPoint const p : points)
            held += locator.DomainAt(p) >= 0 ? 1 : 0;
        best = std::min(best, SecondsSince(start));
    }
    std::vector<std::pair<double, double>> pairs;
    for (lib::DrawingPoint const p : points)
        pairs.emplace_back(p.x, p.y);
    LocationRun const cgal = RunCgalPointLocation(SegmentsOf(mesh), pairs);
    // Slivers at the hull may be no domains.
    if (std::abs(held - cgal.held) > kQueries / 1000)
        state.SkipWithError("the peer holds other points");
    state.counters["ns"] = 1e9 * best / kQueries;
    state.counters["cgal/zvi"] = cgal.seconds / best;
}

BENCHMARK(RoadOfGrid)->Arg(100)->Arg(300)->Unit(benchmark::kMillisecond);
BENCHMARK(RoadOfMesh)->Arg(20000)->Arg(200000)->Unit(benchmark::kMillisecond);
BENCHMARK(RoadOfNestedSquares)->Arg(500)->Arg(2000)->Unit(benchmark::kMillisecond);
BENCHMARK(RoadOfCrossingLines)->Arg(300)->Arg(600)->Unit(benchmark::kMillisecond);
BENCHMARK(RoadOfLinesInChains)->Arg(1000)->Arg(4000)->Unit(benchmark::kMillisecond)->Iterations(1);
BENCHMARK(CliffOf)
    ->ArgsProduct({benchmark::CreateDenseRange(0, std::size(kCliffs) - 2, 1), {5000, 50000}})
    ->ArgsProduct({{std::size(kCliffs) - 1}, {5000, 25000}})
    ->Unit(benchmark::kMillisecond)
    ->Iterations(1);
BENCHMARK(PointsInPolygon)->ArgsProduct({{1000, 100000}, {1, 50}})->Unit(benchmark::kMillisecond);
BENCHMARK(PointsInDomains)->Arg(1000)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace zvi::bench
