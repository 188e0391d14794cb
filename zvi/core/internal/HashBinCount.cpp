#include "zvi/core/internal/HashBinCount.h"

#include <algorithm>
#include <cassert>
#include <iterator>

namespace zvi::lib::core {

namespace {

/// Ends the table: no bin count is above it.
constexpr std::uint32_t kEndOfTable = 0xFFFFFFFFU;

/// Primes about a fourth apart.
constexpr std::uint32_t kBinCounts[] = {
    17,      23,      29,      37,       41,       53,          67,      83,      103,     131,     163,
    211,     257,     331,     409,      521,      647,         821,     1031,    1291,    1627,    2053,
    2591,    3251,    4099,    5167,     6521,     8209,        10331,   13007,   16411,   20663,   26017,
    32771,   41299,   52021,   65537,    82571,    104033,      131101,  165161,  208067,  262147,  330287,
    416147,  524309,  660563,  832291,   1048583,  1321139,     1664543, 2097169, 2642257, 3329023, 4194319,
    5284493, 6658049, 8388617, 10568993, 13316089, kEndOfTable,
};

/// 2^32 as a float; a wish of this size or more is clamped.
constexpr float kTwoTo32 = 4294967296.0F;

} // namespace

std::uint32_t PickBinCount(std::uint64_t count, float optimalLoad) {
    assert(optimalLoad > 0.0F);
    float const quotient = static_cast<float>(count) / optimalLoad;
    std::uint32_t const wish = quotient >= kTwoTo32 ? kEndOfTable : static_cast<std::uint32_t>(quotient);
    if (wish <= kSmallestBinCount)
        return kSmallestBinCount;
    std::uint32_t const found = *std::lower_bound(std::begin(kBinCounts) + 1, std::end(kBinCounts), wish);
    return found == kEndOfTable ? wish : found;
}

} // namespace zvi::lib::core
