#pragma once

#include "zvi/Export.h"

#include <cstdarg>
#include <string>

namespace zvi::lib {

/// Widths of fields and precisions of numbers are cut to this many characters, so that a format cannot ask for memory
/// out of all proportion.
inline constexpr int kLargestFieldWidth = 1000000;

/// The wide `printf` of every variadic operation; gives UTF-16 code units, one per element.
///
/// `%s` and `%ls` take `wchar_t const *`; `%S` and `%hs` take `char const *` in UTF-8, where a byte that fits no
/// character becomes U+FFFD. `%c` and `%lc` take a wide character, `%C` and `%hc` a narrow one. `I64`, `I32` and `I`
/// are sizes beside those of C, `%p` writes sixteen upper-case hexadecimal digits. Flags, widths, precisions, `*` and
/// the other conversions are as in C, in the "C" locale whatever the process locale. A null string prints "(null)", a
/// not-a-number value never has a sign. A precision of a string counts the units written; half a surrogate pair is not
/// written. `%n` writes nothing to its argument. What is no conversion is copied as it stands; a null format is empty.
ZVI_API std::wstring FormatWide(wchar_t const *format, ...);

/// The same with arguments that a variadic operation was given.
ZVI_API std::wstring FormatWideV(wchar_t const *format, std::va_list arguments);

} // namespace zvi::lib
