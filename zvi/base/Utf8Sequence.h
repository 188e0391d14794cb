#pragma once

#include "zvi/base/Surrogates.h"

#include <cassert>
#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zvi::lib::base {

/// Bytes of the UTF-8 character that begins with this byte; 1 for a byte that begins none.
constexpr std::size_t Utf8Length(char lead) {
    auto const byte = static_cast<unsigned char>(lead);
    return byte >= 0xF0 && byte < 0xF8 ? 4 : byte >= 0xE0 && byte < 0xF0 ? 3 : byte >= 0xC0 && byte < 0xE0 ? 2 : 1;
}

/// The least character that needs so many bytes.
inline constexpr std::uint32_t kLeastOfLength[] = {0, 0, 0x80, 0x800, kFirstBeyondBasicPlane};

/// Reads the character at the start of `text`, which must not be empty, and gives the number of its bytes; 0, with
/// `character` as it was, where no well-formed one stands.
constexpr std::size_t ReadUtf8(std::string_view text, std::uint32_t &character) {
    assert(!text.empty());
    std::uint32_t const lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80) {
        character = lead;
        return 1;
    }
    std::size_t const length = Utf8Length(text[0]);
    if (length == 1 || text.size() < length)
        return 0;
    std::uint32_t read = lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        std::uint32_t const next = static_cast<unsigned char>(text[i]);
        if ((next & 0xC0u) != 0x80u)
            return 0;
        read = read << 6 | (next & 0x3Fu);
    }
    if (read < kLeastOfLength[length] || !IsCharacter(read))
        return 0;
    character = read;
    return length;
}

/// A byte of a sequence behind its first one, with the lowest six bits of `bits`.
constexpr char FollowingUtf8(std::uint32_t bits) {
    return static_cast<char>(0x80 | (bits & 0x3F));
}

/// Appends a character of Unicode as UTF-8.
inline void AppendUtf8(std::string &text, std::uint32_t character) {
    assert(IsCharacter(character));
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += {static_cast<char>(0xC0 | character >> 6), FollowingUtf8(character)};
    } else if (character < kFirstBeyondBasicPlane) {
        text += {static_cast<char>(0xE0 | character >> 12), FollowingUtf8(character >> 6), FollowingUtf8(character)};
    } else {
        text += {static_cast<char>(0xF0 | character >> 18), FollowingUtf8(character >> 12),
                 FollowingUtf8(character >> 6), FollowingUtf8(character)};
    }
}

} // namespace zvi::lib::base
