#pragma once

#include <memory>
#include <optional>
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

/// The options of a verb. Each is told with its name, such as "--join", what gets its value, what the help calls the
/// value, and its line in the help.
class CommandLine {
public:
    /// Of a verb such as "zvi domains".
    CommandLine(std::string const &verb, std::string const &description);
    ~CommandLine();
    CommandLine(CommandLine const &) = delete;
    CommandLine &operator=(CommandLine const &) = delete;

    /// Names a word, or as many as there are, for the sake of the help.
    void AddWord(std::string const &name, std::string const &description);
    void AddWords(std::string const &name, std::string const &description);
    void AddFlag(std::string const &name, bool &isGiven, std::string const &description);
    void AddOption(std::string const &name, std::string &value, std::string const &valueName,
                   std::string const &description);
    void AddOption(std::string const &name, std::optional<std::string> &value, std::string const &valueName,
                   std::string const &description);
    /// A number from 0 to `most`.
    void AddNumber(std::string const &name, std::optional<double> &value, double most, std::string const &valueName,
                   std::string const &description);
    /// One that may be given again.
    void AddList(std::string const &name, std::vector<std::string> &values, std::string const &valueName,
                 std::string const &description);

    /// Reads the arguments: "-h", words that begin with "--" and the values that such options need are options; behind
    /// a lone "--" everything is a word. Throws UsageError for an unknown option, with the nearest name, for one whose
    /// value is missing or refused, and for one that is given again though it holds one value.
    ParsedWords Parse(std::vector<std::string> const &arguments, CommandLineForm const &form);

private:
    struct Grammar;

    std::unique_ptr<Grammar> m_grammar;
};

} // namespace zvi::app
