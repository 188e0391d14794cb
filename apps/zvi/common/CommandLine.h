#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace zvi::app {

/// The words of a verb's command line that are no options, and whether help was asked for.
struct ParsedWords {
    std::vector<std::string> words;
    bool wantsHelp = false;
};

/// Reads the arguments of a verb whose words may begin with a minus, such as "-5+3": only "-h", words that begin with
/// "--" and the values that such options need go to `app`; behind a lone "--" everything is a word.
/// Throws UsageError for an unknown option, with the nearest name, and for values that the options refuse.
ParsedWords ParseCommandLine(CLI::App &app, std::vector<std::string> const &arguments);

} // namespace zvi::app
