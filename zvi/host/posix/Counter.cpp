#include "zvi/host/Counter.h"

#include <time.h>

namespace zvi::host {

namespace {

/// The clock counts nanoseconds.
constexpr std::int64_t kTicksPerSecond = 1000000000;

} // namespace

std::int64_t ReadCounter() noexcept {
    timespec now{};
    ::clock_gettime(CLOCK_MONOTONIC, &now);
    return now.tv_sec * kTicksPerSecond + now.tv_nsec;
}

std::int64_t CounterFrequency() noexcept {
    timespec resolution{};
    return ::clock_getres(CLOCK_MONOTONIC, &resolution) == 0 ? kTicksPerSecond : 0;
}

} // namespace zvi::host
