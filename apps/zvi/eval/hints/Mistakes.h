#pragma once

#include "apps/zvi/common/WideText.h"
#include "apps/zvi/eval/hints/FailedText.h"

#include <optional>
#include <span>
#include <string>

namespace zvi::app {

/// A place in the typed text and what to say about it.
struct Mistake {
    Span where;
    std::string hint;
};

/// A part of a failed text.
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

/// What the first row that is seen says of the subject.
std::optional<Mistake> FirstSeen(std::span<MistakeRow const> rows, Subject const &subject);

// Each looks for one kind of mistake in a failed text; nothing when it is not there.

/// A word that means nothing to the parser: a length unit without a unit system, another word behind a number, or a
/// name, with the nearest that is known.
std::optional<Mistake> FindUnknownWord(FailedText const &failed);
/// A value that a number, a divisor or an exponent may not have.
std::optional<Mistake> FindWrongValue(FailedText const &failed);
/// Usual slips (blanks around operators, a decimal comma, a missing parenthesis or multiplication sign, a falling range
/// without a step, ...), mended one after another as long as more of the text is read for it. Tells the first rule that
/// was broken, and the whole text mended, or the wrong divisor or exponent that is left.
std::optional<Mistake> FindSlip(FailedText const &failed);

} // namespace zvi::app
