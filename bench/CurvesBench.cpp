// Points in polygons beside GEOS's ray crossing counter, and meeting points of curves beside CGAL's circular kernel.
// The peers answer exactly; the results of both sides are compared after each loop.

#include "zvi/curves/MGeomFunc.h"
#include "zvi/curves/MIntersectUtil.h"

#include <CGAL/Exact_circular_kernel_2.h>
#include <benchmark/benchmark.h>
#include <geos/algorithm/RayCrossingCounter.h>
#include <geos/geom/Coordinate.h>
#include <geos/geom/Location.h>

#include <cmath>
#include <numbers>
#include <random>
#include <vector>

using namespace zvi;
using namespace zvi::lib;

namespace {

constexpr unsigned kSeed = 20240607;
constexpr int kPointCount = 1024;
constexpr int kPairCount = 1024;
constexpr double kTolerance = 1e-6;

// --- Points in polygons ---

/// A polygon and points spread evenly over its box.
struct PointTask {
    MArray<T_POINT2D> polygon;
    std::vector<geos::geom::Coordinate> ring; // the same vertices
    std::vector<T_POINT2D> points;
};

/// A ring about the origin: `jitter` 0 is a smooth circle, 1 a star whose radius jumps at every vertex.
PointTask MakePointTask(int count, double jitter) {
    std::mt19937 random(kSeed);
    std::uniform_real_distribution<double> unit(0.0, 1.0);
    PointTask task;
    for (int i = 0; i < count; ++i) {
        double const angle = 2.0 * std::numbers::pi * i / count;
        double const radius = 100.0 * (1.0 - 0.8 * jitter * unit(random));
        task.polygon.PushBack({radius * std::cos(angle), radius * std::sin(angle)});
        task.ring.emplace_back(radius * std::cos(angle), radius * std::sin(angle));
    }
    for (int i = 0; i < kPointCount; ++i)
        task.points.push_back({200.0 * unit(random) - 100.0, 200.0 * unit(random) - 100.0});
    return task;
}

int CountByGeos(PointTask const &task) {
    std::vector<geos::geom::Coordinate> const &ring = task.ring;
    int inside = 0;
    for (T_POINT2D const &p : task.points) {
        geos::geom::Coordinate const point(p.x, p.y); // the counter keeps a reference
        geos::algorithm::RayCrossingCounter counter(point);
        for (std::size_t i = 0; i < ring.size(); ++i)
            counter.countSegment(ring[i], ring[i + 1 == ring.size() ? 0 : i + 1]);
        inside += counter.getLocation() == geos::geom::Location::INTERIOR ? 1 : 0;
    }
    return inside;
}

int CountByZvi(PointTask const &task) {
    int inside = 0;
    for (T_POINT2D const &p : task.points)
        inside += MGeomFunc::IsPointInPolygon2(p, task.polygon, 0);
    return inside;
}

template <int (*Count)(PointTask const &), int (*Check)(PointTask const &)>
void BM_PointInPolygon(benchmark::State &state) {
    PointTask const task = MakePointTask(static_cast<int>(state.range(0)), static_cast<double>(state.range(1)));
    int inside = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(inside = Count(task));
    if (inside != Check(task))
        state.SkipWithError("the counts differ");
    state.SetItemsProcessed(state.iterations() * kPointCount);
    state.SetLabel(state.range(1) == 0 ? "circle" : "star");
}

void PolygonSizes(benchmark::internal::Benchmark *benchmark) {
    for (int const jitter : {0, 1}) {
        for (int const count : {8, 64, 512, 4096})
            benchmark->Args({count, jitter});
    }
}

BENCHMARK(BM_PointInPolygon<CountByZvi, CountByGeos>)->Name("BM_PointInPolygonZvi")->Apply(PolygonSizes);
BENCHMARK(BM_PointInPolygon<CountByGeos, CountByZvi>)->Name("BM_PointInPolygonGeos")->Apply(PolygonSizes);

// --- Meeting points ---

using Kernel = CGAL::Exact_circular_kernel_2;
using PeerArc = Kernel::Circular_arc_2;
using PeerLine = Kernel::Line_arc_2;

/// Takes what CGAL finds, of whatever type, and counts it.
class MeetingCounter {
public:
    explicit MeetingCounter(std::size_t &count) : m_count(&count) {}
    MeetingCounter &operator*() { return *this; }
    MeetingCounter &operator++() { return *this; }
    MeetingCounter &operator++(int) { return *this; }
    template <typename Meeting>
    MeetingCounter &operator=(Meeting const &) {
        ++*m_count;
        return *this;
    }

private:
    std::size_t *m_count;
};

MVector<double, 3> RandomPoint(std::mt19937 &random) {
    std::uniform_real_distribution<double> coordinate(-100.0, 100.0);
    double const x = coordinate(random);
    return {x, coordinate(random), 0.0};
}

/// An arc through three points: the curve of both sides, counter-clockwise.
struct ArcPair {
    T_LINE_G own;
    PeerArc peer;
};

ArcPair MakeArc(std::mt19937 &random) {
    std::uniform_real_distribution<double> angle(0.0, 2.0 * std::numbers::pi);
    std::uniform_real_distribution<double> length(20.0, 80.0);
    MVector<double, 3> const center = RandomPoint(random);
    double const radius = length(random);
    double const start = angle(random);
    double const sweep = 0.2 + 0.95 * angle(random);
    auto const at = [&](double a) {
        return MVector<double, 3>(center[0] + radius * std::cos(a), center[1] + radius * std::sin(a), 0.0);
    };
    MVector<double, 3> const p = at(start);
    MVector<double, 3> const q = at(start + sweep / 2);
    MVector<double, 3> const r = at(start + sweep);
    ArcPair pair;
    pair.own.Set(p, r, 1, center, {0.0, 0.0, 1.0}, 1, 1e-4);
    pair.peer = PeerArc(Kernel::Point_2(p[0], p[1]), Kernel::Point_2(q[0], q[1]), Kernel::Point_2(r[0], r[1]));
    return pair;
}

/// Pairs of arcs, or of a segment and an arc; about half of them meet.
struct PairTask {
    std::vector<T_LINE_G> own[2];
    std::vector<PeerArc> peer[2];
    std::vector<PeerLine> peerLine;
};

PairTask MakePairTask(bool withLines) {
    std::mt19937 random(kSeed);
    PairTask task;
    for (int i = 0; i < kPairCount; ++i) {
        for (int side = 0; side < 2; ++side) {
            if (withLines && side == 1) {
                MVector<double, 3> const a = RandomPoint(random);
                MVector<double, 3> const b = RandomPoint(random);
                task.own[1].emplace_back().Set(a, b);
                task.peerLine.emplace_back(Kernel::Point_2(a[0], a[1]), Kernel::Point_2(b[0], b[1]));
            } else {
                ArcPair const pair = MakeArc(random);
                task.own[side].push_back(pair.own);
                task.peer[side].push_back(pair.peer);
            }
        }
    }
    return task;
}

std::size_t MeetByZvi(PairTask const &task, MArray<MVector<double, 3>> &points) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < kPairCount; ++i) {
        MIntersectUtil::GetIntersectPointByLine2Line(task.own[0][i], task.own[1][i], points, kTolerance);
        count += points.Size();
    }
    return count;
}

