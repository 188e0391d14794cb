#pragma once

#include "zvi/core/CString.h"

#include <cstddef>
#include <string>

namespace zvi::app {

/// A stretch of a text.
struct Span {
    std::size_t begin = 0;
    std::size_t length = 0;
    std::size_t End() const { return begin + length; }
};

/// What is wrong with a text, for people.
struct Diagnosis {
    Span where;       ///< in the typed text; of length 1 behind its end when something is missing there
    std::string what; ///< what failed, in the words of the reader that refused the text
    std::string hint; ///< what to write instead; empty when nothing helpful is known
};

/// The text on a line of its own with a caret under the place, both indented by two. Of a long text only the
/// surroundings of the place are shown.
std::string CaretText(CString const &typed, Span const &where);

/// All that is told of a failure: what failed, the text with its caret, and the hint. Its last line has no end.
std::string DiagnosisText(CString const &typed, Diagnosis const &diagnosis);

} // namespace zvi::app
