#pragma once

#include "zvi/core/CString.h"

#include <string>
#include <string_view>

namespace zvi::app {

/// Bytes of a command line as a text of the library, from which `zvi settings` makes the same bytes again.
CString KeptText(std::string_view bytes);

/// Why a settings file cannot hold this value, and what to do; empty when it can.
std::string WhyNotHeld(CString const &category, CString const &keyword, CString const &value);

/// The text of a settings file in which a keyword has a new value: its line is replaced, or one is added at the end of
/// its category, which is added too if need be. Every other byte stays, comments included. What stands behind a line
/// that is too long for the library is not touched, and nothing is added there. A file can hold the value.
std::string EditedSettings(std::string_view text, CString const &category, CString const &keyword,
                           CString const &value);

} // namespace zvi::app