template <bool WithLines>
std::size_t MeetByCgal(PairTask const &task) {
    std::size_t count = 0;
    for (std::size_t i = 0; i < kPairCount; ++i) {
        if constexpr (WithLines)
            CGAL::intersection(task.peerLine[i], task.peer[0][i], MeetingCounter(count));
        else
            CGAL::intersection(task.peer[0][i], task.peer[1][i], MeetingCounter(count));
    }
    return count;
}

template <bool WithLines>
void BM_MeetZvi(benchmark::State &state) {
    PairTask const task = MakePairTask(WithLines);
    MArray<MVector<double, 3>> points;
    std::size_t count = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(count = MeetByZvi(task, points));
    if (count != MeetByCgal<WithLines>(task))
        state.SkipWithError("the counts differ");
    state.SetItemsProcessed(state.iterations() * kPairCount);
}

template <bool WithLines>
void BM_MeetCgal(benchmark::State &state) {
    PairTask const task = MakePairTask(WithLines);
    std::size_t count = 0;
    for (auto _ : state)
        benchmark::DoNotOptimize(count = MeetByCgal<WithLines>(task));
    if (count == 0)
        state.SkipWithError("nothing meets");
    state.SetItemsProcessed(state.iterations() * kPairCount);
}

BENCHMARK(BM_MeetZvi<false>)->Name("BM_ArcMeetsArcZvi");
BENCHMARK(BM_MeetCgal<false>)->Name("BM_ArcMeetsArcCgal");
BENCHMARK(BM_MeetZvi<true>)->Name("BM_LineMeetsArcZvi");
BENCHMARK(BM_MeetCgal<true>)->Name("BM_LineMeetsArcCgal");

} // namespace
