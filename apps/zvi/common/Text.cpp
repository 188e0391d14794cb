#include "apps/zvi/common/Text.h"

#include <algorithm>
#include <cassert>
#include <iterator>

namespace zvi::app {

namespace {

char LowerAscii(char c) {
    return c >= 'A' && c <= 'Z' ? static_cast<char>(c - 'A' + 'a') : c;
}

} // namespace

std::string_view Trimmed(std::string_view text) {
    constexpr std::string_view kBlanks = " \t\r\n\v\f";
    std::size_t const first = text.find_first_not_of(kBlanks);
    if (first == std::string_view::npos)
        return {};
    return text.substr(first, text.find_last_not_of(kBlanks) - first + 1);
}

std::string Lowered(std::string_view text) {
    std::string lowered(text);
    std::transform(lowered.begin(), lowered.end(), lowered.begin(), LowerAscii);
    return lowered;
}

bool SameNoCase(std::string_view a, std::string_view b) {
    return std::equal(a.begin(), a.end(), b.begin(), b.end(),
                      [](char x, char y) { return LowerAscii(x) == LowerAscii(y); });
}

void ReplaceAll(std::string &text, std::string_view word, std::string_view other) {
    assert(!word.empty());
    for (std::size_t at = text.find(word); at != std::string::npos; at = text.find(word, at + other.size()))
        text.replace(at, word.size(), other);
}

std::string_view WithoutUtf8Mark(std::string_view text) {
    constexpr std::string_view kMark = "\xEF\xBB\xBF";
    return text.starts_with(kMark) ? text.substr(kMark.size()) : text;
}

std::string AllOf(std::istream &stream) {
    return {std::istreambuf_iterator<char>(stream), std::istreambuf_iterator<char>()};
}

} // namespace zvi::app
