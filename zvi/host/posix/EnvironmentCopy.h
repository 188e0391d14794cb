#pragma once

#include <string>
#include <vector>

namespace zvi::host {

/// The environment of this process, "NAME=VALUE" each, as it is between two calls of `SetEnvironmentPath`.
std::vector<std::string> EnvironmentCopy();

/// The value of a variable, read in the same way; empty when there is none.
std::string EnvironmentVariable(char const *name);

} // namespace zvi::host
