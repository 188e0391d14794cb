#include "zvi/spatial/MQuadTree.h"

#include <boost/geometry.hpp>
#include <boost/geometry/geometries/box.hpp>
#include <boost/geometry/geometries/point.hpp>
#include <boost/geometry/index/rtree.hpp>

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstddef>
#include <iterator>
#include <memory>
#include <random>
#include <utility>
#include <vector>

// The object quadtree beside an R-tree that is bulk built, on rectangles strewn evenly over a square. Sides run from 0
// to the mean distance of two rectangles, queries are squares of that side, and both answer the same questions in the
// same order. The quadtree takes its rectangles one by one under keys, as its users do.

namespace {

using zvi::lib::MQuadMBR2D;
using zvi::lib::MQuadObj;
using zvi::lib::MQuadTree;

namespace bg = boost::geometry;

using Point = bg::model::point<double, 2, bg::cs::cartesian>;
using Box = bg::model::box<Point>;
using Value = std::pair<Box, unsigned int>;
using RTree = bg::index::rtree<Value, bg::index::rstar<16>>;

/// Side of the square that holds all rectangles.
constexpr double kExtent = 1000.0;

struct Scene {
    std::vector<MQuadMBR2D> rectangles;
    std::vector<MQuadMBR2D> queries;
    std::vector<unsigned int> shuffled; ///< all keys, in the order of the deletions
};

Scene MakeScene(std::size_t count) {
    std::mt19937 random(20240607);
    double const spacing = kExtent / std::sqrt(static_cast<double>(count));
    std::uniform_real_distribution<double> place(0.0, kExtent);
    std::uniform_real_distribution<double> side(0.0, spacing);
    Scene scene;
    for (unsigned int i = 0; i < count; ++i) {
        double const x = place(random);
        double const y = place(random);
        scene.rectangles.push_back({x, y, x + side(random), y + side(random)});
        double const u = place(random);
        double const v = place(random);
        scene.queries.push_back({u, v, u + spacing, v + spacing});
        scene.shuffled.push_back(i);
    }
    std::shuffle(scene.shuffled.begin(), scene.shuffled.end(), random);
    return scene;
}

Scene const &SceneOf(benchmark::State const &state) {
    static std::vector<std::pair<std::size_t, std::unique_ptr<Scene>>> scenes;
    auto const count = static_cast<std::size_t>(state.range(0));
    for (auto const &[size, scene] : scenes) {
        if (size == count)
            return *scene;
    }
    scenes.emplace_back(count, std::make_unique<Scene>(MakeScene(count)));
    return *scenes.back().second;
}

Box BoxOf(MQuadMBR2D const &mbr) {
    return {Point(mbr.minX, mbr.minY), Point(mbr.maxX, mbr.maxY)};
}

std::vector<Value> ValuesOf(Scene const &scene) {
    std::vector<Value> values;
    for (std::size_t i = 0; i < scene.rectangles.size(); ++i)
        values.emplace_back(BoxOf(scene.rectangles[i]), static_cast<unsigned int>(i));
    return values;
}

void Fill(MQuadTree &tree, Scene const &scene) {
    for (unsigned int key = 0; key < scene.rectangles.size(); ++key)
        tree.Insert(key, scene.rectangles[key]);
}

void CountItems(benchmark::State &state) {
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void QuadTreeInsert(benchmark::State &state) {
    Scene const &scene = SceneOf(state);
    std::unique_ptr<MQuadTree> tree;
    for (auto _ : state) {
        state.PauseTiming();
        tree = std::make_unique<MQuadTree>();
        state.ResumeTiming();
        Fill(*tree, scene);
    }
    if (tree->Exist(static_cast<unsigned int>(scene.rectangles.size() - 1)) == 0)
        state.SkipWithError("a rectangle is missing");
    CountItems(state);
}

void RTreeBulkBuild(benchmark::State &state) {
    Scene const &scene = SceneOf(state);
    std::unique_ptr<RTree> tree;
    for (auto _ : state) {
        state.PauseTiming();
        tree.reset();
        state.ResumeTiming();
        tree = std::make_unique<RTree>(ValuesOf(scene));
    }
    if (tree->size() != scene.rectangles.size())
        state.SkipWithError("a rectangle is missing");
    CountItems(state);
}

/// Hits that all queries of a scene have, by the peer.
std::size_t HitCount(Scene const &scene, RTree const &tree) {
    std::size_t hits = 0;
    std::vector<Value> found;
    for (MQuadMBR2D const &query : scene.queries) {
        found.clear();
        hits += tree.query(bg::index::intersects(BoxOf(query)), std::back_inserter(found));
    }
    return hits;
}

void QuadTreeQuery(benchmark::State &state) {
    Scene const &scene = SceneOf(state);
    MQuadTree tree;
    Fill(tree, scene);
    std::size_t hits = 0;
    for (auto _ : state) {
        hits = 0;
        for (MQuadMBR2D const &query : scene.queries) {
            zvi::MList<MQuadObj *> found;
            hits += static_cast<std::size_t>(tree.GetIntersectObjList(query, found, 0));
        }
    }
    // Rectangles within the touch tolerance of 1e-6 hit as well, which the peer leaves out.
    std::size_t const expected = HitCount(scene, RTree(ValuesOf(scene)));
    if (hits < expected || hits > expected + expected / 1000)
        state.SkipWithError("the hits are not those of the peer");
    CountItems(state);
}

void RTreeQuery(benchmark::State &state) {
    Scene const &scene = SceneOf(state);
    RTree const tree(ValuesOf(scene));
    std::size_t hits = 0;
    for (auto _ : state)
        hits = HitCount(scene, tree);
    if (hits < scene.queries.size())
        state.SkipWithError("too few hits");
    CountItems(state);
}

void QuadTreeDelete(benchmark::State &state) {
    Scene const &scene = SceneOf(state);
    int deleted = 0;
    for (auto _ : state) {
        state.PauseTiming();
        MQuadTree tree;
        Fill(tree, scene);
        state.ResumeTiming();
        deleted = 0;
        for (unsigned int const key : scene.shuffled)
            deleted += tree.Delete(key);
    }
    if (deleted != state.range(0))
        state.SkipWithError("a rectangle was not found");
    CountItems(state);
}

void RTreeDelete(benchmark::State &state) {
    Scene const &scene = SceneOf(state);
    std::vector<Value> const values = ValuesOf(scene);
    std::size_t deleted = 0;
    for (auto _ : state) {
        state.PauseTiming();
        RTree tree(values);
        state.ResumeTiming();
        deleted = 0;
        for (unsigned int const key : scene.shuffled)
            deleted += tree.remove(values[key]);
    }
    if (deleted != values.size())
        state.SkipWithError("a rectangle was not found");
    CountItems(state);
}

void Sizes(benchmark::internal::Benchmark *each) {
    each->Arg(100000)->Arg(1000000)->Unit(benchmark::kMillisecond);
}

BENCHMARK(QuadTreeInsert)->Apply(Sizes);
BENCHMARK(RTreeBulkBuild)->Apply(Sizes);
BENCHMARK(QuadTreeQuery)->Apply(Sizes);
BENCHMARK(RTreeQuery)->Apply(Sizes);
BENCHMARK(QuadTreeDelete)->Apply(Sizes);
BENCHMARK(RTreeDelete)->Apply(Sizes);

} // namespace
