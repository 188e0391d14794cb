#pragma once

#include "zvi/core/CString.h"
#include "zvi/core/ReadSettings.h"

#include <cstddef>
#include <istream>
#include <string_view>

namespace zvi::lib::core {

/// Room for the longest line and a closing zero.
inline constexpr std::size_t kLineBuffer = kLongestSettingsLine + 1;

/// Reads one line into the buffer and gives it as a text; a longer line fails the stream.
std::istream &GetSettingsLine(std::istream &stream, char (&buffer)[kLineBuffer], CString &text);

/// Reads a settings file by lines, which `getLine` takes from a stream of it.
SettingsEnd ReadSettingsBy(std::wstring_view path,
                           std::function<std::istream &(std::istream &, CString &)> const &getLine,
                           std::function<void(SettingsPlace const &)> const &visit, int *lastLine);

} // namespace zvi::lib::core
