#pragma once

#include <string>

namespace zvi::app {

/// The quantity kind of this number; throws UsageError unless it is 1 to 128.
int UnitKindNamed(std::string const &text);

} // namespace zvi::app
