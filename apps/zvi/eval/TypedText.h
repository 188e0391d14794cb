#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zvi::app {

bool IsDigit(wchar_t c);
bool IsLetter(wchar_t c); ///< of a name: A to Z, a to z, _
bool IsBlank(wchar_t c);
bool IsNameChar(wchar_t c);
/// + - * / ^ @ <
bool IsOperator(wchar_t c);

/// Index behind the number that begins at `at` in the language's form, with its exponent; `at` if there is none.
std::size_t EndOfNumber(std::wstring_view text, std::size_t at);

/// The first character at or after `at`, or before `at`, that is no blank; npos if there is none.
std::size_t NextItem(std::wstring_view text, std::size_t at);
std::size_t ItemBefore(std::wstring_view text, std::size_t at);

/// A stretch of a text.
struct Span {
    std::size_t begin = 0;
    std::size_t length = 0;
    std::size_t End() const { return begin + length; }
};

/// The words of a text (names of any kind), numbers with exponents passed over.
std::vector<Span> Words(std::wstring_view text);

std::wstring Upper(std::wstring_view text);
std::string Lower(std::wstring_view text);

} // namespace zvi::app
