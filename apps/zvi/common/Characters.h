#pragma once

namespace zvi::app {

/// 0 to 9.
constexpr bool IsDigit(wchar_t c) {
    return c >= L'0' && c <= L'9';
}

/// What a name may begin with: A to Z, a to z, _.
constexpr bool IsLetter(wchar_t c) {
    return (c >= L'A' && c <= L'Z') || (c >= L'a' && c <= L'z') || c == L'_';
}

/// What a name may go on with.
constexpr bool IsNameChar(wchar_t c) {
    return IsLetter(c) || IsDigit(c);
}

constexpr bool IsBlank(wchar_t c) {
    return c == L' ' || c == L'\t';
}

} // namespace zvi::app
