#pragma once

#include <bit>
#include <cstdint>

namespace zvi::lib::base {

/// Takes one more value into a hash that begins at 0. Multiplying by 2^64 over the golden ratio spreads it upwards
/// (Knuth, The Art of Computer Programming, vol. 3, 6.4), so the high half is the better one: see `HighHalf`.
constexpr std::uint64_t Mix(std::uint64_t hash, std::uint64_t value) {
    return (hash ^ (hash >> 32) ^ value) * 0x9E3779B97F4A7C15u;
}

constexpr std::uint32_t HighHalf(std::uint64_t hash) {
    return static_cast<std::uint32_t>(hash >> 32);
}

/// The bits of a number as a value to mix; both zeros have the same.
constexpr std::uint64_t BitsOf(double number) {
    return std::bit_cast<std::uint64_t>(number + 0.0);
}

} // namespace zvi::lib::base
