#pragma once

#include "apps/zvi/common/Console.h"

#include <string>
#include <vector>

namespace zvi::app {

/// A job of the program: `zvi NAME ...`.
struct Verb {
    char const *name;
    char const *summary; ///< one line for `zvi -h`
    /// Runs on the arguments after the name and returns the exit status. May throw InputError and UsageError, which the
    /// program tells with `zvi: `.
    int (*run)(std::vector<std::string> const &arguments, Console &console);
};

/// Every verb, in the order in which `zvi -h` lists them.
std::vector<Verb> const &Verbs();

/// Runs the program on its arguments, its own name left out, and returns the exit status (ExitStatus.h).
int RunProgram(std::vector<std::string> const &arguments, Console &console);

/// As above, on the streams of the process, with its signals taken care of. Arguments are UTF-8 on a host that knows
/// them as wide characters, and the bytes that were given on any other.
int RunProgram(std::vector<std::string> const &arguments);

} // namespace zvi::app
