#pragma once

namespace zvi::app {

/// Runs the program on its arguments and returns the exit status.
int RunProgram(int argc, char **argv);

} // namespace zvi::app
