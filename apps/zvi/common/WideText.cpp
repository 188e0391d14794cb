#include "apps/zvi/common/WideText.h"

#include "zvi/core/WideUnits.h"

#include <cstdint>
#include <iterator>

namespace zvi::app {

namespace {

constexpr std::uint32_t kLastCharacter = 0x10FFFF;

bool IsHighSurrogate(std::uint32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLowSurrogate(std::uint32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
}

/// The character at `at`, which moves behind it; U+FFFD for a byte that begins none.
std::uint32_t NextCharacter(std::string_view text, std::size_t &at) {
    constexpr std::uint32_t kLeast[] = {0, 0, 0x80, 0x800, 0x10000};
    auto const lead = static_cast<unsigned char>(text[at++]);
    if (lead < 0x80) {
        return lead;
    }
    std::size_t const length = Utf8Length(static_cast<char>(lead));
    if (length == 1 || text.size() - at < length - 1) {
        return lib::kReplacementCharacter;
    }
    std::uint32_t character = lead & (0x7Fu >> length);
    for (std::size_t i = 0; i + 1 < length; ++i) {
        auto const next = static_cast<unsigned char>(text[at + i]);
        if ((next & 0xC0u) != 0x80u) {
            return lib::kReplacementCharacter;
        }
        character = character << 6 | (next & 0x3Fu);
    }
    bool const isSurrogate = IsHighSurrogate(character) || IsLowSurrogate(character);
    if (character < kLeast[length] || character > kLastCharacter || isSurrogate) {
        return lib::kReplacementCharacter;
    }
    at += length - 1;
    return character;
}

void AppendUtf8(std::string &text, std::uint32_t c) {
    auto const push = [&text](std::uint32_t byte) { text += static_cast<char>(byte); };
    if (c < 0x80) {
        push(c);
    } else if (c < 0x800) {
        push(0xC0 | c >> 6);
        push(0x80 | (c & 0x3F));
    } else if (c < 0x10000) {
        push(0xE0 | c >> 12);
        push(0x80 | (c >> 6 & 0x3F));
        push(0x80 | (c & 0x3F));
    } else {
        push(0xF0 | c >> 18);
        push(0x80 | (c >> 12 & 0x3F));
        push(0x80 | (c >> 6 & 0x3F));
        push(0x80 | (c & 0x3F));
    }
}

struct Range {
    std::uint32_t first;
    std::uint32_t last;
};

/// Characters that take two columns (East Asian Width W and F, the large blocks of them).
constexpr Range kWide[] = {{0x1100, 0x115F}, {0x2E80, 0x303E}, {0x3041, 0xA4CF}, {0xAC00, 0xD7A3}, {0xF900, 0xFAFF},
                           {0xFE30, 0xFE6F}, {0xFF00, 0xFF60}, {0xFFE0, 0xFFE6}, {0xD83C, 0xD83E}};
/// Characters that stand on the one before: combining marks, joiners, and the second half of a surrogate pair.
constexpr Range kNoColumn[] = {
    {0x0300, 0x036F}, {0x200B, 0x200F}, {0x20D0, 0x20FF}, {0xDC00, 0xDFFF}, {0xFE00, 0xFE0F}};

template <std::size_t count>
bool Holds(Range const (&ranges)[count], std::uint32_t c) {
    for (Range const &range : ranges) {
        if (c >= range.first && c <= range.last) {
            return true;
        }
    }
    return false;
}

} // namespace

std::size_t Utf8Length(char lead) {
    auto const byte = static_cast<unsigned char>(lead);
    return byte >= 0xF0 && byte < 0xF8 ? 4 : byte >= 0xE0 && byte < 0xF0 ? 3 : byte >= 0xC0 && byte < 0xE0 ? 2 : 1;
}

CString WideOf(std::string_view utf8) {
    std::wstring units;
    for (std::size_t at = 0; at < utf8.size();) {
        lib::AppendUnits(units, NextCharacter(utf8, at));
    }
    return CString(std::wstring_view(units));
}

std::string Utf8Of(std::wstring_view text) {
    std::string utf8;
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto c = static_cast<std::uint32_t>(text[i]);
        if (IsHighSurrogate(c) && i + 1 < text.size() && IsLowSurrogate(static_cast<std::uint32_t>(text[i + 1]))) {
            c = 0x10000 + ((c - 0xD800) << 10) + (static_cast<std::uint32_t>(text[++i]) - 0xDC00);
        } else if (IsHighSurrogate(c) || IsLowSurrogate(c) || c > kLastCharacter) {
            c = lib::kReplacementCharacter;
        }
        AppendUtf8(utf8, c);
    }
    return utf8;
}

std::string Utf8Of(CString const &text) {
    return Utf8Of(std::wstring_view(text.GetString(), static_cast<std::size_t>(text.GetLength())));
}

std::wstring Printable(std::wstring_view text) {
    std::wstring shown(text);
    for (wchar_t &c : shown) {
        if (c == L'\t' || c == L'\n' || c == L'\r') {
            c = L' ';
        } else if (c < 0x20 || (c >= 0x7F && c < 0xA0)) {
            c = L'?';
        }
    }
    return shown;
}

std::size_t Columns(std::wstring_view text) {
    std::size_t columns = 0;
    for (wchar_t const unit : text) {
        auto const c = static_cast<std::uint32_t>(unit);
        columns += Holds(kNoColumn, c) ? 0u : Holds(kWide, c) ? 2u : 1u;
    }
    return columns;
}

} // namespace zvi::app
