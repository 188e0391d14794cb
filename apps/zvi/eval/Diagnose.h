#pragma once

#include "apps/zvi/eval/Evaluate.h"
#include "apps/zvi/eval/TypedText.h"

#include <string>

namespace zvi::app {

/// What is wrong with a text, for people.
struct Diagnosis {
    Span where;       ///< in the typed text; of length 1 behind its end when something is missing there
    std::string what; ///< the parser's own message or messages
    std::string hint; ///< what to write instead; empty when nothing helpful is known
};

/// Finds the likely mistake in a text whose reading failed with `outcome`.
Diagnosis Diagnose(CString const &typed, EvalSettings const &settings, EvalOutcome const &outcome);

} // namespace zvi::app
