#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace zvi::app {

/// What the lines of a text are like. A line ends at LF, at CR LF, or at a CR alone.
struct LineFacts {
    std::size_t lines = 0; ///< a last line without an end counts
    std::size_t lineFeeds = 0;
    std::size_t carriageReturnLineFeeds = 0;
    std::size_t carriageReturns = 0;
    bool lastIsEnded = true; ///< also of a text without lines
};

LineFacts FactsOf(std::string_view utf8);

/// The facts in words: "3 lines, CR LF, the last without an end".
std::string FactsText(LineFacts const &facts);

/// A text fit for a terminal: line ends are LF, the last line has one; tabs stay, other control characters are shown by
/// their pictures (U+2400 and following).
std::string Shown(std::string_view utf8);

} // namespace zvi::app
