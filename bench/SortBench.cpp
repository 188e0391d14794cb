// MQSort::QSortDblWithIndex beside std::sort and std::stable_sort on pairs of key and index.
// Keys: evenly spread over +-1000; whole numbers with many ties; a narrow band with one outlier in a thousand. Every
// iteration sorts new keys: a processor learns the branches of a few thousand comparisons by heart when they come
// again. MQSort::QSortStringNumWithIndex beside qsort with strverscmp, which orders names by their numbers, too.

#include "zvi/core/MQSort.h"
#include "zvi/core/Utf8.h"

#include <benchmark/benchmark.h>

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <iterator>
#include <numeric>
#include <random>
#include <string>
#include <utility>
#include <vector>

namespace {

constexpr unsigned int kSeed = 1500;

enum KeyKind { kSpread, kTies, kOutliers };

struct Arrays {
    std::vector<int> index;
    std::vector<double> key;
};

Arrays MakeArrays(std::mt19937_64 &random, std::int64_t count, std::int64_t kind) {
    std::uniform_real_distribution<double> spread(-1000.0, 1000.0);
    Arrays arrays;
    for (int i = 0; i < count; ++i) {
        double const value = spread(random);
        arrays.index.push_back(i);
        if (kind == kTies)
            arrays.key.push_back(std::floor(value));
        else if (kind == kOutliers && random() % 1000 != 0)
            arrays.key.push_back(1.0 + value * 1e-12);
        else
            arrays.key.push_back(value);
    }
    return arrays;
}

/// The result of the sort must be ordered by key, and by index where keys are equal.
void CheckOrder(benchmark::State &state, Arrays const &arrays) {
    for (std::size_t i = 1; i < arrays.key.size(); ++i) {
        if (std::pair(arrays.key[i], arrays.index[i]) < std::pair(arrays.key[i - 1], arrays.index[i - 1])) {
            state.SkipWithError("the result is not in order");
            return;
        }
    }
}

void QSortDblWithIndex(benchmark::State &state) {
    std::mt19937_64 random(kSeed);
    Arrays sorted;
    for (auto _ : state) {
        state.PauseTiming();
        sorted = MakeArrays(random, state.range(0), state.range(1));
        state.ResumeTiming();
        zvi::lib::MQSort::QSortDblWithIndex(sorted.index.data(), sorted.key.data(), sorted.key.size());
        benchmark::ClobberMemory();
    }
    CheckOrder(state, sorted);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

template <typename Sort>
void SortPairs(benchmark::State &state, Sort sort) {
    std::mt19937_64 random(kSeed);
    std::vector<std::pair<double, int>> pairs(static_cast<std::size_t>(state.range(0)));
    for (auto _ : state) {
        state.PauseTiming();
        Arrays const input = MakeArrays(random, state.range(0), state.range(1));
        for (std::size_t i = 0; i < pairs.size(); ++i)
            pairs[i] = {input.key[i], input.index[i]};
        state.ResumeTiming();
        sort(pairs);
        benchmark::ClobberMemory();
    }
    Arrays sorted;
    for (auto const &[key, index] : pairs) {
        sorted.key.push_back(key);
        sorted.index.push_back(index);
    }
    CheckOrder(state, sorted);
    state.SetItemsProcessed(state.iterations() * state.range(0));
}

void StdSortPairs(benchmark::State &state) {
    SortPairs(state, [](auto &pairs) { std::sort(pairs.begin(), pairs.end()); });
}

void StdStableSortPairs(benchmark::State &state) {
    SortPairs(state, [](auto &pairs) {
        std::stable_sort(pairs.begin(), pairs.end(), [](auto const &a, auto const &b) { return a.first < b.first; });
    });
}

void Sizes(benchmark::internal::Benchmark *benchmark) {
    benchmark->ArgNames({"count", "kind"})->Unit(benchmark::kMicrosecond);
    for (int const kind : {kSpread, kTies, kOutliers}) {
        for (int const count : {30, 100, 300, 1000, 10000, 100000, 1000000})
            benchmark->Args({count, kind});
    }
}

BENCHMARK(QSortDblWithIndex)->Apply(Sizes);
BENCHMARK(StdSortPairs)->Apply(Sizes);
BENCHMARK(StdStableSortPairs)->Apply(Sizes);

/// Names as engineers give them: a few prefixes, a number behind each, now and then with zeros in front.
std::vector<std::string> MakeNames(std::int64_t count) {
    constexpr char const *kPrefixes[] = {"Beam", "Column", "B", "Slab-", "Wall_"};
    std::mt19937 random(kSeed);
    std::vector<std::string> names;
    for (int i = 0; i < count; ++i) {
        std::string name = kPrefixes[random() % std::size(kPrefixes)];
        name += random() % 10 == 0 ? "00" : "";
        names.push_back(name + std::to_string(random() % 100000));
    }
    return names;
}

void QSortStringNumWithIndex(benchmark::State &state) {
    std::vector<CString> names;
    for (std::string const &name : MakeNames(state.range(0)))
        names.push_back(zvi::lib::WideOf(name));
    std::vector<CString> sorted;
    std::vector<unsigned int> index(names.size());
    for (auto _ : state) {
        state.PauseTiming();
        sorted = names;
        std::iota(index.begin(), index.end(), 0U);
        state.ResumeTiming();
        zvi::lib::MQSort::QSortStringNumWithIndex(index.data(), sorted.data(), sorted.size());
        benchmark::ClobberMemory();
    }
    for (std::size_t i = 0; i < index.size(); ++i) {
        if (names[index[i]] != sorted[i])
            state.SkipWithError("the index does not follow the names");
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(QSortStringNumWithIndex)->Arg(2000)->Arg(200000)->Unit(benchmark::kMicrosecond);

#if defined(__GLIBC__)
void QSortStrverscmp(benchmark::State &state) {
    std::vector<std::string> const names = MakeNames(state.range(0));
    std::vector<char const *> sorted(names.size());
    for (auto _ : state) {
        state.PauseTiming();
        std::transform(names.begin(), names.end(), sorted.begin(),
                       [](std::string const &name) { return name.c_str(); });
        state.ResumeTiming();
        std::qsort(sorted.data(), sorted.size(), sizeof sorted[0], [](void const *left, void const *right) {
            return strverscmp(*static_cast<char const *const *>(left), *static_cast<char const *const *>(right));
        });
        benchmark::ClobberMemory();
    }
    state.SetItemsProcessed(state.iterations() * state.range(0));
}
BENCHMARK(QSortStrverscmp)->Arg(2000)->Arg(200000)->Unit(benchmark::kMicrosecond);
#endif

} // namespace
