// The elementary functions beside those of the C library, which chooses its own by the processor; arguments of our use,
// and wide ones. The results are compared after each loop.

#include "zvi/math/elementary/Elementary.h"

#include <benchmark/benchmark.h>

#include <cmath>
#include <random>
#include <vector>

namespace {

constexpr unsigned kSeed = 20240607;
constexpr int kCount = 4096;
/// By how much the C library's result may differ, in parts of it.
constexpr double kTolerance = 1e-15;

using OfOne = double (*)(double);
using OfTwo = double (*)(double, double);

std::vector<double> Drawn(double from, double to, unsigned seed) {
    std::mt19937 random(seed);
    std::uniform_real_distribution<double> even(from, to);
    std::vector<double> drawn(kCount);
    for (double &x : drawn)
        x = even(random);
    return drawn;
}

template <typename Compute, typename Peer>
void Run(benchmark::State &state, Compute compute, Peer peer) {
    std::vector<double> results(kCount);
    for (auto _ : state) {
        for (std::size_t i = 0; i < kCount; ++i)
            results[i] = compute(i);
        benchmark::DoNotOptimize(results.data());
        benchmark::ClobberMemory();
    }
    for (std::size_t i = 0; i < kCount; ++i)
        if (!(std::fabs(results[i] - peer(i)) <= kTolerance * std::fabs(peer(i))))
            state.SkipWithError("the results differ");
    state.SetItemsProcessed(state.iterations() * kCount);
}

template <OfOne Function, OfOne Peer>
void BM_OfOne(benchmark::State &state) {
    std::vector<double> const x =
        Drawn(static_cast<double>(state.range(0)) / 1000.0, static_cast<double>(state.range(1)) / 1000.0, kSeed);
    Run(
        state, [&](std::size_t i) { return Function(x[i]); }, [&](std::size_t i) { return Peer(x[i]); });
}

template <OfTwo Function, OfTwo Peer>
void BM_OfTwo(benchmark::State &state) {
    std::vector<double> const x = Drawn(static_cast<double>(state.range(0)), static_cast<double>(state.range(1)),
                                        kSeed),
                              y = Drawn(-10.0, 10.0, kSeed + 1);
    Run(
        state, [&](std::size_t i) { return Function(x[i], y[i]); }, [&](std::size_t i) { return Peer(x[i], y[i]); });
}

double PeerHypot(double x, double y) {
    return std::hypot(x, y);
}

using OfThree = double (*)(double, double, double);

double PeerHypotInSpace(double x, double y, double z) {
    return std::hypot(x, y, z);
}

template <OfThree Function, OfThree Peer>
void BM_InSpace(benchmark::State &state) {
    std::vector<double> const x = Drawn(-10.0, 10.0, kSeed), y = Drawn(-10.0, 10.0, kSeed + 1),
                              z = Drawn(-10.0, 10.0, kSeed + 2);
    Run(
        state, [&](std::size_t i) { return Function(x[i], y[i], z[i]); },
        [&](std::size_t i) { return Peer(x[i], y[i], z[i]); });
}

// Ranges of one argument are in thousandths.
#define ZVI_BENCH_ONE(Ours, Theirs, ...)                                                                               \
    BENCHMARK(BM_OfOne<zvi::lib::Ours, ::Theirs>)->Name("BM_" #Ours "Zvi")->__VA_ARGS__;                               \
    BENCHMARK(BM_OfOne<::Theirs, zvi::lib::Ours>)->Name("BM_" #Ours "C")->__VA_ARGS__
#define ZVI_BENCH_TWO(Ours, Theirs, ...)                                                                               \
    BENCHMARK(BM_OfTwo<zvi::lib::Ours, Theirs>)->Name("BM_" #Ours "Zvi")->__VA_ARGS__;                                 \
    BENCHMARK(BM_OfTwo<Theirs, zvi::lib::Ours>)->Name("BM_" #Ours "C")->__VA_ARGS__

ZVI_BENCH_ONE(Sin, sin, Args({-10'000, 10'000})->Args({-1'000'000'000'000'000'000, 1'000'000'000'000'000'000}));
ZVI_BENCH_ONE(Cos, cos, Args({-10'000, 10'000})->Args({-1'000'000'000'000'000'000, 1'000'000'000'000'000'000}));
ZVI_BENCH_ONE(Tan, tan, Args({-10'000, 10'000})->Args({-1'000'000'000'000'000'000, 1'000'000'000'000'000'000}));
ZVI_BENCH_ONE(Asin, asin, Args({-1'000, 1'000})->Args({-10, 10})->Args({400, 800})->Args({990, 1'000}));
ZVI_BENCH_ONE(Acos, acos, Args({-1'000, 1'000})->Args({-10, 10})->Args({400, 800})->Args({990, 1'000}));
ZVI_BENCH_ONE(Atan, atan, Args({-1'000, 1'000})->Args({-1'000'000, 1'000'000}));
ZVI_BENCH_ONE(Exp, exp, Args({-10'000, 10'000})->Args({-700'000, 700'000}));
ZVI_BENCH_ONE(Log, log, Args({0, 10'000})->Args({900, 1'100})->Args({999, 1'001})->Args({0, 1'000'000'000'000}));
ZVI_BENCH_ONE(Log10, log10, Args({0, 10'000})->Args({0, 1'000'000'000'000}));
ZVI_BENCH_ONE(Sinh, sinh, Args({-300, 300})->Args({-10'000, 10'000})->Args({-700'000, 700'000}));
ZVI_BENCH_ONE(Cosh, cosh, Args({-10'000, 10'000})->Args({-700'000, 700'000}));
ZVI_BENCH_TWO(Pow, ::pow, Args({0, 100})->Args({0, 1'000'000'000}));
ZVI_BENCH_TWO(Atan2, ::atan2, Args({-10, 10})->Args({-1'000'000, 1'000'000}));
ZVI_BENCH_TWO(Hypot, PeerHypot, Args({-10, 10})->Args({-1'000'000, 1'000'000}));
BENCHMARK(BM_InSpace<zvi::lib::Hypot, PeerHypotInSpace>)->Name("BM_Hypot3Zvi")->Arg(10);
BENCHMARK(BM_InSpace<PeerHypotInSpace, zvi::lib::Hypot>)->Name("BM_Hypot3C")->Arg(10);

#undef ZVI_BENCH_ONE
#undef ZVI_BENCH_TWO

} // namespace
