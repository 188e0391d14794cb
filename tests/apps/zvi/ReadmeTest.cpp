#include <gtest/gtest.h>

#include <cstdio>
#include <fstream>
#include <string>
#include <vector>

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
        if (line.starts_with("```"))
            inBlock = line == "```console";
        else if (inBlock && line.starts_with("$ "))
            examples.push_back({line.substr(2), ""});
        else if (inBlock)
            examples.back().printed += line + "\n";
    }
    return examples;
}

/// What the shell prints on both streams, with `zvi` being this build's program.
std::string Printed(std::string const &command) {
    std::string const script = "zvi() { \"" ZVI_PROGRAM "\" \"$@\"; }; { " + command + "; } 2>&1";
    std::string printed;
    std::FILE *const pipe = popen(script.c_str(), "r");
    for (int c = std::fgetc(pipe); c != EOF; c = std::fgetc(pipe))
        printed += static_cast<char>(c);
    pclose(pipe);
    return printed;
}

} // namespace

TEST(Readme, ItsExamplesPrintWhatItSays) {
    std::vector<Example> const examples = Examples();
    EXPECT_GE(examples.size(), 10u);
    for (Example const &example : examples)
        EXPECT_EQ(Printed(example.command), example.printed) << example.command;
}
