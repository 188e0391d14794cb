#include "zvi/text/MessageLine.h"

#include "zvi/core/WideUnits.h"

#include <algorithm>
#include <cstddef>
#include <string_view>

namespace zvi::lib {

namespace {

constexpr wchar_t kComment = L';';
constexpr wchar_t kDefines = L'=';
constexpr wchar_t kQuote = L'"';
constexpr std::wstring_view kCommentBeforeKey = L"/**/";

struct Escape {
    wchar_t const *written;
    wchar_t const *meant;
};

/// In the order in which they are replaced.
constexpr Escape kEscapes[] = {{L"\\n", L"\n"}, {L"\\t", L"\t"}, {L"\\r", L"\r"}, {L"\"\"", L"\""}, {L"\\\\", L"\\"}};

std::wstring_view Trimmed(std::wstring_view text) {
    while (!text.empty() && IsBlankUnit(text.front()))
        text.remove_prefix(1);
    while (!text.empty() && IsBlankUnit(text.back()))
        text.remove_suffix(1);
    return text;
}

/// `count` units from `first` on; a count below 1 is none.
std::wstring_view Part(std::wstring_view text, std::size_t first, std::ptrdiff_t count) {
    return count > 0 ? text.substr(std::min(first, text.size()), static_cast<std::size_t>(count)) : std::wstring_view();
}

/// The last `count` units, or all there are; a count below 1 is none.
std::wstring_view RightPart(std::wstring_view text, std::ptrdiff_t count) {
    auto const size = static_cast<std::ptrdiff_t>(text.size());
    return count >= size ? text
                         : Part(text, static_cast<std::size_t>(size - std::max<std::ptrdiff_t>(count, 0)), count);
}

std::wstring_view KeyOf(std::wstring_view line) {
    std::size_t const end = line.find(kDefines);
    std::wstring_view const head = end == std::wstring_view::npos ? std::wstring_view() : line.substr(0, end);
    std::size_t const comment = head.find(kCommentBeforeKey);
    return Trimmed(comment == std::wstring_view::npos ? head : head.substr(comment + kCommentBeforeKey.size()));
}

/// As it is written.
std::wstring_view TextOf(std::wstring_view line, std::wstring_view key) {
    std::wstring_view const rest =
        RightPart(line, static_cast<std::ptrdiff_t>(line.size()) - static_cast<std::ptrdiff_t>(key.size()) - 1);
    std::size_t const quote = rest.find(kQuote);
    std::size_t const first = quote == std::wstring_view::npos ? 0 : quote + 1;
    return Part(rest, first, static_cast<std::ptrdiff_t>(rest.size()) - static_cast<std::ptrdiff_t>(first) - 1);
}

} // namespace

bool ParseMessageLine(CString const &line, MessageEntry &entry) {
    std::wstring_view const trimmed =
        Trimmed(std::wstring_view(line.GetString(), static_cast<std::size_t>(line.GetLength())));
    if (trimmed.empty() || trimmed.front() == kComment)
        return false;
    std::wstring_view const key = KeyOf(trimmed);
    std::wstring_view const text = TextOf(trimmed, key);
    entry.key = CString(key);
    entry.text = CString(text);
    if (text.find_first_of(L"\\\"") != std::wstring_view::npos)
        for (Escape const &escape : kEscapes)
            entry.text.Replace(escape.written, escape.meant);
    return true;
}

} // namespace zvi::lib
