#pragma once

#include "apps/zvi/common/typed/Evaluate.h"

#include <optional>
#include <string>
#include <vector>

namespace zvi::app {

/// What `zvi eval` was asked to do.
struct EvalOptions {
    EvalSettings settings;
    bool json = false;
    std::optional<std::string> text; ///< nothing: the prompt, or the lines of standard input
    std::string help;                ///< not empty: help was asked for, and this is it
};

/// Reads the arguments after the verb. Throws UsageError for what makes no sense.
EvalOptions ParseEvalOptions(std::vector<std::string> const &arguments);

} // namespace zvi::app
