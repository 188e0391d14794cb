#pragma once

#include "apps/zvi/common/Console.h"

#include <string>
#include <vector>

namespace zvi::app {

/// `zvi eval`: reads a text, the lines of standard input, or what is typed at a prompt, and prints the numbers.
/// `arguments` are those after the verb. Returns the exit status; throws UsageError for arguments that make no sense.
int RunEval(std::vector<std::string> const &arguments, Console &console);

} // namespace zvi::app
