#pragma once

#include "apps/zvi/eval/hints/FailedText.h"

#include <optional>
#include <string>

namespace zvi::app {

/// A mistyped text with slips mended.
struct RepairedText {
    std::wstring text;
    std::string why; ///< the rule of the language that was broken first, for people
    EvalOutcome outcome;
};

/// Looks for usual slips in a text that failed (blanks around operators, a decimal comma, a missing parenthesis or
/// multiplication sign, a falling range without a step, ...) and mends them one after another, as long as more of the
/// text is read for it. The outcome tells whether all of it is; nothing when no slip was found.
std::optional<RepairedText> FindRepair(FailedText const &failed);

} // namespace zvi::app
