// MakeDrawingDomains on whole drawings. Segments that cross at random stand beside GEOS, which nodes them and makes
// polygons; the first half, which joins and cuts, stands beside the noding alone. GEOS knows no arcs, so drawings with
// arcs stand alone. Counters: milliseconds of processor time of each,
// the ratios, and the growth exponent against the size before.

#include "zvi/drawing/CutDrawingCurves.h"
#include "zvi/drawing/MakeDrawingDomains.h"

#include <benchmark/benchmark.h>
#include <geos_c.h>

#include <cmath>
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

/// Seed of the random drawings.
constexpr unsigned int kSeed = 2024;

/// How often cutting alone is measured; the best counts.
constexpr int kCuttings = 5;

/// Side of the square that the drawings fill, and the mean number of crossings of each curve of a random one.
constexpr double kSide = 1000.0;
constexpr double kCrossings = 10.0;

DrawingCurve LineBetween(double x1, double y1, double x2, double y2) {
    DrawingCurve c;
    c.start = {x1, y1};
    c.end = {x2, y2};
    return c;
}

Curves Numbered(Curves curves) {
    for (std::size_t i = 0; i < curves.size(); ++i)
        curves[i].id = static_cast<unsigned int>(i) + 1;
    return curves;
}

/// Segments of one length at random places and directions. Two of them cross with the chance 2 L^2 / (pi A).
Curves RandomSegments(int count) {
    std::mt19937 random(kSeed);
    std::uniform_real_distribution<double> place(0.0, kSide), turn(0.0, 2.0 * std::numbers::pi);
    double const length = kSide * std::sqrt(kCrossings * std::numbers::pi / (2.0 * count));
    Curves curves;
    for (int i = 0; i < count; ++i) {
        double const x = place(random), y = place(random), a = turn(random);
        curves.push_back(LineBetween(x, y, x + length * std::cos(a), y + length * std::sin(a)));
    }
    return Numbered(curves);
}

/// A third each of segments, arcs and circles, at random.
Curves RandomMixture(int count) {
    std::mt19937 random(kSeed);
    std::uniform_real_distribution<double> place(0.0, kSide), turn(0.0, 2.0 * std::numbers::pi), share(0.3, 1.0);
    double const size = kSide * std::sqrt(1.0 / count);
    Curves curves = RandomSegments(count / 3);
    while (static_cast<int>(curves.size()) < count) {
        DrawingCurve c;
        c.type = curves.size() % 2 == 0 ? DrawingCurveType::kArc : DrawingCurveType::kCircle;
        c.center = {place(random), place(random)};
        c.radius = size * share(random);
        double const a = turn(random), b = turn(random);
        c.start = {c.center.x + c.radius * std::cos(a), c.center.y + c.radius * std::sin(a)};
        c.end = {c.center.x + c.radius * std::cos(b), c.center.y + c.radius * std::sin(b)};
        curves.push_back(c);
    }
    return Numbered(curves);
}

/// Rooms of four walls whose corners miss each other by less than the join tolerance, with a column in each.
Curves Rooms(int count) {
    std::mt19937 random(kSeed);
    std::uniform_real_distribution<double> miss(-3e-5, 3e-5);
    int const perSide = std::max(1, static_cast<int>(std::sqrt(count / 5.0)));
    Curves curves;
    for (int j = 0; j < perSide; ++j)
        for (int i = 0; i < perSide; ++i) {
            double const x[] = {i + 0.0, i + 0.9, i + 0.9, i + 0.0}, y[] = {j + 0.0, j + 0.0, j + 0.9, j + 0.9};
            for (int k = 0; k < 4; ++k)
                curves.push_back(LineBetween(x[k] + miss(random), y[k] + miss(random), x[(k + 1) % 4] + miss(random),
                                             y[(k + 1) % 4] + miss(random)));
            DrawingCurve column;
            column.type = DrawingCurveType::kCircle;
            column.center = {i + 0.45, j + 0.45};
            column.radius = 0.2;
            curves.push_back(column);
        }
    return Numbered(curves);
}

double SecondsSince(std::clock_t start) {
    return static_cast<double>(std::clock() - start) / CLOCKS_PER_SEC;
}

struct PeerTimes {
    double node = 0.0;
    double polygonize = 0.0;
    int polygons = 0;
};

