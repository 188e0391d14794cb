#pragma once

#include "zvi/Export.h"

#include <cstdio>
#include <string_view>

namespace zvi::host {

/// Makes a file of UTF-16 text, or empties one that is there, and writes its mark (FF FE: the lower byte comes first).
/// What follows in the stream are bytes as they are. Null when it cannot be made.
ZVI_API std::FILE *OpenUnicodeStream(std::wstring_view path);

} // namespace zvi::host
