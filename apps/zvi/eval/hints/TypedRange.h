#pragma once

#include "apps/zvi/eval/hints/TypedText.h"

#include <optional>
#include <string>
#include <vector>

namespace zvi::app {

/// A range such as 1to9by2 as it was typed.
struct TypedRange {
    Span span;
    long long from = 0;
    long long to = 0;
    Span step;                          ///< empty: none was typed
    std::optional<long long> stepValue; ///< 1 without a step; nothing for a step that is more than an integer

    /// How many numbers it names; nothing when it does not end.
    std::optional<long long> Count() const;
};

/// The ranges of a text whose ends are plain integers, in their order.
std::vector<TypedRange> TypedRanges(std::wstring const &text);

/// How many numbers the ranges and repeats of a text name together.
long long CountNamed(std::wstring const &text);

} // namespace zvi::app
