#pragma once

#include "apps/zvi/common/WideText.h"
#include "apps/zvi/eval/hints/FailedText.h"

#include <optional>
#include <span>
#include <string>

namespace zvi::app {

/// A part of a failed text that may be mistaken.
struct Subject {
    FailedText const &failed;
    Span where;
    std::string typed = Utf8Of(failed.Part(where));
};

/// A kind of mistake: the fault that it leads to, how it is seen, and what is said of it.
struct MistakeRow {
    lib::ParseFaultKind fault;                      ///< kAnyFault: it does not tell
    bool (*seen)(Subject const &);                  ///< null: at once
    char const *hint;                               ///< % is the subject, $ what was found; empty: nothing is said
    std::string (*find)(Subject const &) = nullptr; ///< the mistake is seen if this finds something
};
inline constexpr auto kAnyFault = lib::ParseFaultKind::kNone;

/// What the first row that is seen says of the subject; empty if that is nothing.
std::string FirstSeen(std::span<MistakeRow const> rows, Subject const &subject);

/// Where one sort of mistake stands in a failed text, if anywhere, and what may be said of it.
struct Search {
    std::optional<Subject> (*subject)(FailedText const &);
    std::span<MistakeRow const> rows;
};

/// What the fault points at.
std::optional<Subject> CulpritOf(FailedText const &failed);

/// A value that a number, a divisor or an exponent may not have.
extern Search const kWrongValue;
/// A word that means nothing to the parser: a length unit without a unit system, another word behind a number, or a
/// name, with the nearest that is known.
extern Search const kUnknownWord;
/// Usual slips (blanks around operators, a decimal comma, a missing parenthesis or multiplication sign, a falling range
/// without a step, ...), mended one after another as long as more of the text is read for it. Tells the first rule that
/// was broken, and the whole text mended, or the wrong divisor or exponent that is left.
extern Search const kSlip;

} // namespace zvi::app
