#pragma once

#include "zvi/core/CString.h"

#include <string_view>

namespace zvi::lib::command {

/// The start word, one blank, and the normalised text.
CString NormalizedLine(std::string_view startWord, CString const &text);

} // namespace zvi::lib::command
