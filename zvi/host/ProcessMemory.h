#pragma once

#include "zvi/Export.h"

#include <cstdint>

namespace zvi::host {

/// The number that the host knows this process by.
ZVI_API std::uint32_t CurrentProcessId();

/// Bytes of memory that a process occupies at this moment (its resident set); 0 when the host does not tell.
ZVI_API std::uint64_t ProcessMemory(std::uint32_t processId);

} // namespace zvi::host
