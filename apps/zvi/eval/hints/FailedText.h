#pragma once

#include "apps/zvi/common/typed/Evaluate.h"
#include "apps/zvi/eval/hints/TypedText.h"

#include <optional>
#include <string>
#include <string_view>

namespace zvi::app {

/// A text whose reading failed, as the searches for its mistake see it.
struct FailedText {
    std::wstring typed;
    EvalSettings const &settings;
    EvalOutcome outcome;
    std::wstring line = outcome.line.GetString(); ///< what the parser read

    lib::ParseFaultKind Fault() const { return outcome.fault.kind; }
    /// Whether numbers may bear length units.
    bool HasUnits() const { return settings.unitSystem && KnowsUnits(settings.mode); }

    /// Index of the typed character at which the reading stopped, that character, and whether it is one of these.
    std::size_t Place() const { return static_cast<std::size_t>(outcome.place); }
    wchar_t Here() const { return At(Place()); }
    bool IsHere(std::wstring_view characters) const { return Here() != 0 && characters.find(Here()) != kNowhere; }
    /// The typed character at `index`; NUL behind the end.
    wchar_t At(std::size_t index) const { return index < typed.size() ? typed[index] : L'\0'; }

    std::string Typed(Span const &span) const;
    /// The stretch of the typed text behind these characters of the line; `from` is less than `to`.
    Span SpanOfLine(std::size_t from, std::size_t to) const;
    /// What the fault points at, in the line and as it was typed; the place where the reading stopped if at nothing.
    std::wstring_view Culprit() const;
    Span CulpritSpan() const;

    /// The outcome of another text, or of the same text in another mode, without units.
    EvalOutcome Other(std::wstring_view text, EvalMode mode) const;
    /// The value of a text that the mode reads as one number.
    std::optional<double> ValueOf(std::wstring_view text, EvalMode mode) const;
};

} // namespace zvi::app
