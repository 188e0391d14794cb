#pragma once

#include "apps/zvi/common/Console.h"

#include <string>
#include <vector>

namespace zvi::app {

/// `zvi settings`: shows and changes the settings of the library and of applications. `arguments` are those after the
/// verb. Returns the exit status; throws UsageError.
int RunSettings(std::vector<std::string> const &arguments, Console &console);

} // namespace zvi::app
