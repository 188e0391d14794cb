#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

namespace zvi::app {

/// How characters are bytes in a file.
enum class Encoding { kAscii, kUtf8, kUtf16Little, kUtf16Big, kUtf32Little, kUtf32Big, kUnknown };

/// An encoding, and whether a mark at the start of the file says so.
struct FoundEncoding {
    Encoding encoding = Encoding::kUnknown;
    bool hasMark = false;
};

/// The encoding of a file's bytes: by its mark; else UTF-16 when every zero is the same half of a unit and a quarter of
/// the units have one; else ASCII or UTF-8 when that is what it is, and unknown otherwise.
FoundEncoding FindEncoding(std::string_view bytes);

/// The encoding in words: "UTF-16, lower byte first".
std::string EncodingName(Encoding encoding);

/// A file's text in UTF-8, without its mark.
struct DecodedText {
    std::string text;
    std::size_t broken = 0;          ///< places that are no character; U+FFFD stands for each
    std::size_t firstBrokenLine = 0; ///< line of the first of them from 1; 0 without one
};

/// Decodes every character of a file. Half of a surrogate pair, a value beyond U+10FFFF and a rest that is too short
/// for a unit are broken; so is each byte that begins no character of UTF-8, as which an unknown encoding is read.
DecodedText Decode(std::string_view bytes, FoundEncoding const &found);

/// Well-formed UTF-8 as UTF-16 with its mark, the lower byte first. Line ends stay as they are.
std::string Utf16Bytes(std::string_view utf8);

} // namespace zvi::app
