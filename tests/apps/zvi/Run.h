#pragma once

#include "apps/zvi/Program.h"

#include <sstream>
#include <string>
#include <vector>

namespace zvi::app::test {

/// What a run of the program left behind.
struct RunOutcome {
    int status = 0;
    std::string out;
    std::string err;
};

/// Runs the program on these words behind its name, with this on standard input; no stream is a terminal.
inline RunOutcome RunZvi(std::vector<std::string> const &arguments, std::string const &input = "") {
    std::istringstream in(input);
    std::ostringstream out;
    std::ostringstream err;
    Console console{in, out, err};
    int const status = RunProgram(arguments, console);
    return {status, out.str(), err.str()};
}

} // namespace zvi::app::test