/// Noding and polygons by GEOS.
PeerTimes TimeGeos(Curves const &curves) {
    GEOSContextHandle_t const geos = GEOS_init_r();
    std::vector<GEOSGeometry *> lines;
    for (DrawingCurve const &c : curves) {
        GEOSCoordSequence *points = GEOSCoordSeq_create_r(geos, 2, 2);
        GEOSCoordSeq_setXY_r(geos, points, 0, c.start.x, c.start.y);
        GEOSCoordSeq_setXY_r(geos, points, 1, c.end.x, c.end.y);
        lines.push_back(GEOSGeom_createLineString_r(geos, points));
    }
    GEOSGeometry *all =
        GEOSGeom_createCollection_r(geos, GEOS_MULTILINESTRING, lines.data(), static_cast<unsigned int>(lines.size()));
    PeerTimes times;
    std::clock_t start = std::clock();
    GEOSGeometry *noded = GEOSNode_r(geos, all);
    times.node = SecondsSince(start);
    start = std::clock();
    GEOSGeometry *polygons = GEOSPolygonize_r(geos, &noded, 1);
    times.polygonize = SecondsSince(start);
    times.polygons = GEOSGetNumGeometries_r(geos, polygons);
    GEOSGeom_destroy_r(geos, polygons);
    GEOSGeom_destroy_r(geos, noded);
    GEOSGeom_destroy_r(geos, all);
    GEOS_finish_r(geos);
    return times;
}

/// Milliseconds by size of each kind of drawing, for the growth exponent.
std::map<std::string, std::pair<int, double>> lastTimes;

void CountGrowth(benchmark::State &state, std::string const &kind, int size, double seconds) {
    auto const before = lastTimes.find(kind);
    if (before != lastTimes.end() && before->second.first < size)
        state.counters["exponent"] =
            std::log(seconds / before->second.second) / std::log(static_cast<double>(size) / before->second.first);
    lastTimes[kind] = {size, seconds};
}

double Run(benchmark::State &state, Curves const &curves, lib::DrawingResult &result) {
    double best = HUGE_VAL;
    for (auto _ : state) {
        std::clock_t const start = std::clock();
        result = lib::MakeDrawingDomains(curves);
        best = std::min(best, SecondsSince(start));
    }
    if (result.domains.empty())
        state.SkipWithError("no domain was found");
    state.counters["ms"] = 1e3 * best;
    state.counters["domains"] = static_cast<double>(result.domains.size());
    state.counters["cuts"] = result.counts.cut;
    return best;
}

void DrawingOfRandomSegments(benchmark::State &state) {
    int const count = static_cast<int>(state.range(0));
    Curves const curves = RandomSegments(count);
    lib::DrawingResult result;
    double const seconds = Run(state, curves, result);
    CountGrowth(state, "segments", count, seconds);
    double cutting = HUGE_VAL;
    for (int i = 0; i < kCuttings; ++i) {
        std::clock_t const start = std::clock();
        benchmark::DoNotOptimize(lib::CutDrawingCurves(curves));
        cutting = std::min(cutting, SecondsSince(start));
    }
    PeerTimes const peer = TimeGeos(curves);
    state.counters["cut_ms"] = 1e3 * cutting;
    state.counters["geos/cut"] = peer.node / cutting;
    state.counters["geos_node_ms"] = 1e3 * peer.node;
    state.counters["geos_polygons_ms"] = 1e3 * peer.polygonize;
    state.counters["geos/zvi"] = (peer.node + peer.polygonize) / seconds;
    // Near-coincident crossings within the join tolerance are one place here and several there.
    if (std::fabs(static_cast<double>(result.domains.size()) - peer.polygons) > 0.001 * peer.polygons)
        state.SkipWithError("the peer finds other faces");
}

void DrawingOfRandomMixture(benchmark::State &state) {
    int const count = static_cast<int>(state.range(0));
    lib::DrawingResult result;
    CountGrowth(state, "mixture", count, Run(state, RandomMixture(count), result));
}

void DrawingOfRooms(benchmark::State &state) {
    int const count = static_cast<int>(state.range(0));
    lib::DrawingResult result;
    CountGrowth(state, "rooms", count, Run(state, Rooms(count), result));
}

BENCHMARK(DrawingOfRandomSegments)->Arg(2000)->Arg(20000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(DrawingOfRandomMixture)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);
BENCHMARK(DrawingOfRooms)->Arg(10000)->Arg(100000)->Unit(benchmark::kMillisecond);

} // namespace

} // namespace zvi::bench
