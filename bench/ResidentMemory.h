#pragma once

#include <benchmark/benchmark.h>

#include <algorithm>
#include <fstream>
#include <string>

#if defined(__GLIBC__)
#include <malloc.h>
#endif

namespace zvi::bench {

/// Bytes of the process that are in memory, 0 where the machine does not tell.
inline double ResidentBytes() {
#if defined(__GLIBC__)
    malloc_trim(0);
#endif
    std::ifstream file("/proc/self/statm");
    double pages = 0.0;
    file >> pages >> pages;
    return pages * 4096.0;
}

/// Tells what the structure that `make` makes takes for each of the first argument's items. What was freed before may
/// serve it again, so that small structures can seem to take nothing.
template <typename Make>
void CountBytes(benchmark::State &state, Make make) {
    double const before = ResidentBytes();
    auto const made = make();
    benchmark::DoNotOptimize(made.get());
    state.counters["bytes"] = (ResidentBytes() - before) / static_cast<double>(state.range(0));
}

/// Bytes by which the process has grown at most while `run` ran, 0 where the machine does not tell.
template <typename Run>
double PeakBytesOf(Run run) {
    double const before = ResidentBytes();
    std::ofstream("/proc/self/clear_refs") << 5; // forgets the peak so far
    run();
    std::ifstream file("/proc/self/status");
    double kilobytes = 0.0;
    for (std::string word; file >> word;)
        if (word == "VmHWM:")
            file >> kilobytes;
    return std::max(0.0, 1024.0 * kilobytes - before);
}

} // namespace zvi::bench
