#pragma once

#include <cstddef>
#include <optional>
#include <string_view>

namespace zvi::app {

/// One group of a DXF text: the code line and the value line under it. `value` looks into the text; line ends and, for
/// numbers, the blanks around it are left to its user. `line` is that of the value, counted from 1.
struct DxfPair {
    int code = 0;
    std::size_t line = 0;
    std::string_view value;
};

/// Reads the groups of an ASCII DXF text one after another. Lines end with LF or CR LF, also mixed; a mark at the
/// start that says "UTF-8" is passed over. The text must outlive the reader and the pairs it gives.
class DxfPairs {
public:
    /// Throws InputError for a binary DXF, and for an empty text.
    explicit DxfPairs(std::string_view text);

    /// The next group, or nothing at the end of the text. Throws InputError for a line that is no group code, and for
    /// a text that ends within a group.
    std::optional<DxfPair> Next();

    /// The line that Next looks at first, counted from 1.
    std::size_t Line() const { return m_line; }

    /// How many bytes Next has not looked at yet.
    std::size_t BytesLeft() const { return m_rest.size(); }

private:
    std::string_view TakeLine();

    std::string_view m_rest;
    std::size_t m_line = 1;
};

/// Whether `text` starts as a DXF drawing does, ASCII or binary: a comment (999) or the start of a section.
bool LooksLikeDxf(std::string_view text);

} // namespace zvi::app
