#pragma once

#include "apps/zvi/eval/hints/FailedText.h"

#include <optional>
#include <string>

namespace zvi::app {

/// A place in the typed text and what to say about it.
struct Mistake {
    Span where;
    std::string hint;
};

// Each looks for one kind of mistake in a failed text; nothing when it is not there.

/// A length unit without a unit system, a word behind a number that is no length unit, or a word that is neither
/// function nor variable, with the nearest that is.
std::optional<Mistake> FindUnknownWord(FailedText const &failed);
/// A divisor that is zero, with what was typed.
std::optional<Mistake> FindZeroDivisor(FailedText const &failed);
/// An exponent that is no integer, or zero.
std::optional<Mistake> FindExponent(FailedText const &failed);
/// Usual slips (blanks around operators, a decimal comma, a missing parenthesis or multiplication sign, a falling range
/// without a step, ...), mended one after another as long as more of the text is read for it. Tells the first rule that
/// was broken, and the whole text mended, or the wrong divisor or exponent that is left.
std::optional<Mistake> FindSlip(FailedText const &failed);
/// An item that the mode does not take, such as a fraction in a list of integers.
std::optional<Mistake> FindItem(FailedText const &failed);
/// A text that another mode reads.
std::optional<Mistake> FindOtherMode(FailedText const &failed);
/// What stands at the place where the reading stopped; of every text.
std::optional<Mistake> DescribePlace(FailedText const &failed);

} // namespace zvi::app
