#include "apps/zvi/eval/hints/TypedText.h"

#include <regex>

namespace zvi::app {

std::size_t NextItem(std::wstring_view text, std::size_t at) {
    return text.find_first_not_of(L" \t", at);
}

std::size_t ItemBefore(std::wstring_view text, std::size_t at) {
    return at == 0 ? kNowhere : text.find_last_not_of(L" \t", at - 1);
}

std::vector<Span> Words(std::wstring const &text) {
    static std::wregex const numberOrName(
        L"(?:[0-9]+\\.?[0-9]*|\\.[0-9]+)(?:[eE][-+]?[0-9]+)?|([A-Za-z_][A-Za-z0-9_]*)");
    std::vector<Span> words;
    for (std::wsregex_iterator at(text.begin(), text.end(), numberOrName), end; at != end; ++at) {
        if ((*at)[1].matched)
            words.push_back({static_cast<std::size_t>(at->position()), static_cast<std::size_t>(at->length())});
    }
    return words;
}

std::vector<Span> Items(std::wstring_view line) {
    std::vector<Span> items;
    std::size_t begin = 0;
    int depth = 0;
    for (std::size_t i = 0; i <= line.size(); ++i) {
        if (i == line.size() || (line[i] == L',' && depth <= 0)) {
            items.push_back({begin, i - begin});
            begin = i + 1;
        } else {
            depth += line[i] == L'(' || line[i] == L'[' ? 1 : line[i] == L')' || line[i] == L']' ? -1 : 0;
        }
    }
    return items;
}

std::wstring_view Part(std::wstring_view text, Span const &span) {
    return text.substr(span.begin, span.length);
}

} // namespace zvi::app
