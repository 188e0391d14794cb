#pragma once

#include "apps/zvi/common/Console.h"

#include <string>
#include <vector>

namespace zvi::app {

/// `zvi numbers compress|expand|select`: number lists as compact text and back. `arguments` are those after the verb.
/// Returns the exit status; throws UsageError and InputError.
int RunNumbers(std::vector<std::string> const &arguments, Console &console);

} // namespace zvi::app
