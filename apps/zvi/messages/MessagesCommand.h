#pragma once

#include "apps/zvi/common/Console.h"

#include <string>
#include <vector>

namespace zvi::app {

/// `zvi messages`: the texts of message catalogues, or one of them. `arguments` are those after the verb. Returns the
/// exit status; throws UsageError and InputError.
int RunMessages(std::vector<std::string> const &arguments, Console &console);

} // namespace zvi::app
