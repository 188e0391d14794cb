#include "bench/ResidentMemory.h"
#include "zvi/spatial/MHHPointSpatialIndex.h"
#include "zvi/spatial/MHashPointSpatialIndex.h"
#include "zvi/spatial/MPntOcTree.h"

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point.hpp>
#include <boost/geometry/index/rtree.hpp>
#include <nanoflann.hpp>

#include <benchmark/benchmark.h>

#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <memory>
#include <random>
#include <unordered_map>
#include <utility>
#include <vector>

// The indexes of points beside those that one would otherwise take, on points strewn evenly over a cube, in one run
// and with the same questions. The hash index has about one point in a cell; a nearest point is looked for within
// half a cell, and all points within three cells (some 110). Of the peers, nanoflann builds its tree at once from all
// points, and the plain hash grid is a hash map from cells to lists of numbers.
//
// The point octree is asked for boxes with about ten points. It lays out its children by another rule than the one by
// which it hands them points, so that points off the plane x = z mostly do not lie in their nodes: it is measured on
// points of that plane, where it finds the same as the R-tree, and on points of the whole cube, where it does not.

namespace {

using zvi::MVector;
using zvi::bench::CountBytes;
using zvi::lib::ICalcDist;
using zvi::lib::MHashPointSpatialIndex;
using zvi::lib::MHHPointSpatialIndex;
using zvi::lib::MPntOcData;
using zvi::lib::MPntOcTree;

namespace bg = boost::geometry;

using Point3 = MVector<double, 3>;
using RPoint = bg::model::point<double, 3, bg::cs::cartesian>;
using RTree = bg::index::rtree<std::pair<RPoint, std::uint64_t>, bg::index::rstar<16>>;

/// Edge of the cube.
constexpr double kExtent = 1000.0;
/// Points that fill a leaf of either tree.
constexpr long kLeafCapacity = 64;
/// Radius of a nearest and of a within-tolerance search, in cells.
constexpr double kNearCells = 0.5;
constexpr double kWithinCells = 3.0;

struct Cloud {
    std::vector<Point3> points;
    std::vector<Point3> queries;
    double cell = 0.0; ///< edge of a cell that holds one point on average
    int division = 0;
};

Cloud const &CloudOf(benchmark::State const &state, bool isPlane = false) {
    static std::vector<std::pair<std::pair<std::size_t, bool>, std::unique_ptr<Cloud>>> clouds;
    auto const count = static_cast<std::size_t>(state.range(0));
    for (auto const &[key, cloud] : clouds) {
        if (key == std::pair(count, isPlane))
            return *cloud;
    }
    auto cloud = std::make_unique<Cloud>();
    std::mt19937 random(20250311);
    std::uniform_real_distribution<double> place(0.0, kExtent);
    auto const drop = [&] {
        Point3 p(place(random), place(random), place(random));
        if (isPlane)
            p[2] = p[0];
        return p;
    };
    for (std::size_t i = 0; i < count; ++i) {
        cloud->points.push_back(drop());
        cloud->queries.push_back(drop());
    }
    cloud->division = static_cast<int>(std::pow(static_cast<double>(count), isPlane ? 1.0 / 2 : 1.0 / 3));
    cloud->cell = kExtent / cloud->division;
    clouds.emplace_back(std::pair(count, isPlane), std::move(cloud));
    return *clouds.back().second;
}

class Distances final : public ICalcDist {
public:
    explicit Distances(std::vector<Point3> const &points) : m_points(points) {}
    double CalcDist(std::uint64_t a, std::uint64_t b) const override { return CalcDist(m_points[a].Data(), b); }
    double CalcDist(float const *p, std::uint64_t value) const override { return Squared(p, m_points[value]); }
    double CalcDist(double const *p, std::uint64_t value) const override { return Squared(p, m_points[value]); }

    template <typename Coordinate>
    static double Squared(Coordinate const *p, Point3 const &q) {
        double const dx = p[0] - q[0];
        double const dy = p[1] - q[1];
        double const dz = p[2] - q[2];
        return dx * dx + dy * dy + dz * dz;
    }

private:
    std::vector<Point3> const &m_points;
};

/// What nanoflann asks of the points.
struct Adaptor {
    std::vector<Point3> const &points;
    std::size_t kdtree_get_point_count() const { return points.size(); }
    double kdtree_get_pt(std::size_t i, std::size_t axis) const { return points[i][axis]; }
    template <typename Box>
    bool kdtree_get_bbox(Box &) const {
        return false;
    }
};
using KdTree = nanoflann::KDTreeSingleIndexAdaptor<nanoflann::L2_Simple_Adaptor<double, Adaptor>, Adaptor, 3>;

/// The grid that one writes in an hour.
class PlainGrid {
public:
    PlainGrid(std::vector<Point3> const &points, double cell) : m_points(points), m_cell(cell) {}
    void Insert(std::uint64_t value) { m_cells[KeyOf(StepsOf(m_points[value]))].push_back(value); }

