#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"

namespace zvi::lib {

/// A text of a message catalogue and the key that it has there.
struct MessageEntry {
    CString key;  ///< by which the text is asked for
    CString text; ///< what the user sees
};

/// Reads a line of a catalogue, such as KEY = "text"; false for one that defines nothing: a blank line and a comment,
/// which begins with ";".
///
/// White space around the line and around the key is cut off. The key is what stands in front of the first "="; where
/// it holds the sign "/**/", the key is what stands behind that, and what stands before is a comment. A line without
/// "=" has the empty key. The text is what stands behind the first double quote, less the last character of the line,
/// whatever that is; without a quote it is what stands behind the key, less the last character.
///
/// In the text \n, \t and \r are a line feed, a tab and a carriage return, "" is one double quote and \\ one backslash,
/// replaced in this order. The doubled backslash comes last deliberately: \\n is a backslash and a line feed, and a
/// catalogue cannot say a backslash in front of the letter n; catalogues rely on it.
ZVI_API bool ParseMessageLine(CString const &line, MessageEntry &entry);

} // namespace zvi::lib
