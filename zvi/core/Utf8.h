#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"

#include <cstddef>
#include <cstdint>
#include <string>
#include <string_view>

namespace zvi::lib {

/// Bytes of the UTF-8 character that begins with this byte; 1 for a byte that begins none.
ZVI_API std::size_t Utf8Length(char lead);

/// Reads the character at the start of `text` and gives the number of its bytes; 0, with `character` as it was, where
/// no well-formed one stands (an overlong form, a surrogate, a value beyond U+10FFFF, no sequence, or nothing at all).
/// No byte behind the first one that cannot belong to the character is looked at.
ZVI_API std::size_t ReadUtf8(std::string_view text, std::uint32_t &character);

/// Whether `text` is well-formed UTF-8. The empty text is.
ZVI_API bool IsUtf8(std::string_view text);

/// Appends a character as UTF-8; what is none, half of a surrogate pair or beyond U+10FFFF, becomes U+FFFD.
ZVI_API void AppendUtf8(std::string &text, std::uint32_t character);

/// UTF-8 as a text of the library. Each byte that begins no well-formed character becomes U+FFFD, and so does NUL,
/// which would hide what stands behind it.
ZVI_API CString WideOf(std::string_view utf8);

/// A text of the library, or a part of one, as UTF-8. Half of a surrogate pair becomes U+FFFD, and so does an element
/// beyond U+10FFFF.
ZVI_API std::string Utf8Of(std::wstring_view text);
/// The same for the whole of a text.
ZVI_API std::string Utf8Of(CString const &text);

} // namespace zvi::lib
