#pragma once

#include "apps/zvi/common/CaretText.h"
#include "apps/zvi/common/typed/Evaluate.h"

namespace zvi::app {

/// Finds the likely mistake in a text whose reading failed with `outcome`.
Diagnosis Diagnose(CString const &typed, EvalSettings const &settings, EvalOutcome const &outcome);

} // namespace zvi::app
