#pragma once

#include <string>
#include <string_view>

namespace zvi::app {

/// `text` of a DXF drawing as UTF-8, always well formed. `codePage` is the drawing's own word for it ("ANSI_1252",
/// "ANSI_932", "UTF-8", ...; capitals or not), empty where it has none. Text that already is well-formed UTF-8 stays
/// so: writers often forget to change the code page. Characters written \U+XXXX are put in. Bytes that mean nothing in
/// the code page, and control characters, become U+FFFD.
std::string DecodeDxfText(std::string_view text, std::string_view codePage);

/// The beginning of a text of unknown encoding in double quotes, fit for one line of a message; "..." stands for the
/// rest of a long one.
std::string Quoted(std::string_view text);

} // namespace zvi::app
