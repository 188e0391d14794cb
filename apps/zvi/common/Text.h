#pragma once

#include <istream>
#include <string>
#include <string_view>

namespace zvi::app {

/// `text` without the blanks, tabs and line ends around it.
std::string_view Trimmed(std::string_view text);

/// `text` with its ASCII capitals as small letters.
std::string Lowered(std::string_view text);

/// Whether the texts agree when ASCII capitals and small letters are taken as one.
bool SameNoCase(std::string_view a, std::string_view b);

/// Puts `other` in the place of every `word`, which must not be empty.
void ReplaceAll(std::string &text, std::string_view word, std::string_view other);

/// `text` without the mark that says "UTF-8", which some editors put at the start of a file.
std::string_view WithoutUtf8Mark(std::string_view text);

/// What is left of a stream.
std::string AllOf(std::istream &stream);

} // namespace zvi::app
