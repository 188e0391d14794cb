#pragma once

#include <filesystem>
#include <string>

namespace zvi::app {

/// Lets the standard streams of C++ carry bytes as they are, whole through every pipe (StandardStreams.h), and UTF-8 to
/// and from a terminal whatever that speaks. Call it once, before anything is read or written.
void OpenStandardStreams();

/// Whether standard input (0), standard output (1) or standard error (2) is a terminal; an output counts as one only
/// if it knows the escape sequences for colours.
bool IsTerminal(int stream);

/// What a user types at a terminal to say that the input ends.
char const *EndOfInputKeys();

/// Lets a write to a closed pipe fail instead of ending the process, and, when the user or the system ends the process,
/// does what RemoveOnInterrupt was asked for last.
void InstallSignalHandlers();

/// From now on an interrupt (Ctrl-C) is counted, and a request to end is noted, instead of ending the program; what the
/// one who started the program has it ignore stays ignored.
void CountInterrupts();
int InterruptCount();
/// Exit status of a program that ends on a request; 0 while there was none.
int RequestedEndStatus();

/// From now on an interrupt removes this file; an empty path withdraws that. One file at a time.
void RemoveOnInterrupt(std::filesystem::path const &path);

/// Whether to colour what goes to a terminal stream: `choice` is "always", "never" or "auto"; "auto" colours on a
/// terminal unless the environment variable NO_COLOR is set and not empty.
bool WantsColor(std::string const &choice, bool isTerminal);

} // namespace zvi::app
