#include "apps/zvi/common/WideText.h"

#include <cstdint>

namespace zvi::app {

namespace {

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
        if (c >= range.first && c <= range.last)
            return true;
    }
    return false;
}

} // namespace

std::wstring Printable(std::wstring_view text) {
    std::wstring shown(text);
    for (wchar_t &c : shown) {
        if (c == L'\t' || c == L'\n' || c == L'\r')
            c = L' ';
        else if (c < 0x20 || (c >= 0x7F && c < 0xA0))
            c = L'?';
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
