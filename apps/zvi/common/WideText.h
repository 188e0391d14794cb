#pragma once

#include "zvi/core/CString.h"

#include <string>
#include <string_view>

namespace zvi::app {

/// UTF-8 as the library's text; bytes that are no character, and NUL, become U+FFFD.
CString WideOf(std::string_view utf8);

/// The library's text, or a part of one, as UTF-8; half of a surrogate pair becomes U+FFFD.
std::string Utf8Of(std::wstring_view text);
std::string Utf8Of(CString const &text);

/// The units of a text, as long as it lives.
std::wstring_view View(CString const &text);

/// `text` fit for one line of a terminal: tabs and line ends are shown as blanks, other control characters as '?'.
std::wstring Printable(std::wstring_view text);

/// Columns that a text without control characters takes on a terminal: East Asian wide characters take two,
/// combining ones none.
std::size_t Columns(std::wstring_view text);
std::size_t Columns(std::string_view utf8);

} // namespace zvi::app
