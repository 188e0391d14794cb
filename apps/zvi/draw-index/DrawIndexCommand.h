#pragma once

#include "apps/zvi/common/Console.h"

#include <string>
#include <vector>

namespace zvi::app {

/// `zvi draw-index`: a picture of the quadtree of a drawing's curves. `arguments` are those after the verb; gives the
/// exit status. Throws UsageError.
int RunDrawIndex(std::vector<std::string> const &arguments, Console &console);

} // namespace zvi::app
