#pragma once

#include "zvi/core/WideUnits.h"

#include <cstdint>
#include <string>
#include <string_view>

namespace zvi::app {

/// What stands for bytes that are no character.
inline constexpr std::uint32_t kReplacement = lib::kReplacementCharacter;

/// Bytes of the UTF-8 character that begins with this byte; 1 for a byte that begins none.
std::size_t Utf8Length(char lead);

/// Reads the character at the start of `text`, which must not be empty, and gives the number of its bytes; 0 where no
/// well-formed one stands (an overlong form, a surrogate, a value beyond U+10FFFF, or no sequence at all).
std::size_t ReadUtf8(std::string_view text, std::uint32_t &character);

/// Whether `text` is well-formed UTF-8.
bool IsUtf8(std::string_view text);

/// Appends a character of at most U+10FFFF as UTF-8.
void AppendUtf8(std::string &text, std::uint32_t character);

} // namespace zvi::app
