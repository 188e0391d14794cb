#include "bench/ResidentMemory.h"
#include "zvi/spatial/MOcTree.h"
#include "zvi/spatial/MQuadTree.h"

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
#include <memory>
#include <random>
#include <utility>
#include <vector>

// The object trees beside an R-tree that is bulk built. Sides of the boxes run from 0 to their mean distance, queries
// are squares or cubes of that side, strewn evenly, and both answer the same questions in the same order. In a nest
// all boxes lie around one place, so that a tree of quadrants or octants has them all in one pool; there the queries
// are strewn over it. Our trees take their boxes one by one under keys, as their users do.

namespace {

namespace bg = boost::geometry;

using zvi::bench::CountBytes;

/// Side of the square or cube that holds all boxes.
constexpr double kExtent = 1000.0;

template <std::size_t dimension>
struct Corners {
    std::array<double, dimension> low, high;
};

struct Plane {
    static constexpr std::size_t kDimension = 2;
    using Tree = zvi::lib::MQuadTree;
    using Object = zvi::lib::MQuadObj;
    using Box = zvi::lib::MQuadMBR2D;
    using Point = bg::model::point<double, 2, bg::cs::cartesian>;
    static Box BoxOf(Corners<2> const &c) { return {c.low[0], c.low[1], c.high[0], c.high[1]}; }
    static Point PointAt(std::array<double, 2> const &p) { return {p[0], p[1]}; }
};

struct Space {
    static constexpr std::size_t kDimension = 3;
    using Tree = zvi::lib::MOcTree;
    using Object = zvi::lib::MOcObj;
    using Box = zvi::lib::MOcMBR3D;
    using Point = bg::model::point<double, 3, bg::cs::cartesian>;
    static Box BoxOf(Corners<3> const &c) { return {c.low[0], c.low[1], c.low[2], c.high[0], c.high[1], c.high[2]}; }
    static Point PointAt(std::array<double, 3> const &p) { return {p[0], p[1], p[2]}; }
};

template <typename In>
struct Peer {
    using Box = bg::model::box<typename In::Point>;
    using Value = std::pair<Box, unsigned int>;
    using Tree = bg::index::rtree<Value, bg::index::rstar<16>>;
};

template <typename In>
struct Scene {
    using Value = typename Peer<In>::Value;

    std::vector<typename In::Box> boxes;
    std::vector<Value> values; ///< the boxes for the peer
    std::vector<typename In::Box> queries;
    std::vector<typename Peer<In>::Box> peerQueries;
    std::vector<unsigned int> shuffled; ///< all keys, in the order of the deletions

