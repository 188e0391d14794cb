#pragma once

#include "zvi/Export.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace zvi::lib {

/// What stands for a value or a byte sequence that is no character.
inline constexpr wchar_t kReplacementCharacter = 0xFFFD;

/// Appends one character as UTF-16 code units: itself, or its surrogate pair beyond the basic plane. A value that no
/// character has is appended as U+FFFD. Lone surrogates pass as they are.
ZVI_API void AppendUnits(std::wstring &units, std::uint32_t character);

/// Whether no element of a wide text is more than a unit.
ZVI_API bool AreUnits(std::wstring_view text);

/// Appends a wide text whose elements may be whole characters; see `AppendUnits`.
ZVI_API void AppendWide(std::wstring &units, std::wstring_view text);

/// The lower-case form of one unit of Latin, Greek or Cyrillic script; any other unit is itself.
ZVI_API wchar_t LowerUnit(wchar_t unit);

/// The upper-case form of one unit of Latin, Greek or Cyrillic script; any other unit is itself.
ZVI_API wchar_t UpperUnit(wchar_t unit);

/// Whether a unit is white space: blank, tab, line ends, vertical tab, form feed, no-break and wide blanks.
ZVI_API bool IsBlankUnit(wchar_t unit);

} // namespace zvi::lib
