#pragma once

#include "zvi/Export.h"

#include <cstdint>

namespace zvi::lib::core {

/// Bins of a table that holds nothing yet.
inline constexpr std::uint32_t kSmallestBinCount = 17;

/// A table never has this many bins or more: the heads alone would take 4 GiB.
inline constexpr std::uint32_t kBinCountLimit = 0x20000000U;

/// Elements per bin that a rehash aims at.
inline constexpr float kOptimalLoad = 0.75F;

/// Elements per bin below which a table shrinks.
inline constexpr float kLowFactor = 0.25F;

/// Elements per bin above which a table grows.
inline constexpr float kHighFactor = 2.25F;

/// Nodes that a table takes from memory at a time.
inline constexpr std::uint32_t kNodesPerBlock = 10;

/// The count above which a table of `binCount` bins grows.
constexpr std::uint64_t HighThreshold(std::uint32_t binCount, float highFactor) {
    return static_cast<std::uint64_t>(static_cast<float>(binCount) * highFactor);
}

/// The count below which a table of `binCount` bins shrinks; 0 instead of anything below the smallest bin count.
constexpr std::uint64_t LowThreshold(std::uint32_t binCount, float lowFactor) {
    auto const low = static_cast<std::uint64_t>(static_cast<float>(binCount) * lowFactor);
    return low < kSmallestBinCount ? 0 : low;
}

/// The bin count that `MHashMap` chooses for `count` elements at `optimalLoad` elements per bin: the first prime of its
/// table that is not below count / optimalLoad (32-bit float arithmetic), at least 17. A wish beyond the table is
/// answered as it is, at most 0xFFFFFFFF. The load is above 0.
ZVI_API std::uint32_t PickBinCount(std::uint64_t count, float optimalLoad);

} // namespace zvi::lib::core
