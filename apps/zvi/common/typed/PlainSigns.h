#pragma once

#include <string>

namespace zvi::app {

/// The text with signs of books, word processors and other keyboards as the language of input fields knows them: a
/// multiplication sign as *, a full-width digit as a plain one.
std::wstring PlainSigns(std::wstring const &text);

} // namespace zvi::app
