#pragma once

#include <cstdint>

namespace zvi::lib::spatial {

/// A word with a 28-bit signed type in its low bits and a 4-bit status above them. `SetType` of objects keeps the
/// status.
constexpr std::uint32_t WithType(std::uint32_t word, int type) {
    constexpr std::uint32_t kTypeMask = 0x0fffffff;
    return (word & ~kTypeMask) | (static_cast<std::uint32_t>(type) & kTypeMask);
}

/// The type, from -2^27 to 2^27 - 1.
constexpr int TypeOf(std::uint32_t word) {
    constexpr int kStatusBits = 4;
    return static_cast<std::int32_t>(word << kStatusBits) >> kStatusBits;
}

constexpr std::uint32_t StatusOf(std::uint32_t word) {
    return word >> 28;
}

} // namespace zvi::lib::spatial
