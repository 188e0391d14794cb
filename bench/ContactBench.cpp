#include "zvi/math/free/TriangleDistance.h"
#include "zvi/spatial/CTriangleSpatialIndex.h"

#include <CGAL/box_intersection_d.h>
#include <boost/geometry.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point.hpp>
#include <boost/geometry/index/rtree.hpp>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <array>
#include <cmath>
#include <cstddef>
#include <cstdint>
#include <iterator>
#include <limits>
#include <numbers>
#include <utility>
#include <vector>

// Contact of two bodies: balls of triangles that nearly touch, so that a cap of each is within the tolerance of the
// other. Building counts: each starts from the triangles and ends with the number of pairs. The peers find pairs of
// boxes, CGAL by sweeping over both sets and Boost by an R-tree of one of them, bulk built, that is asked for the
// boxes of the other. The distance of two triangles is the same function everywhere.

namespace {

using zvi::lib::CTriangleSpatialIndex;
using zvi::lib::ICompTri;

namespace bg = boost::geometry;

struct Triangle {
    std::array<std::array<float, 3>, 3> corners{};
    std::array<float, 3> low{};
    std::array<float, 3> high{};
    int body = 0;
};

struct Scene {
    std::vector<Triangle> triangles; ///< of the first body, then of the second
    std::size_t firstCount = 0;
    float tolerance = 0.0f;
    float side = 0.0f; ///< mean length of an edge
};

void Finish(Triangle &triangle) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        auto const [low, high] =
            std::minmax({triangle.corners[0][axis], triangle.corners[1][axis], triangle.corners[2][axis]});
        triangle.low[axis] = low;
        triangle.high[axis] = high;
    }
}

/// A ball of radius 1 around (x, 0, 0), in rings from pole to pole.
void AddBall(Scene &scene, int body, float x, int count) {
    int const rings = static_cast<int>(std::sqrt(count / 4.0));
    int const steps = count / (2 * rings);
    auto const corner = [&](int ring, int step) {
        double const polar = std::numbers::pi * ring / rings;
        double const turn = 2 * std::numbers::pi * (step % steps) / steps;
        return std::array{x + static_cast<float>(std::sin(polar) * std::cos(turn)),
                          static_cast<float>(std::sin(polar) * std::sin(turn)), static_cast<float>(std::cos(polar))};
    };
    for (int ring = 0; ring < rings; ++ring) {
        for (int step = 0; step < steps; ++step) {
            Triangle one{{corner(ring, step), corner(ring + 1, step), corner(ring + 1, step + 1)}, {}, {}, body};
            Triangle two{{corner(ring, step), corner(ring + 1, step + 1), corner(ring, step + 1)}, {}, {}, body};
            Finish(one);
            Finish(two);
            scene.triangles.insert(scene.triangles.end(), {one, two});
        }
    }
}

Scene MakeScene(int count) {
    Scene scene;
    scene.tolerance = 0.002f;
    scene.side = static_cast<float>(std::sqrt(4 * std::numbers::pi / count * 2));
    AddBall(scene, 0, 0.0f, count);
    scene.firstCount = scene.triangles.size();
    AddBall(scene, 1, 2.0f, count);
    return scene;
}

double Distance(Triangle const &t, Triangle const &u) {
    std::array<std::array<double, 3>, 6> p{};
    for (std::size_t i = 0; i < 3; ++i) {
        std::copy_n(t.corners[i].begin(), 3, p[i].begin());
        std::copy_n(u.corners[i].begin(), 3, p[3 + i].begin());
    }
    return zvi::lib::distance_triangles_3d(p[0].data(), p[1].data(), p[2].data(), p[3].data(), p[4].data(),
                                           p[5].data());
}

bool AreBoxesNear(Triangle const &t, Triangle const &u, float tolerance) {
    for (std::size_t axis = 0; axis < 3; ++axis) {
        if (t.low[axis] - tolerance > u.high[axis] || u.low[axis] - tolerance > t.high[axis])
            return false;
    }
    return true;
}

using Pairs = std::vector<std::uint64_t>;

std::uint64_t KeyOf(std::size_t first, std::size_t second) {
    return std::uint64_t{first} << 32 | second;
}

std::size_t CountOf(Pairs &pairs) {
    std::sort(pairs.begin(), pairs.end());
    return static_cast<std::size_t>(std::unique(pairs.begin(), pairs.end()) - pairs.begin());
}

class Collector final : public ICompTri {
public:
    Pairs pairs;
    explicit Collector(Triangle const *all) : m_all(all) {}

