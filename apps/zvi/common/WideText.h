#pragma once

#include "zvi/core/CString.h"
#include "zvi/core/Utf8.h"

#include <string>
#include <string_view>

namespace zvi::app {

using lib::Utf8Of;
using lib::WideOf;

/// The units of a text, as long as it lives.
std::wstring_view View(CString const &text);

/// `text` fit for one line of a terminal: tabs and line ends are shown as blanks, other control characters as '?'.
std::wstring Printable(std::wstring_view text);

/// Columns that a text without control characters takes on a terminal: East Asian wide characters take two,
/// combining ones none.
std::size_t Columns(std::wstring_view text);
std::size_t Columns(std::string_view utf8);

} // namespace zvi::app