    template <typename Visit>
    void Walk(Point3 const &p, double reach, Visit visit) const {
        auto const low = StepsOf(p - Point3(reach, reach, reach));
        auto const high = StepsOf(p + Point3(reach, reach, reach));
        for (auto k = low[2]; k <= high[2]; ++k) {
            for (auto j = low[1]; j <= high[1]; ++j) {
                for (auto i = low[0]; i <= high[0]; ++i) {
                    auto const found = m_cells.find(KeyOf({i, j, k}));
                    if (found == m_cells.end())
                        continue;
                    for (std::uint64_t const value : found->second)
                        visit(value, Distances::Squared(p.Data(), m_points[value]));
                }
            }
        }
    }

private:
    using Steps = std::array<std::int64_t, 3>;
    Steps StepsOf(Point3 const &p) const {
        Steps steps{};
        for (std::size_t axis = 0; axis < 3; ++axis)
            steps[axis] = static_cast<std::int64_t>(std::floor(p[axis] / m_cell));
        return steps;
    }
    static std::uint64_t KeyOf(Steps const &steps) {
        auto const part = [](std::int64_t step) { return static_cast<std::uint64_t>(step) & 0x1fffff; };
        return (part(steps[2]) << 42 | part(steps[1]) << 21 | part(steps[0])) * 0x9E3779B97F4A7C15;
    }

