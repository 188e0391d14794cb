#pragma once

#include "apps/zvi/common/CaretText.h"
#include "apps/zvi/common/typed/Evaluate.h"

#include <string>

namespace zvi::app {

/// The numbers of an outcome: one group per line, numbers separated by blanks. A list without numbers is an empty line.
std::string OutcomeText(EvalOutcome const &outcome);

/// One line of JSON: {"schema":1,"mode":...,"groups":[[...]]}, for a position also "op". What is no number is null.
std::string OutcomeJson(EvalSettings const &settings, EvalOutcome const &outcome);

/// One line of JSON for a failure: {"schema":1,"mode":...,"error":{"message","column","hint"}}. Columns count
/// characters from 1.
std::string DiagnosisJson(EvalSettings const &settings, CString const &typed, Diagnosis const &diagnosis);

} // namespace zvi::app
