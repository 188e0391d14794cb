#pragma once

#include <string>
#include <string_view>

namespace zvi::app {

/// Writes `content` to the file of that name, which is there whole or not at all: it is written beside under another
/// name and renamed. A link is followed. What is no regular file (a device, a pipe) is written as it is. Returns an
/// empty text, or what went wrong and what to try.
std::string WriteWholeFile(std::string const &name, std::string_view content);

/// Why the file of that name could not be written, as `WriteWholeFile` would find out, so that it is known before the
/// work; empty if it could. Nothing is left behind.
std::string WhyNotWritable(std::string const &name);

} // namespace zvi::app