    int Compare(void *item1, void *item2, float tol) override {
        auto const &first = *static_cast<Triangle const *>(item1);
        auto const &second = *static_cast<Triangle const *>(item2);
        return AreBoxesNear(first, second, tol) && Distance(first, second) <= static_cast<double>(tol) ? 1 : 0;
    }
    void Report(void *item1, void *item2) override {
        auto const first = static_cast<std::size_t>(static_cast<Triangle const *>(item1) - m_all);
        auto const second = static_cast<std::size_t>(static_cast<Triangle const *>(item2) - m_all);
        pairs.push_back(KeyOf(std::min(first, second), std::max(first, second)));
    }
    int GetTriangle(void *, float *, float *, float *, float *) override { return 0; }

private:
    Triangle const *m_all;
};

std::size_t PairsByIndex(Scene &scene) {
    float const box[] = {-1, -1, -1, 3, 1, 1};
    float const cell = 6.0f * scene.side;
    CTriangleSpatialIndex index(box, 1 << 20, cell);
    float const grown = scene.tolerance / 2 + 1e-6f;
    for (Triangle &triangle : scene.triangles)
        index.Insert(triangle.corners[0].data(), triangle.corners[1].data(), triangle.corners[2].data(), triangle.body,
                     grown, &triangle);
    Collector collector(scene.triangles.data());
    index.FindTriWithinTol(scene.tolerance, &collector);
    return CountOf(collector.pairs);
}

using CgalBox = CGAL::Box_intersection_d::Box_with_info_d<float, 3, Triangle const *>;

std::size_t PairsByCgal(Scene const &scene) {
    std::array<std::vector<CgalBox>, 2> boxes;
    for (Triangle const &triangle : scene.triangles) {
        std::array<float, 3> low = triangle.low;
        std::array<float, 3> high = triangle.high;
        for (std::size_t axis = 0; axis < 3 && triangle.body == 0; ++axis) {
            low[axis] -= scene.tolerance;
            high[axis] += scene.tolerance;
        }
        boxes[static_cast<std::size_t>(triangle.body)].emplace_back(low.data(), high.data(), &triangle);
    }
    Pairs pairs;
    Triangle const *const all = scene.triangles.data();
    CGAL::box_intersection_d(boxes[0].begin(), boxes[0].end(), boxes[1].begin(), boxes[1].end(),
                             [&](CgalBox const &a, CgalBox const &b) {
                                 if (Distance(*a.info(), *b.info()) <= static_cast<double>(scene.tolerance))
                                     pairs.push_back(KeyOf(static_cast<std::size_t>(a.info() - all),
                                                           static_cast<std::size_t>(b.info() - all)));
                             });
    return CountOf(pairs);
}

using RPoint = bg::model::point<float, 3, bg::cs::cartesian>;
using RBox = bg::model::box<RPoint>;
using RTree = bg::index::rtree<std::pair<RBox, std::uint32_t>, bg::index::rstar<16>>;

std::size_t PairsByRTree(Scene const &scene) {
    std::vector<std::pair<RBox, std::uint32_t>> values;
    for (std::size_t i = 0; i < scene.firstCount; ++i) {
        Triangle const &t = scene.triangles[i];
        values.emplace_back(RBox({t.low[0], t.low[1], t.low[2]}, {t.high[0], t.high[1], t.high[2]}),
                            static_cast<std::uint32_t>(i));
    }
    RTree const tree(values);
    Pairs pairs;
    float const tol = scene.tolerance;
    for (std::size_t i = scene.firstCount; i < scene.triangles.size(); ++i) {
        Triangle const &t = scene.triangles[i];
        RBox const query({t.low[0] - tol, t.low[1] - tol, t.low[2] - tol},
                         {t.high[0] + tol, t.high[1] + tol, t.high[2] + tol});
        for (auto it = tree.qbegin(bg::index::intersects(query)); it != tree.qend(); ++it) {
            if (Distance(scene.triangles[it->second], t) <= static_cast<double>(tol))
                pairs.push_back(KeyOf(it->second, i));
        }
    }
    return CountOf(pairs);
}

template <typename Find>
void Contact(benchmark::State &state, Find find) {
    Scene scene = MakeScene(static_cast<int>(state.range(0)));
    std::size_t count = 0;
    for (auto _ : state)
        count = find(scene);
    if (count == 0 || count != PairsByCgal(scene))
        state.SkipWithError("the pairs are not those of the peer");
    state.counters["pairs"] = static_cast<double>(count);
    state.SetItemsProcessed(state.iterations() * 2 * state.range(0));
}

void TriangleIndexContact(benchmark::State &state) {
    Contact(state, PairsByIndex);
}
void CgalBoxContact(benchmark::State &state) {
    Contact(state, PairsByCgal);
}
void RTreeContact(benchmark::State &state) {
    Contact(state, PairsByRTree);
}

void Sizes(benchmark::internal::Benchmark *each) {
    each->Arg(10000)->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(TriangleIndexContact)->Apply(Sizes);
BENCHMARK(CgalBoxContact)->Apply(Sizes);
BENCHMARK(RTreeContact)->Apply(Sizes);

} // namespace
