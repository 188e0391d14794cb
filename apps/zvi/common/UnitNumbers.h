#pragma once

#include <string>

namespace zvi::app {

/// The quantity kind of this number or name; throws UsageError unless there is one, of 1 to 128.
int UnitKindNamed(std::string const &text);

/// The unit system of this number; throws UsageError unless it is 0 to 5.
int UnitSystemNamed(std::string const &text);

} // namespace zvi::app
