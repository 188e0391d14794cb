#pragma once

#include <CLI/CLI.hpp>

#include <string>
#include <vector>

namespace zvi::app {

/// What a verb's command line is, beside its options.
struct CommandLineForm {
    std::string examples; ///< what its help begins with
    std::string footer;   ///< what its help ends with
    /// Whether a word such as "-5+3" is no option.
    bool takesMinusWords = true;
    /// Whether everything from the first word on is a word.
    bool optionsComeFirst = false;
};

/// The words of a verb's command line that are no options, or its help.
struct ParsedWords {
    std::vector<std::string> words;
    std::string help; ///< not empty: help was asked for, and this is it
};

/// Reads the arguments of a verb: "-h", words that begin with "--" and the values that such options need go to `app`,
/// which names its positional arguments for the sake of its help alone; behind a lone "--" everything is a word.
/// Throws UsageError for an unknown option, with the nearest name, for one whose value is missing or refused, and for
/// one that is given again though it holds one value.
ParsedWords ParseCommandLine(CLI::App &app, std::vector<std::string> const &arguments, CommandLineForm const &form);

} // namespace zvi::app
