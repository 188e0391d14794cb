#include "zvi/core/Utf8.h"

#include "zvi/core/WideUnits.h"

#include <algorithm>

namespace zvi::lib {

namespace {

constexpr std::uint32_t kLastCharacter = 0x10FFFF;
constexpr std::uint32_t kFirstBeyondBasicPlane = 0x10000;

/// The least character that needs so many bytes.
constexpr std::uint32_t kLeast[] = {0, 0, 0x80, 0x800, kFirstBeyondBasicPlane};

bool IsHighSurrogate(std::uint32_t unit) {
    return unit >= 0xD800 && unit < 0xDC00;
}

bool IsLowSurrogate(std::uint32_t unit) {
    return unit >= 0xDC00 && unit < 0xE000;
}

bool IsCharacter(std::uint32_t value) {
    return value <= kLastCharacter && !IsHighSurrogate(value) && !IsLowSurrogate(value);
}

/// A byte of a sequence behind its first one, with the lowest six bits of `bits`.
char Following(std::uint32_t bits) {
    return static_cast<char>(0x80 | (bits & 0x3F));
}

} // namespace

std::size_t Utf8Length(char lead) {
    auto const byte = static_cast<unsigned char>(lead);
    return byte >= 0xF0 && byte < 0xF8 ? 4 : byte >= 0xE0 && byte < 0xF0 ? 3 : byte >= 0xC0 && byte < 0xE0 ? 2 : 1;
}

std::size_t ReadUtf8(std::string_view text, std::uint32_t &character) {
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
    if (read < kLeast[length] || !IsCharacter(read))
        return 0;
    character = read;
    return length;
}

bool IsUtf8(std::string_view text) {
    while (!text.empty()) {
        std::uint32_t character = 0;
        std::size_t const length = ReadUtf8(text, character);
        if (length == 0)
            return false;
        text.remove_prefix(length);
    }
    return true;
}

void AppendUtf8(std::string &text, std::uint32_t character) {
    if (character < 0x80) {
        text += static_cast<char>(character);
    } else if (character < 0x800) {
        text += {static_cast<char>(0xC0 | character >> 6), Following(character)};
    } else if (character < kFirstBeyondBasicPlane) {
        text += {static_cast<char>(0xE0 | character >> 12), Following(character >> 6), Following(character)};
    } else {
        text += {static_cast<char>(0xF0 | character >> 18), Following(character >> 12), Following(character >> 6),
                 Following(character)};
    }
}

CString WideOf(std::string_view utf8) {
    std::wstring units;
    while (!utf8.empty()) {
        std::uint32_t character = 0;
        std::size_t const length = ReadUtf8(utf8, character);
        AppendUnits(units, length == 0 || character == 0 ? kReplacementCharacter : character);
        utf8.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return CString(std::wstring_view(units));
}

std::string Utf8Of(std::wstring_view text) {
    std::string utf8;
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto c = static_cast<std::uint32_t>(text[i]);
        if (IsHighSurrogate(c) && i + 1 < text.size() && IsLowSurrogate(static_cast<std::uint32_t>(text[i + 1])))
            c = kFirstBeyondBasicPlane + ((c - 0xD800) << 10) + (static_cast<std::uint32_t>(text[++i]) - 0xDC00);
        AppendUtf8(utf8, IsCharacter(c) ? c : static_cast<std::uint32_t>(kReplacementCharacter));
    }
    return utf8;
}

std::string Utf8Of(CString const &text) {
    return Utf8Of(std::wstring_view(text.GetString(), static_cast<std::size_t>(text.GetLength())));
}

} // namespace zvi::lib
