#pragma once

#include "zvi/host/ChildProcess.h"

#include <sys/types.h>

namespace zvi::host {

/// Starts the child of a request with both outputs at `output`, a descriptor above 2; -1 for a child that shares the
/// streams of this process. 0, or the number of the error.
int Spawn(ChildRequest const &request, int output, pid_t &child);

} // namespace zvi::host
