#pragma once

#include <string>

namespace zvi::app {

/// Whether standard input (0), standard output (1) or standard error (2) is a terminal.
bool IsTerminal(int stream);

/// Number of this process, for names that no other process uses.
long ProcessNumber();

/// Lets a write to a closed pipe fail instead of ending the process, and, when the user or the
/// system ends the process, does what RemoveOnInterrupt and CallOnInterrupt were asked for last.
void InstallSignalHandlers();

/// From now on an interrupt removes this file; an empty path withdraws that. One file at a time.
void RemoveOnInterrupt(std::string const &path);

/// From now on an interrupt calls `action`, which may do only what a signal handler may; null withdraws that.
void CallOnInterrupt(void (*action)());

/// Whether to colour what goes to a terminal stream: `choice` is "always", "never" or "auto"; "auto" colours
/// on a terminal unless the environment variable NO_COLOR is set and not empty.
bool WantsColor(std::string const &choice, bool isTerminal);

} // namespace zvi::app
