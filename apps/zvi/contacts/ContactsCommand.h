#pragma once

#include "apps/zvi/common/Console.h"

#include <string>
#include <vector>

namespace zvi::app {

/// `zvi contacts`: reads bodies and finds where they are in contact. `arguments` are those after the verb. Returns the
/// exit status; throws UsageError for arguments that make no sense.
int RunContacts(std::vector<std::string> const &arguments, Console &console);

} // namespace zvi::app
