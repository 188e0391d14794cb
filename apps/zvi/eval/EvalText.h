#pragma once

#include "apps/zvi/eval/Diagnose.h"
#include "apps/zvi/eval/Evaluate.h"

#include <string>

namespace zvi::app {

/// `value` in the shortest form that reads back as the same number, without exponent from 1e-5 to 1e16; "nan" and
/// "inf" for what is no number.
std::string PlainNumber(double value);

/// The numbers of an outcome: one group per line, numbers separated by blanks. A list without numbers is an empty line.
std::string OutcomeText(EvalOutcome const &outcome);

/// The text on a line of its own with a caret under the place, both indented by two. Of a long text only the
/// surroundings of the place are shown.
std::string CaretText(CString const &typed, Span const &where);

/// All that is told of a failure: the parser's message, the text with its caret, and the hint. Its last line has
/// no end.
std::string DiagnosisText(CString const &typed, Diagnosis const &diagnosis);

/// One line of JSON: {"schema":1,"mode":...,"groups":[[...]]}, for a position also "op". What is no number is null.
std::string OutcomeJson(EvalSettings const &settings, EvalOutcome const &outcome);

/// One line of JSON for a failure: {"schema":1,"mode":...,"error":{"message","column","hint"}}. Columns count
/// characters from 1.
std::string DiagnosisJson(EvalSettings const &settings, CString const &typed, Diagnosis const &diagnosis);

} // namespace zvi::app
