#pragma once

#include "zvi/Export.h"

#include <cstddef>
#include <string>
#include <string_view>

namespace zvi::host {

/// The multi-byte encoding of the system: UTF-8 on POSIX, the active code page on Windows.
inline constexpr unsigned int kSystemCodePage = 0;
/// UTF-8 on every host.
inline constexpr unsigned int kUtf8CodePage = 65001;

/// Whether the host converts texts of that code page. Pages have the numbers that they have on Windows (949, 1252,
/// 28591, ...) on every host. UTF-16 and UTF-32 are no multi-byte pages.
ZVI_API bool HasCodePage(unsigned int codePage);

/// A multi-byte text as UTF-16 units, one per element, whatever is in it; a zero stays a zero. A byte that begins no
/// character of the page becomes U+FFFD. Empty for a page that the host does not know.
ZVI_API std::wstring WideOfMulti(std::string_view text, unsigned int codePage);

/// The same, appended to a text.
ZVI_API void AppendWideOfMulti(std::wstring &units, std::string_view text, unsigned int codePage);

/// UTF-16 units, one per element, as a multi-byte text; an element that is a whole character beyond the basic plane
/// counts as that. A character that the page lacks becomes the page's default character, which is '?' in most; in UTF-8
/// half of a surrogate pair becomes U+FFFD. Empty for a page that the host does not know.
ZVI_API std::string MultiOfWide(std::wstring_view units, unsigned int codePage);

/// The same, appended to a text.
ZVI_API void AppendMultiOfWide(std::string &text, std::wstring_view units, unsigned int codePage);

/// Bytes in the system's code page as UTF-16 units from which `BytesOfWide` makes the same bytes again: for files that
/// are to be written back. On POSIX a byte of no character becomes the lone surrogate 0xDC00 + byte; on Windows as
/// `WideOfMulti`, for whose usual pages every byte is a character. `units` has room for one unit for each byte, which
/// always suffices; the answer is how many there are.
ZVI_API std::size_t WideOfBytes(std::string_view bytes, wchar_t *units);

/// The way back. Units that `WideOfBytes` does not give go out as by `MultiOfWide`.
ZVI_API std::string BytesOfWide(std::wstring_view units);

} // namespace zvi::host
