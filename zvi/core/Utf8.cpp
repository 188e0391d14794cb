#include "zvi/core/Utf8.h"

#include "zvi/base/Utf8Sequence.h"
#include "zvi/core/WideUnits.h"

#include <algorithm>
#include <utility>

namespace zvi::lib {

std::size_t Utf8Length(char lead) {
    return base::Utf8Length(lead);
}

std::size_t ReadUtf8(std::string_view text, std::uint32_t &character) {
    return text.empty() ? 0 : base::ReadUtf8(text, character);
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
    base::AppendUtf8(text, base::IsCharacter(character) ? character : std::uint32_t{kReplacementCharacter});
}

CString WideOf(std::string_view utf8) {
    std::wstring units;
    while (!utf8.empty()) {
        std::uint32_t character = 0;
        std::size_t const length = ReadUtf8(utf8, character);
        AppendUnits(units, length == 0 || character == 0 ? kReplacementCharacter : character);
        utf8.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return CString::OfUnits(std::move(units));
}

std::string Utf8Of(std::wstring_view text) {
    std::string utf8;
    for (std::size_t i = 0; i < text.size(); ++i) {
        auto c = static_cast<std::uint32_t>(text[i]);
        if (base::IsHighSurrogate(c) && i + 1 < text.size() &&
            base::IsLowSurrogate(static_cast<std::uint32_t>(text[i + 1])))
            c = base::CharacterOf(c, static_cast<std::uint32_t>(text[++i]));
        AppendUtf8(utf8, c);
    }
    return utf8;
}

std::string Utf8Of(CString const &text) {
    return Utf8Of(std::wstring_view(text.GetString(), static_cast<std::size_t>(text.GetLength())));
}

} // namespace zvi::lib
