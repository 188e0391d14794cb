#pragma once

#include "apps/zvi/common/Console.h"

#include <string>
#include <vector>

namespace zvi::app {

/// `zvi run PROGRAM ARGS...`: runs a program and shows its output line by line. `arguments` are those after the verb.
/// Returns the program's exit code; throws UsageError and InputError.
int RunRun(std::vector<std::string> const &arguments, Console &console);

} // namespace zvi::app
