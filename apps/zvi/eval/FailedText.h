#pragma once

#include "apps/zvi/eval/Evaluate.h"
#include "apps/zvi/eval/TypedText.h"

#include <string>

namespace zvi::app {

/// A text whose reading failed, as the searches for its mistake see it.
struct FailedText {
    std::wstring typed;
    std::wstring line; ///< what the parser read
    EvalSettings const &settings;
    EvalOutcome const &outcome;

    std::size_t Place() const { return static_cast<std::size_t>(outcome.place); }
    std::size_t At() const { return static_cast<std::size_t>(outcome.at); }

    std::string Typed(Span const &span) const;
    /// The stretch of the typed text behind these characters of the line; `from` is less than `to`.
    Span SpanOfLine(std::size_t from, std::size_t to) const;
    /// How many numbers the ranges and repeats of the text name together.
    long long NamedNumbers() const;
    /// The outcome of another text, or of the same text in another mode.
    EvalOutcome Other(std::wstring_view text, EvalMode mode) const;
};

} // namespace zvi::app
