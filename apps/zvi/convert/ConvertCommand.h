#pragma once

#include "apps/zvi/common/Console.h"

#include <string>
#include <vector>

namespace zvi::app {

/// `zvi convert VALUE FROM TO`: moves a value from one unit label to another. `arguments` are those after the verb.
/// Returns the exit status; throws UsageError and InputError.
int RunConvert(std::vector<std::string> const &arguments, Console &console);

} // namespace zvi::app
