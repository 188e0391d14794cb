// MArray beside std::vector, MHashMap beside std::unordered_map, MFixedSizeMemMgr beside boost::pool.

#include "zvi/core/MArray.h"
#include "zvi/core/MFixedSizeMemMgr.h"
#include "zvi/core/MHashMap.h"

#include <benchmark/benchmark.h>

#include <boost/pool/pool.hpp>

#include <algorithm>
#include <cstdint>
#include <numeric>
#include <random>
#include <unordered_map>
#include <vector>

namespace {

constexpr unsigned int kSeed = 1100;

/// A point of a drawing, the usual element of the arrays.
struct Point {
    double x;
    double y;
    double z;
};

void Push(zvi::MArray<Point> &array, Point const &point) {
    array.PushBack(point);
}
void Push(std::vector<Point> &array, Point const &point) {
    array.push_back(point);
}
std::size_t SizeOf(zvi::MArray<Point> const &array) {
    return array.Size();
}
std::size_t SizeOf(std::vector<Point> const &array) {
    return array.size();
}

/// Appends points one by one to an empty array.
template <typename Array>
void AppendPoints(benchmark::State &state) {
    double last = 0.0;
    for (auto _ : state) {
        Array array;
        for (std::int64_t i = 0; i < state.range(0); ++i)
            Push(array, Point{static_cast<double>(i), 1.0, 2.0});
        last = array[SizeOf(array) - 1].x;
        benchmark::DoNotOptimize(array);
    }
    if (last != static_cast<double>(state.range(0) - 1))
        state.SkipWithError("the last point is lost");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(AppendPoints<zvi::MArray<Point>>)->RangeMultiplier(10)->Range(10, 1000000);
BENCHMARK(AppendPoints<std::vector<Point>>)->RangeMultiplier(10)->Range(10, 1000000);

/// The numbers 0 .. count - 1, shuffled or in order, times a stride.
std::vector<int> MakeKeys(std::int64_t count, bool shuffled) {
    std::vector<int> keys(static_cast<std::size_t>(count));
    std::iota(keys.begin(), keys.end(), 0);
    if (shuffled)
        std::shuffle(keys.begin(), keys.end(), std::mt19937(kSeed));
    return keys;
}

void Store(zvi::MHashMap<int, int> &map, int key, int value) {
    map.SetAt(key, value);
}
void Store(std::unordered_map<int, int> &map, int key, int value) {
    map[key] = value;
}
int const *Find(zvi::MHashMap<int, int> const &map, int key) {
    return map.Lookup(key);
}
int const *Find(std::unordered_map<int, int> const &map, int key) {
    auto const found = map.find(key);
    return found == map.end() ? nullptr : &found->second;
}
void Remove(zvi::MHashMap<int, int> &map, int key) {
    map.RemoveKey(key);
}
void Remove(std::unordered_map<int, int> &map, int key) {
    map.erase(key);
}

/// Stores shuffled keys in an empty map, and drops the map.
template <typename Map>
void FillMap(benchmark::State &state) {
    std::vector<int> const keys = MakeKeys(state.range(0), true);
    bool complete = true;
    for (auto _ : state) {
        Map map;
        for (int const key : keys)
            Store(map, key, key + 1);
        complete = complete && Find(map, keys.back()) != nullptr;
    }
    if (!complete)
        state.SkipWithError("a key is lost");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

/// Looks every key up, shuffled, and as many that are absent.
template <typename Map>
void LookUp(benchmark::State &state) {
    Map map;
    for (int const key : MakeKeys(state.range(0), false))
        Store(map, key, key + 1);
    std::vector<int> const keys = MakeKeys(2 * state.range(0), true);
    std::int64_t sum = 0;
    for (auto _ : state) {
        sum = 0;
        for (int const key : keys) {
            int const *const value = Find(map, key);
            sum += value == nullptr ? 0 : *value;
        }
        benchmark::DoNotOptimize(sum);
    }
    if (sum != state.range(0) * (state.range(0) + 1) / 2)
        state.SkipWithError("the sum of the values is wrong");
    state.SetItemsProcessed(state.iterations() * 2 * state.range(0));
}

/// Keeps a map at its size while keys come and go.
template <typename Map>
void Churn(benchmark::State &state) {
    std::vector<int> const keys = MakeKeys(2 * state.range(0), true);
    std::size_t const half = keys.size() / 2;
    Map map;
    for (std::size_t i = 0; i < half; ++i)
        Store(map, keys[i], 1);
    for (auto _ : state) {
        for (std::size_t i = 0; i < keys.size(); ++i) {
            Remove(map, keys[i]);
            Store(map, keys[(i + half) % keys.size()], 1);
        }
    }
    if (Find(map, keys[0]) == nullptr || Find(map, keys[half]) != nullptr)
        state.SkipWithError("the wrong keys are left");
    state.SetItemsProcessed(state.iterations() * 2 * state.range(0));
}

BENCHMARK(FillMap<zvi::MHashMap<int, int>>)->RangeMultiplier(10)->Range(10, 1000000);
BENCHMARK(FillMap<std::unordered_map<int, int>>)->RangeMultiplier(10)->Range(10, 1000000);
BENCHMARK(LookUp<zvi::MHashMap<int, int>>)->RangeMultiplier(10)->Range(10, 1000000);
BENCHMARK(LookUp<std::unordered_map<int, int>>)->RangeMultiplier(10)->Range(10, 1000000);
BENCHMARK(Churn<zvi::MHashMap<int, int>>)->RangeMultiplier(10)->Range(10, 1000000);
BENCHMARK(Churn<std::unordered_map<int, int>>)->RangeMultiplier(10)->Range(10, 1000000);

/// Bytes of an item, and of a chunk, of the pools; the items of a grid of points.
constexpr int kItemSize = 16;
constexpr long kChunkSize = 0xFA000;

struct OwnPool {
    zvi::MFixedSizeMemMgr pool{kItemSize, kChunkSize};
    void *Take() { return pool.Alloc(); }
    void GiveBack(void *item) { pool.Free(item); }
};
struct BoostPool {
    boost::pool<> pool{kItemSize, kChunkSize / kItemSize, kChunkSize / kItemSize};
    void *Take() { return pool.malloc(); }
    void GiveBack(void *item) { pool.free(item); }
};
struct GeneralAllocator {
    void *Take() { return ::operator new(kItemSize); }
    void GiveBack(void *item) { ::operator delete(item); }
};

/// Takes items and writes to them, gives every second one back, takes as many again, and gives all back.
template <typename Pool>
void UsePool(benchmark::State &state) {
    std::vector<std::uint64_t *> items(static_cast<std::size_t>(state.range(0)));
    std::uint64_t sum = 0;
    for (auto _ : state) {
        Pool pool;
        for (std::size_t i = 0; i < items.size(); ++i)
            *(items[i] = static_cast<std::uint64_t *>(pool.Take())) = i;
        for (std::size_t i = 0; i < items.size(); i += 2)
            pool.GiveBack(items[i]);
        for (std::size_t i = 0; i < items.size(); i += 2)
            *(items[i] = static_cast<std::uint64_t *>(pool.Take())) = i;
        sum = 0;
        for (std::uint64_t *const item : items)
            sum += *item;
        for (std::uint64_t *const item : items)
            pool.GiveBack(item);
    }
    auto const count = static_cast<std::uint64_t>(state.range(0));
    if (sum != count * (count - 1) / 2)
        state.SkipWithError("two items overlap");
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

BENCHMARK(UsePool<OwnPool>)->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK(UsePool<BoostPool>)->RangeMultiplier(10)->Range(1000, 1000000);
BENCHMARK(UsePool<GeneralAllocator>)->RangeMultiplier(10)->Range(1000, 1000000);

} // namespace
