#pragma once

#include "apps/zvi/eval/FailedText.h"

#include <optional>
#include <string>

namespace zvi::app {

/// A place in the typed text and what to say about it.
struct Mistake {
    Span where;
    std::string hint;
};

// Each looks for one kind of mistake in a failed text; nothing when it is not there.

/// Longer than a line of the language may be, or more numbers than it may hold or name.
std::optional<Mistake> FindTooMuch(FailedText const &failed);
/// A length unit without a unit system, or a word behind a number that is no length unit.
std::optional<Mistake> FindUnit(FailedText const &failed);
/// A word that is neither function nor variable, with the nearest that is.
std::optional<Mistake> FindUnknownName(FailedText const &failed);
/// `name=expression`, which is no expression.
std::optional<Mistake> FindAssignment(FailedText const &failed);
/// A function that has no value for its argument.
std::optional<Mistake> FindFunctionDomain(FailedText const &failed);
/// A divisor that is zero.
std::optional<Mistake> FindZeroDivisor(FailedText const &failed);
/// An exponent that is no integer, or zero.
std::optional<Mistake> FindExponent(FailedText const &failed);
/// An item that the mode does not take, such as a fraction in a list of integers.
std::optional<Mistake> FindItem(FailedText const &failed);
/// A text that another mode reads.
std::optional<Mistake> FindOtherMode(FailedText const &failed);
/// What stands at the place where the reading failed.
Mistake DescribePlace(FailedText const &failed);

} // namespace zvi::app
