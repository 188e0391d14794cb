#pragma once

#include "apps/zvi/common/Console.h"

#include <string>
#include <vector>

namespace zvi::app {

/// `zvi domains`: reads a drawing, finds its closed domains, and writes them as a table or JSON, a picture and a
/// drawing. `arguments` are those after the verb. Returns the exit status; throws UsageError for arguments that make no
/// sense.
int RunDomains(std::vector<std::string> const &arguments, Console &console);

} // namespace zvi::app
