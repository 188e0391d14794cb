#include "apps/zvi/eval/hints/TypedText.h"

#include "apps/zvi/common/Characters.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/common/WideText.h"

namespace zvi::app {

namespace {

template <class IsPart>
std::size_t EndOf(std::wstring_view text, std::size_t at, IsPart isPart) {
    while (at < text.size() && isPart(text[at]))
        ++at;
    return at;
}

} // namespace

bool IsOperator(wchar_t c) {
    return c != 0 && std::wstring_view(L"+-*/^@<").find(c) != kNowhere;
}

std::size_t EndOfDigits(std::wstring_view text, std::size_t at) {
    return EndOf(text, at, IsDigit);
}

std::size_t EndOfName(std::wstring_view text, std::size_t at) {
    return EndOf(text, at, IsNameChar);
}

std::size_t EndOfNumber(std::wstring_view text, std::size_t at) {
    std::size_t end = EndOfDigits(text, at);
    bool const whole = end > at;
    if (end < text.size() && text[end] == L'.' && (whole || EndOfDigits(text, end + 1) > end + 1))
        end = EndOfDigits(text, end + 1);
    if (end == at || end >= text.size() || (text[end] != L'E' && text[end] != L'e'))
        return end;
    std::size_t exponent = end + 1;
    exponent += exponent < text.size() && (text[exponent] == L'+' || text[exponent] == L'-');
    std::size_t const exponentEnd = EndOfDigits(text, exponent);
    return exponentEnd > exponent ? exponentEnd : end;
}

std::size_t NextItem(std::wstring_view text, std::size_t at) {
    return text.find_first_not_of(L" \t", at);
}

std::size_t ItemBefore(std::wstring_view text, std::size_t at) {
    return at == 0 ? kNowhere : text.find_last_not_of(L" \t", at - 1);
}

std::vector<Span> Words(std::wstring_view text) {
    std::vector<Span> words;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = EndOfNumber(text, at);
        if (end == at && IsLetter(text[at])) {
            end = EndOfName(text, at);
            words.push_back({at, end - at});
        }
        at = end == at ? at + 1 : end;
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

std::wstring Upper(std::wstring_view text) {
    std::wstring upper(text);
    for (wchar_t &c : upper)
        c = c >= L'a' && c <= L'z' ? static_cast<wchar_t>(c - L'a' + L'A') : c;
    return upper;
}

std::string Lower(std::wstring_view text) {
    return Lowered(Utf8Of(text));
}

} // namespace zvi::app
