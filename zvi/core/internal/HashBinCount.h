#pragma once

#include "zvi/Export.h"

#include <cstdint>

namespace zvi::lib::core {

/// Bins of a table that holds nothing yet.
inline constexpr std::uint32_t kSmallestBinCount = 17;

/// A table never has this many bins or more: the heads alone would take 4 GiB.
inline constexpr std::uint32_t kBinCountLimit = 0x20000000U;

/// The bin count that `MHashMap` chooses for `count` elements at `optimalLoad` elements per bin: the first prime of its
/// table that is not below count / optimalLoad (32-bit float arithmetic), at least 17. A wish beyond the table is
/// answered as it is, at most 0xFFFFFFFF.
ZVI_API std::uint32_t PickBinCount(std::uint64_t count, float optimalLoad);

} // namespace zvi::lib::core
