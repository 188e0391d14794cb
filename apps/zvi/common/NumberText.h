#pragma once

#include <optional>
#include <string>
#include <string_view>

namespace zvi::app {

/// The number that `text` spells, blanks around it allowed, whatever the locale: "12", "-1.5e3", "+.5", "1.".
/// Nothing for any other text, for "nan" and "inf", and for numbers beyond the range of a double.
std::optional<double> ParseNumber(std::string_view text);

/// The integer that `text` spells, blanks around it allowed; nothing for any other text or beyond 64 bits.
std::optional<long long> ParseInteger(std::string_view text);

/// `value` in the shortest form that reads back as the same number; "-0" is written "0".
std::string ExactNumber(double value);

/// `value` with at most `digits` significant digits, 1 to 17, for people; "-0" is written "0".
std::string ShortNumber(double value, int digits = 9);

/// `value` in the shortest form that reads back as the same number, without exponent from 1e-5 to 1e16; "nan" and
/// "inf" for what is no number.
std::string PlainNumber(double value);

} // namespace zvi::app
