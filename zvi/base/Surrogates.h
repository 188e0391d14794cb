#pragma once

#include <cassert>
#include <cstdint>

namespace zvi::lib::base {

inline constexpr std::uint32_t kLastCharacter = 0x10FFFF;
/// First character that needs a surrogate pair.
inline constexpr std::uint32_t kFirstBeyondBasicPlane = 0x10000;

/// The two units of a pair hold the upper and the lower ten bits of what lies beyond the basic plane.
inline constexpr std::uint32_t kFirstHighSurrogate = 0xD800;
inline constexpr std::uint32_t kFirstLowSurrogate = 0xDC00;
inline constexpr std::uint32_t kFirstBehindSurrogates = 0xE000;
inline constexpr unsigned int kSurrogateBits = 10;
inline constexpr std::uint32_t kSurrogateMask = (1U << kSurrogateBits) - 1;

constexpr bool IsHighSurrogate(std::uint32_t unit) {
    return unit >= kFirstHighSurrogate && unit < kFirstLowSurrogate;
}

constexpr bool IsLowSurrogate(std::uint32_t unit) {
    return unit >= kFirstLowSurrogate && unit < kFirstBehindSurrogates;
}

/// Whether a character of Unicode has this value.
constexpr bool IsCharacter(std::uint32_t value) {
    return value <= kLastCharacter && !(value >= kFirstHighSurrogate && value < kFirstBehindSurrogates);
}

/// The units of a character beyond the basic plane, and the character of a pair.
constexpr std::uint32_t HighSurrogate(std::uint32_t character) {
    assert(character >= kFirstBeyondBasicPlane && character <= kLastCharacter);
    return kFirstHighSurrogate + ((character - kFirstBeyondBasicPlane) >> kSurrogateBits);
}
constexpr std::uint32_t LowSurrogate(std::uint32_t character) {
    assert(character >= kFirstBeyondBasicPlane && character <= kLastCharacter);
    return kFirstLowSurrogate + ((character - kFirstBeyondBasicPlane) & kSurrogateMask);
}
constexpr std::uint32_t CharacterOf(std::uint32_t high, std::uint32_t low) {
    assert(IsHighSurrogate(high) && IsLowSurrogate(low));
    return kFirstBeyondBasicPlane + ((high - kFirstHighSurrogate) << kSurrogateBits) + (low - kFirstLowSurrogate);
}

} // namespace zvi::lib::base
