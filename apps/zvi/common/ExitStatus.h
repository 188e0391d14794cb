#pragma once

namespace zvi::app {

/// What the program returns to its caller. The numbers are the same for every verb.
enum ExitStatus : int {
    kExitDone = 0,     ///< done; a reader that closed the pipe early counts as done
    kExitBadInput = 1, ///< the input cannot be read or used
    kExitBadUsage = 2, ///< wrong options or arguments
    kExitLeftOver = 3, ///< done, but --strict was given and something was left over
    kExitOwnFault = 4, ///< a fault of the program itself
};

} // namespace zvi::app
