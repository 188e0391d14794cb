#pragma once

#include "zvi/Export.h"

#include <string_view>

namespace zvi::lib {

/// What the mark at the start of a text file says of its encoding. The numbers are fixed.
enum TEXT_ENCODING {
    kEncodingMultiByte = 0,   ///< no mark: the system's multi-byte encoding
    kEncodingUtf8 = 2,        ///< EF BB BF
    kEncodingUtf16Little = 3, ///< the lower byte of a unit first
    kEncodingUtf16Big = 4,    ///< the upper byte of a unit first
    kEncodingUtf32Big = 6     ///< 00 00 FE FF
};

/// The encoding that the first bytes of a file tell; four are enough.
ZVI_API TEXT_ENCODING EncodingOfMark(std::string_view firstBytes);

/// The same for a file; gives 1. Gives 0 when the file cannot be opened, which counts as having no mark.
ZVI_API int ReadTextEncoding(wchar_t const *path, TEXT_ENCODING &encoding);

/// Whether a file can be opened and has a mark.
ZVI_API int HasUnicodeMark(wchar_t const *path);

} // namespace zvi::lib
