#include "apps/zvi/common/WideText.h"

#include "apps/zvi/common/Utf8.h"

#include "zvi/core/WideUnits.h"

#include <algorithm>
#include <cstdint>

namespace zvi::app {

namespace {

constexpr std::uint32_t kLastCharacter = 0x10FFFF;

bool IsHighSurrogate(std::uint32_t unit) {
    return unit >= 0xD800 && unit <= 0xDBFF;
}

bool IsLowSurrogate(std::uint32_t unit) {
    return unit >= 0xDC00 && unit <= 0xDFFF;
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

CString WideOf(std::string_view utf8) {
    std::wstring units;
    while (!utf8.empty()) {
        // The library's texts end at a NUL, which would take the rest of the text with it.
        std::uint32_t character = 0;
        std::size_t const length = ReadUtf8(utf8, character);
        lib::AppendUnits(units, length == 0 || character == 0 ? kReplacement : character);
        utf8.remove_prefix(std::max<std::size_t>(length, 1));
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
            c = kReplacement;
        }
        AppendUtf8(utf8, c);
    }
    return utf8;
}

std::string Utf8Of(CString const &text) {
    return Utf8Of(View(text));
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

std::wstring_view View(CString const &text) {
    return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

std::size_t Columns(std::string_view utf8) {
    return Columns(View(WideOf(utf8)));
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
