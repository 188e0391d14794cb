#pragma once

#include "apps/zvi/common/Console.h"

#include <string>
#include <vector>

namespace zvi::app {

/// `zvi units`: lists the quantity kinds of a unit system with their labels and factors, or all labels of one kind.
/// `arguments` are those after the verb. Returns the exit status; throws UsageError, and InputError for a kind without
/// label.
int RunUnits(std::vector<std::string> const &arguments, Console &console);

} // namespace zvi::app
