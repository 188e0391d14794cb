#pragma once

#include "apps/zvi/common/Console.h"

#include <string>
#include <vector>

namespace zvi::app {

/// `zvi text`: which encoding a text file has, its lines, and the text in another encoding. `arguments` are those after
/// the verb. Returns the exit status; throws UsageError and InputError.
int RunText(std::vector<std::string> const &arguments, Console &console);

} // namespace zvi::app
