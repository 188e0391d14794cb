#pragma once

#include "zvi/Export.h"

namespace zvi::host {

/// Makes the thread that calls it one that works for others: the host delivers no signals to it, as long as a program
/// that handles the ends of its children (SIGCHLD) does so from before this call on.
ZVI_API void BeginWorkerThread();

/// Lets the priority of the calling thread differ from the usual one by so many steps, from -2 to 2, as far as the host
/// lets it. On POSIX programs that it starts from now on inherit that.
ZVI_API void SetThreadPriority(int priority);

/// Whether the process is ending so far that all its other threads are gone, as on Windows when libraries are unloaded
/// at its end.
ZVI_API bool AreOtherThreadsGone();

} // namespace zvi::host
