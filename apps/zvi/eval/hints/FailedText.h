#pragma once

#include "apps/zvi/common/CaretText.h"
#include "apps/zvi/common/typed/Evaluate.h"

#include <optional>
#include <string>
#include <string_view>

namespace zvi::app {

/// No place in a text.
inline constexpr std::size_t kNowhere = std::wstring_view::npos;

/// A text whose reading failed, as the searches for its mistake see it.
struct FailedText {
    std::wstring typed;
    EvalSettings const &settings;
    EvalOutcome outcome;
    std::wstring line = outcome.line.GetString(); ///< what the parser read

    lib::ParseFaultKind Fault() const { return outcome.fault.kind; }
    EvalMode Mode() const { return settings.mode; }
    /// Whether numbers may bear length units.
    bool HasUnits() const { return settings.unitSystem && KnowsUnits(Mode()); }
    /// Whether a range or a repeat may name so many numbers that the text is not read again in search of a mistake.
    bool MayNameMany() const;

    /// Index of the typed character at which the reading stopped, that character, and whether it is one of these.
    std::size_t Place() const { return static_cast<std::size_t>(outcome.place); }
    wchar_t Here() const { return At(Place()); }
    bool IsHere(std::wstring_view characters) const { return Here() != 0 && characters.find(Here()) != kNowhere; }
    /// The typed character at `index`, and the last one before it that is none of these; NUL where there is none.
    wchar_t At(std::size_t index) const { return index < typed.size() ? typed[index] : L'\0'; }
    wchar_t Before(std::size_t index, wchar_t const *passedOver = L" \t") const;
    /// The first typed character that is no blank.
    std::size_t First() const { return typed.find_first_not_of(L" \t"); }

    std::wstring_view Part(Span const &span) const { return std::wstring_view(typed).substr(span.begin, span.length); }
    /// The stretch of the typed text behind these characters of the line, of which there is one at least.
    Span SpanOfLine(Span const &inLine) const;
    /// What the fault points at, in the line, and as it was typed: the place where the reading stopped if at nothing.
    std::wstring_view Culprit() const;
    Span CulpritSpan() const;

    /// The outcome of another text, or of the same text in another mode, without units.
    EvalOutcome Other(std::wstring_view text, EvalMode mode) const;
    /// The value of a text that the mode reads as one number.
    std::optional<double> ValueOf(std::wstring_view text, EvalMode mode) const;
};

} // namespace zvi::app
