#pragma once

#include "zvi/Export.h"

#include <string>

namespace zvi::host {

/// Sets a variable in the environment of this process, which children inherit. Paths in the library's form become
/// native: on POSIX every '\' of the value becomes '/', and a drive at its start becomes the root that was set for it.
/// False, and nothing has changed, when the name is empty or holds '=', or when there is no room. Other threads may
/// start children meanwhile, but whatever else of the process reads the environment must not run.
ZVI_API bool SetEnvironmentPath(std::wstring const &name, std::wstring const &value);

} // namespace zvi::host