    std::vector<Point3> const &m_points;
    double m_cell;
    std::unordered_map<std::uint64_t, std::vector<std::uint64_t>> m_cells;
};

void CountItems(benchmark::State &state) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <typename Index>
void Fill(Index &index, Cloud const &cloud) {
    double const low[] = {0, 0, 0};
    double const high[] = {kExtent, kExtent, kExtent};
    index.SetBoundaryAndDivision(low, high, cloud.division);
    for (std::size_t i = 0; i < cloud.points.size(); ++i)
        index.Insert(cloud.points[i].Data(), i);
}

/// Runs `ask(query)` for all queries; `expected(query)` summed up must be the same.
template <typename Ask, typename Expected>
void Search(benchmark::State &state, Cloud const &cloud, Ask ask, Expected expected) {
    std::uint64_t sum = 0;
    for (auto _ : state) {
        sum = 0;
        for (Point3 const &query : cloud.queries)
            sum += ask(query);
    }
    std::uint64_t control = 0;
    for (Point3 const &query : cloud.queries)
        control += expected(query);
    if (sum != control)
        state.SkipWithError("the answers are not those of the peer");
    CountItems(state);
}

std::uint64_t Nearest(PlainGrid const &grid, Point3 const &query, double reach) {
    double best = reach * reach;
    std::uint64_t nearest = 0;
    grid.Walk(query, reach, [&](std::uint64_t value, double distance) {
        if (distance < best) {
            best = distance;
            nearest = value;
        }
    });
    return nearest;
}

std::uint64_t CountWithin(PlainGrid const &grid, Point3 const &query, double reach) {
    std::vector<std::uint64_t> found;
    grid.Walk(query, reach, [&](std::uint64_t value, double distance) {
        if (distance <= reach * reach)
            found.push_back(value);
    });
    return found.size();
}

PlainGrid GridOf(Cloud const &cloud) {
    PlainGrid grid(cloud.points, cloud.cell);
    for (std::size_t i = 0; i < cloud.points.size(); ++i)
        grid.Insert(i);
    return grid;
}

template <typename Index>
void HashInsert(benchmark::State &state) {
    Cloud const &cloud = CloudOf(state);
    CountBytes(state, [&cloud] {
        auto index = std::make_unique<Index>();
        Fill(*index, cloud);
        return index;
    });
    for (auto _ : state) {
        Index index;
        Fill(index, cloud);
        benchmark::DoNotOptimize(index);
    }
    CountItems(state);
}

template <typename Index>
void HashNearest(benchmark::State &state) {
    Cloud const &cloud = CloudOf(state);
    Index index;
    Fill(index, cloud);
    Distances const distances(cloud.points);
    double const reach = kNearCells * cloud.cell;
    std::uint64_t sum = 0;
    for (auto _ : state) {
        sum = 0;
        for (Point3 const &query : cloud.queries) {
            std::uint64_t const nearest = index.FindNearest(query.Data(), reach, &distances);
            // One beyond the tolerance is left out, which the finer index may give.
            sum += distances.CalcDist(query.Data(), nearest) < reach * reach ? nearest : 0;
        }
    }
    PlainGrid const grid = GridOf(cloud);
    std::uint64_t control = 0;
    for (Point3 const &query : cloud.queries)
        control += Nearest(grid, query, reach);
    if (sum != control)
        state.SkipWithError("the answers are not those of the peer");
    CountItems(state);
}

void HashWithin(benchmark::State &state) {
    Cloud const &cloud = CloudOf(state);
    MHashPointSpatialIndex index;
    Fill(index, cloud);
    Distances const distances(cloud.points);
    double const reach = kWithinCells * cloud.cell;
    PlainGrid const grid = GridOf(cloud);
    zvi::MList<std::uint64_t> found;
    Search(
        state, cloud,
        [&](Point3 const &query) {
            return static_cast<std::uint64_t>(index.FindWithinTol(query.Data(), reach, found, &distances));
        },
        [&](Point3 const &query) { return CountWithin(grid, query, reach); });
}

void PlainGridInsert(benchmark::State &state) {
    Cloud const &cloud = CloudOf(state);
    CountBytes(state, [&cloud] { return std::make_unique<PlainGrid>(GridOf(cloud)); });
    for (auto _ : state)
        benchmark::DoNotOptimize(GridOf(cloud));
    CountItems(state);
}

void PlainGridNearest(benchmark::State &state) {
    Cloud const &cloud = CloudOf(state);
    PlainGrid const grid = GridOf(cloud);
    for (auto _ : state) {
        for (Point3 const &query : cloud.queries)
            benchmark::DoNotOptimize(Nearest(grid, query, kNearCells * cloud.cell));
    }
    CountItems(state);
}

void PlainGridWithin(benchmark::State &state) {
    Cloud const &cloud = CloudOf(state);
    PlainGrid const grid = GridOf(cloud);
    for (auto _ : state) {
        for (Point3 const &query : cloud.queries)
            benchmark::DoNotOptimize(CountWithin(grid, query, kWithinCells * cloud.cell));
    }
    CountItems(state);
}

void KdTreeBuild(benchmark::State &state) {
    Adaptor const adaptor{CloudOf(state).points};
    CountBytes(state, [&adaptor] { return std::make_unique<KdTree>(3, adaptor); });
    for (auto _ : state) {
        KdTree tree(3, adaptor);
        benchmark::DoNotOptimize(&tree);
    }
    CountItems(state);
}

void KdTreeNearest(benchmark::State &state) {
    Cloud const &cloud = CloudOf(state);
    Adaptor const adaptor{cloud.points};
    KdTree const tree(3, adaptor);
    double const limit = kNearCells * kNearCells * cloud.cell * cloud.cell;
    PlainGrid const grid = GridOf(cloud);
    Search(
        state, cloud,
        [&](Point3 const &query) {
            std::size_t nearest = 0;
            double distance = 0.0;
            nanoflann::KNNResultSet<double> result(1);
            result.init(&nearest, &distance);
            distance = limit; // the search goes no farther
            tree.findNeighbors(result, query.Data(), nanoflann::SearchParams());
            return std::uint64_t{distance < limit ? nearest : 0};
        },
        [&](Point3 const &query) { return Nearest(grid, query, kNearCells * cloud.cell); });
}

void KdTreeWithin(benchmark::State &state) {
    Cloud const &cloud = CloudOf(state);
    Adaptor const adaptor{cloud.points};
    KdTree const tree(3, adaptor);
    double const reach = kWithinCells * cloud.cell;
    PlainGrid const grid = GridOf(cloud);
    std::vector<std::pair<std::uint32_t, double>> found;
    nanoflann::SearchParams const unsorted(32, 0, false);
    Search(
        state, cloud,
        [&](Point3 const &query) {
            return std::uint64_t{tree.radiusSearch(query.Data(), reach * reach, found, unsorted)};
        },
        [&](Point3 const &query) { return CountWithin(grid, query, reach); });
}

std::unique_ptr<MPntOcTree> OcTreeOf(Cloud const &cloud) {
    auto tree = std::make_unique<MPntOcTree>(Point3(kExtent / 2, kExtent / 2, kExtent / 2), kExtent / 2, kLeafCapacity);
    for (std::size_t i = 0; i < cloud.points.size(); ++i)
        tree->Insert(i, cloud.points[i]);
    return tree;
}

RPoint Of(Point3 const &p) {
    return {p[0], p[1], p[2]};
}

std::vector<std::pair<RPoint, std::uint64_t>> ValuesOf(Cloud const &cloud) {
    std::vector<std::pair<RPoint, std::uint64_t>> values;
    for (std::size_t i = 0; i < cloud.points.size(); ++i)
        values.emplace_back(Of(cloud.points[i]), i);
    return values;
}

/// Half the edge of a query with about ten points.
Point3 HalfBox(Cloud const &cloud, bool isPlane) {
    double const half = 0.5 * cloud.cell * (isPlane ? std::sqrt(10.0) : std::cbrt(10.0));
    return {half, half, half};
}

std::uint64_t CountInBox(RTree const &tree, Point3 const &low, Point3 const &high) {
    std::vector<std::pair<RPoint, std::uint64_t>> found;
    return tree.query(bg::index::intersects(bg::model::box<RPoint>(Of(low), Of(high))), std::back_inserter(found));
}

template <bool isPlane>
void PointOcTreeBox(benchmark::State &state) {
    Cloud const &cloud = CloudOf(state, isPlane);
    auto const tree = OcTreeOf(cloud);
    Point3 const half = HalfBox(cloud, isPlane);
    RTree const peer(ValuesOf(cloud));
    auto const ask = [&](Point3 const &query) {
        zvi::MList<MPntOcData *> found;
        return static_cast<std::uint64_t>(tree->GetListInBox(query - half, query + half, found));
    };
    Search(state, cloud, ask,
           [&](Point3 const &query) { return isPlane ? CountInBox(peer, query - half, query + half) : ask(query); });
}

template <bool isPlane>
void RTreeBox(benchmark::State &state) {
    Cloud const &cloud = CloudOf(state, isPlane);
    RTree const peer(ValuesOf(cloud));
    Point3 const half = HalfBox(cloud, isPlane);
    for (auto _ : state) {
        for (Point3 const &query : cloud.queries)
            benchmark::DoNotOptimize(CountInBox(peer, query - half, query + half));
    }
    CountItems(state);
}

void PointOcTreeInsert(benchmark::State &state) {
    Cloud const &cloud = CloudOf(state, true);
    CountBytes(state, [&cloud] { return OcTreeOf(cloud); });
    for (auto _ : state)
        benchmark::DoNotOptimize(OcTreeOf(cloud));
    CountItems(state);
}

void RTreePointBuild(benchmark::State &state) {
    Cloud const &cloud = CloudOf(state, true);
    CountBytes(state, [&cloud] { return std::make_unique<RTree>(ValuesOf(cloud)); });
    for (auto _ : state)
        benchmark::DoNotOptimize(RTree(ValuesOf(cloud)));
    CountItems(state);
}

void Sizes(benchmark::internal::Benchmark *each) {
    each->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
}

BENCHMARK_TEMPLATE(HashInsert, MHashPointSpatialIndex)->Apply(Sizes);
BENCHMARK_TEMPLATE(HashInsert, MHHPointSpatialIndex)->Apply(Sizes);
BENCHMARK(PlainGridInsert)->Apply(Sizes);
BENCHMARK(KdTreeBuild)->Apply(Sizes);
BENCHMARK_TEMPLATE(HashNearest, MHashPointSpatialIndex)->Apply(Sizes);
BENCHMARK_TEMPLATE(HashNearest, MHHPointSpatialIndex)->Apply(Sizes);
BENCHMARK(PlainGridNearest)->Apply(Sizes);
BENCHMARK(KdTreeNearest)->Apply(Sizes);
BENCHMARK(HashWithin)->Apply(Sizes);
BENCHMARK(PlainGridWithin)->Apply(Sizes);
BENCHMARK(KdTreeWithin)->Apply(Sizes);
BENCHMARK(PointOcTreeInsert)->Apply(Sizes);
BENCHMARK(RTreePointBuild)->Apply(Sizes);
BENCHMARK_TEMPLATE(PointOcTreeBox, true)->Apply(Sizes);
BENCHMARK_TEMPLATE(RTreeBox, true)->Apply(Sizes);
BENCHMARK_TEMPLATE(PointOcTreeBox, false)->Apply(Sizes);
BENCHMARK_TEMPLATE(RTreeBox, false)->Apply(Sizes);

} // namespace
