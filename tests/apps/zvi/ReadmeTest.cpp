#include "tests/apps/zvi/Run.h"

#include <gtest/gtest.h>

#include <fstream>
#include <regex>
#include <string>
#include <vector>

namespace zvi::app::test {

namespace {

/// A command of the README and what it says the command prints.
struct Example {
    std::string command;
    std::string printed;
};

/// The lines behind "$ " in ```console blocks, each with the lines up to the next one.
std::vector<Example> Examples() {
    std::ifstream readme(ZVI_SOURCE_DIR "/README.md");
    std::vector<Example> examples;
    bool inBlock = false;
    for (std::string line; std::getline(readme, line);) {
        if (line.starts_with("```")) {
            inBlock = line == "```console";
        } else if (inBlock && line.starts_with("$ ")) {
            examples.push_back({line.substr(2), ""});
        } else if (inBlock) {
            examples.back().printed += line + "\n";
        }
    }
    return examples;
}

/// The words of a command as a shell would split it: blanks part them unless they stand between single quotes.
std::vector<std::string> WordsOf(std::string const &command) {
    static std::regex const word("'([^']*)'|[^' ]+");
    std::vector<std::string> words;
    for (std::sregex_iterator at(command.begin(), command.end(), word), end; at != end; ++at)
        words.push_back((*at)[1].matched ? at->str(1) : at->str());
    return words;
}

/// What the program prints, the messages behind the results.
std::string Printed(std::string const &command) {
    std::vector<std::string> const words = WordsOf(command);
    EXPECT_EQ(words.front(), "zvi") << command;
    RunOutcome const run = RunZvi({words.begin() + 1, words.end()});
    return run.out + run.err;
}

} // namespace

TEST(Readme, ItsExamplesPrintWhatItSays) {
    std::vector<Example> const examples = Examples();
    EXPECT_GE(examples.size(), 10u);
    for (Example const &example : examples) {
        EXPECT_EQ(Printed(example.command), example.printed) << example.command;
    }
}

} // namespace zvi::app::test
