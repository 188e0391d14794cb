#include "apps/zvi/eval/TypedText.h"

#include "apps/zvi/common/Text.h"
#include "apps/zvi/common/WideText.h"

namespace zvi::app {

bool IsDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

bool IsLetter(wchar_t c) {
    return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z') || c == L'_';
}

bool IsBlank(wchar_t c) {
    return c == L' ' || c == L'\t';
}

bool IsNameChar(wchar_t c) {
    return IsLetter(c) || IsDigit(c);
}

bool IsOperator(wchar_t c) {
    return c != 0 && std::wstring_view(L"+-*/^@<").find(c) != std::wstring_view::npos;
}

std::size_t EndOfNumber(std::wstring_view text, std::size_t at) {
    auto const digits = [text](std::size_t from) {
        while (from < text.size() && IsDigit(text[from]))
            ++from;
        return from;
    };
    std::size_t end = digits(at);
    bool const whole = end > at;
    if (end < text.size() && text[end] == L'.' && (whole || digits(end + 1) > end + 1))
        end = digits(end + 1);
    if (end == at || end >= text.size() || (text[end] != L'E' && text[end] != L'e'))
        return end;
    std::size_t exponent = end + 1;
    exponent += exponent < text.size() && (text[exponent] == L'+' || text[exponent] == L'-');
    return digits(exponent) > exponent ? digits(exponent) : end;
}

std::size_t NextItem(std::wstring_view text, std::size_t at) {
    return text.find_first_not_of(L" \t", at);
}

std::size_t ItemBefore(std::wstring_view text, std::size_t at) {
    return at == 0 ? std::wstring_view::npos : text.find_last_not_of(L" \t", at - 1);
}

std::vector<Span> Words(std::wstring_view text) {
    std::vector<Span> words;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t end = EndOfNumber(text, at);
        if (end == at && IsLetter(text[at])) {
            while (end < text.size() && IsNameChar(text[end]))
                ++end;
            words.push_back({at, end - at});
        }
        at = end == at ? at + 1 : end;
    }
    return words;
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