    void Add(Corners<In::kDimension> const &box, Corners<In::kDimension> const &query) {
        auto const key = static_cast<unsigned int>(boxes.size());
        boxes.push_back(In::BoxOf(box));
        values.emplace_back(typename Peer<In>::Box(In::PointAt(box.low), In::PointAt(box.high)), key);
        queries.push_back(In::BoxOf(query));
        peerQueries.emplace_back(In::PointAt(query.low), In::PointAt(query.high));
        shuffled.push_back(key);
    }
};

template <typename In>
Scene<In> MakeScene(std::size_t count, bool isNest) {
    std::mt19937 random(20240607);
    double const spacing = kExtent / std::pow(static_cast<double>(count), 1.0 / static_cast<double>(In::kDimension));
    std::uniform_real_distribution<double> place(0.0, kExtent);
    std::uniform_real_distribution<double> side(0.0, spacing);
    Scene<In> scene;
    for (std::size_t i = 0; i < count; ++i) {
        Corners<In::kDimension> box, query;
        double const half = place(random) * 0.5;
        for (std::size_t a = 0; a < In::kDimension; ++a) {
            double const at = place(random);
            box.low[a] = isNest ? kExtent * 0.5 - half : at;
            box.high[a] = isNest ? kExtent * 0.5 + half : at + side(random);
            // In a nest the queries look at its rim, where few boxes reach.
            query.low[a] = isNest ? place(random) * 1e-3 : place(random);
            query.high[a] = query.low[a] + (isNest ? 0.5 : spacing);
        }
        scene.Add(box, query);
    }
    std::shuffle(scene.shuffled.begin(), scene.shuffled.end(), random);
    return scene;
}

/// Evenly strewn, or a nest with a second argument.
template <typename In>
Scene<In> const &SceneOf(benchmark::State const &state) {
    static std::vector<std::pair<std::pair<std::int64_t, std::int64_t>, std::unique_ptr<Scene<In>>>> scenes;
    std::pair const arguments(state.range(0), state.range(1));
    for (auto const &[key, scene] : scenes) {
        if (key == arguments)
            return *scene;
    }
    scenes.emplace_back(arguments, std::make_unique<Scene<In>>(
                                       MakeScene<In>(static_cast<std::size_t>(state.range(0)), state.range(1) != 0)));
    return *scenes.back().second;
}

template <typename In>
void Fill(typename In::Tree &tree, Scene<In> const &scene) {
    for (unsigned int key = 0; key < scene.boxes.size(); ++key)
        tree.Insert(key, scene.boxes[key]);
}

void CountItems(benchmark::State &state) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <typename In>
void TreeInsert(benchmark::State &state) {
    Scene<In> const &scene = SceneOf<In>(state);
    auto const make = [&scene] {
        auto tree = std::make_unique<typename In::Tree>();
        Fill<In>(*tree, scene);
        return tree;
    };
    CountBytes(state, make);
    std::unique_ptr<typename In::Tree> tree;
    for (auto _ : state) {
        state.PauseTiming();
        tree.reset();
        state.ResumeTiming();
        tree = make();
    }
    if (tree->Exist(static_cast<unsigned int>(scene.boxes.size() - 1)) == 0)
        state.SkipWithError("a box is missing");
    CountItems(state);
}

template <typename In>
void RTreeBulkBuild(benchmark::State &state) {
    Scene<In> const &scene = SceneOf<In>(state);
    auto const make = [&scene] { return std::make_unique<typename Peer<In>::Tree>(scene.values); };
    CountBytes(state, make);
    std::unique_ptr<typename Peer<In>::Tree> tree;
    for (auto _ : state) {
        state.PauseTiming();
        tree.reset();
        state.ResumeTiming();
        tree = make();
    }
    if (tree->size() != scene.boxes.size())
        state.SkipWithError("a box is missing");
    CountItems(state);
}

/// Hits that all queries of a scene have, by the peer.
template <typename In>
std::size_t HitCount(Scene<In> const &scene, typename Peer<In>::Tree const &tree) {
    std::size_t hits = 0;
    std::vector<typename Peer<In>::Value> found;
    for (auto const &query : scene.peerQueries) {
        found.clear();
        hits += tree.query(bg::index::intersects(query), std::back_inserter(found));
    }
    return hits;
}

template <typename In>
void TreeQuery(benchmark::State &state) {
    Scene<In> const &scene = SceneOf<In>(state);
    typename In::Tree tree;
    Fill<In>(tree, scene);
    std::size_t hits = 0;
    for (auto _ : state) {
        hits = 0;
        for (typename In::Box const &query : scene.queries) {
            zvi::MList<typename In::Object *> found;
            hits += static_cast<std::size_t>(tree.GetIntersectObjList(query, found, 0));
        }
    }
    // Boxes within the touch tolerance hit as well, which the peer leaves out.
    std::size_t const expected = HitCount<In>(scene, typename Peer<In>::Tree(scene.values));
    if (hits < expected || hits > expected + expected / 100)
        state.SkipWithError("the hits are not those of the peer");
    CountItems(state);
}

template <typename In>
void RTreeQuery(benchmark::State &state) {
    Scene<In> const &scene = SceneOf<In>(state);
    typename Peer<In>::Tree const tree(scene.values);
    std::size_t hits = 0;
    for (auto _ : state)
        hits = HitCount<In>(scene, tree);
    if (hits == 0)
        state.SkipWithError("too few hits");
    CountItems(state);
}

template <typename In>
void TreeDelete(benchmark::State &state) {
    Scene<In> const &scene = SceneOf<In>(state);
    int deleted = 0;
    for (auto _ : state) {
        state.PauseTiming();
        typename In::Tree tree;
        Fill<In>(tree, scene);
        state.ResumeTiming();
        deleted = 0;
        for (unsigned int const key : scene.shuffled)
            deleted += tree.Delete(key);
    }
    if (deleted != state.range(0))
        state.SkipWithError("a box was not found");
    CountItems(state);
}

template <typename In>
void RTreeDelete(benchmark::State &state) {
    Scene<In> const &scene = SceneOf<In>(state);
    std::size_t deleted = 0;
    for (auto _ : state) {
        state.PauseTiming();
        typename Peer<In>::Tree tree(scene.values);
        state.ResumeTiming();
        deleted = 0;
        for (unsigned int const key : scene.shuffled)
            deleted += tree.remove(scene.values[key]);
    }
    if (deleted != scene.values.size())
        state.SkipWithError("a box was not found");
    CountItems(state);
}

void Strewn(benchmark::internal::Benchmark *each) {
    each->Args({100000, 0})->Args({1000000, 0})->Unit(benchmark::kMillisecond);
}

void StrewnAndNested(benchmark::internal::Benchmark *each) {
    Strewn(each);
    each->Args({10000, 1})->Args({100000, 1});
}

BENCHMARK_TEMPLATE(TreeInsert, Plane)->Apply(Strewn);
BENCHMARK_TEMPLATE(RTreeBulkBuild, Plane)->Apply(Strewn);
BENCHMARK_TEMPLATE(TreeQuery, Plane)->Apply(StrewnAndNested);
BENCHMARK_TEMPLATE(RTreeQuery, Plane)->Apply(StrewnAndNested);
BENCHMARK_TEMPLATE(TreeDelete, Plane)->Apply(StrewnAndNested);
BENCHMARK_TEMPLATE(RTreeDelete, Plane)->Apply(StrewnAndNested);
BENCHMARK_TEMPLATE(TreeInsert, Space)->Apply(Strewn);
BENCHMARK_TEMPLATE(RTreeBulkBuild, Space)->Apply(Strewn);
BENCHMARK_TEMPLATE(TreeQuery, Space)->Apply(Strewn);
BENCHMARK_TEMPLATE(RTreeQuery, Space)->Apply(Strewn);
BENCHMARK_TEMPLATE(TreeDelete, Space)->Apply(Strewn);
BENCHMARK_TEMPLATE(RTreeDelete, Space)->Apply(Strewn);

} // namespace
