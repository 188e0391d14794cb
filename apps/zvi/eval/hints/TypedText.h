#pragma once

#include "apps/zvi/common/CaretText.h"

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zvi::app {

/// No place in a text.
inline constexpr std::size_t kNowhere = std::wstring_view::npos;

/// The first character at or after `at`, or before `at`, that is no blank; kNowhere if there is none.
std::size_t NextItem(std::wstring_view text, std::size_t at);
std::size_t ItemBefore(std::wstring_view text, std::size_t at);

/// The words of a text (names of any kind), numbers with exponents passed over.
std::vector<Span> Words(std::wstring const &text);

/// The items of a list, each up to a comma that is in no bracket.
std::vector<Span> Items(std::wstring_view line);

/// The characters of a span, which must lie within the text.
std::wstring_view Part(std::wstring_view text, Span const &span);

} // namespace zvi::app
