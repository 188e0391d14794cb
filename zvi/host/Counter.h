#pragma once

#include "zvi/Export.h"

#include <cstdint>

namespace zvi::host {

/// The machine's high-resolution counter, in ticks since some moment before the process began. Never goes back; runs
/// on the same for all threads.
ZVI_API std::int64_t ReadCounter() noexcept;

/// Ticks of `ReadCounter` in a second, the same for the life of the process; 0 when there is no such counter.
ZVI_API std::int64_t CounterFrequency() noexcept;

} // namespace zvi::host
