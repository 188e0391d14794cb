#pragma once

#include "apps/zvi/common/Console.h"

#include <string>
#include <vector>

namespace zvi::app {

/// `zvi profile-report`: shows the report of the library's profiler as a sorted table. `arguments` are those after the
/// verb. Returns the exit status; throws UsageError.
int RunProfileReport(std::vector<std::string> const &arguments, Console &console);

} // namespace zvi::app
