#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"

#include <vector>

namespace zvi::lib {

/// Rewrites typed text into what the scanner reads: upper case, "B" or "BY" and "T" or "TO" as markers, blanks between
/// items as commas, a zero between two commas in a row, a comma between "]" and "[", no comma at the end.
///
///     "1 2 3" -> "1,2,3"    "1,,3" -> "1,0,3"    "[1,2] [3,4]" -> "[1,2],[3,4]"
///     "1to9by2" -> "1#__ARG_TO__#9#__ARG_BY__#2"
///
/// Every B and T counts as a marker but for those of SQRT, TAN, ABS and TH, so a variable whose name holds one cannot
/// be read. A blank around an operator separates: "1 + 2" becomes "1,+,2". Both are part of the language.
ZVI_API CString NormalizeCommandText(CString const &text);

/// The same; `sources` receives, for each character of the result, the index in `text` of the character it comes from.
ZVI_API CString NormalizeCommandText(CString const &text, std::vector<int> &sources);

} // namespace zvi::lib
