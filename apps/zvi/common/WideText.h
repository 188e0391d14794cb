#pragma once

#include "zvi/core/CString.h"

#include <string>
#include <string_view>

namespace zvi::app {

/// UTF-8 as the library's text; bytes that are no character become U+FFFD.
CString WideOf(std::string_view utf8);

/// The library's text, or a part of one, as UTF-8; half of a surrogate pair becomes U+FFFD.
std::string Utf8Of(std::wstring_view text);
std::string Utf8Of(CString const &text);

/// `text` fit for one line of a terminal: tabs and line ends are shown as blanks, other control characters as '?'.
std::wstring Printable(std::wstring_view text);

/// Columns that a text without control characters takes on a terminal: East Asian wide characters take two,
/// combining ones none.
std::size_t Columns(std::wstring_view text);

/// Bytes of the UTF-8 character that begins with this byte; 1 for a byte that begins none.
std::size_t Utf8Length(char lead);

} // namespace zvi::app
