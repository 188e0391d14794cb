// MProfiler and ProfileWrite around nothing, beside what a user would write instead: a pair of std::chrono clock reads
// whose difference goes to a sum. MProfiler is measured as it ships, switched off, and switched on; ProfileWrite reads
// the clock four times.

#include "zvi/diagnostics/MProfiler.h"
#include "zvi/diagnostics/ProfileWrite.h"

#include <benchmark/benchmark.h>

#include <chrono>

namespace {

using zvi::lib::MProfileMgr;

void ClockPair(benchmark::State &state) {
    std::chrono::steady_clock::duration sum{};
    for (auto _ : state) {
        auto const start = std::chrono::steady_clock::now();
        benchmark::ClobberMemory();
        sum += std::chrono::steady_clock::now() - start;
        benchmark::DoNotOptimize(sum);
    }
}

void Profilers(benchmark::State &state, int isEnabled) {
    MProfileMgr::EnableProfilingST(isEnabled);
    for (auto _ : state) {
        zvi::lib::MProfiler const profiler(L"ProfilerBench.cpp", 1, L"a name of the usual length");
        benchmark::ClobberMemory();
    }
    MProfileMgr::EnableProfilingST(0);
    MProfileMgr::ClearProfileDataST();
}

void ProfilerDisabled(benchmark::State &state) {
    Profilers(state, 0);
}

void ProfilerEnabled(benchmark::State &state) {
    Profilers(state, 1);
}

/// Scopes inside one another, as deep as the argument says.
void NestedScopes(int depth) {
    zvi::lib::ProfileWrite const profile("a name of the usual length");
    benchmark::ClobberMemory();
    if (depth > 1)
        NestedScopes(depth - 1);
}

void ProfileWriteScopes(benchmark::State &state) {
    int const depth = static_cast<int>(state.range(0));
    for (auto _ : state)
        NestedScopes(depth);
    state.SetItemsProcessed(state.iterations() * depth);
}

BENCHMARK(ClockPair);
BENCHMARK(ProfilerDisabled);
BENCHMARK(ProfilerEnabled);
BENCHMARK(ProfileWriteScopes)->ArgName("depth")->Arg(1)->Arg(10)->Arg(100);

} // namespace
