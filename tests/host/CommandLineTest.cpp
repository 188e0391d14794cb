#include "zvi/host/CommandLine.h"

#include <gtest/gtest.h>

namespace host = zvi::host;

namespace {

using Words = std::vector<std::filesystem::path>;

Words Split(std::wstring const &arguments) {
    std::vector<host::NativeWord> const words = host::ArgumentWords(arguments);
    return {words.begin(), words.end()};
}

} // namespace

TEST(CommandLine, TakesQuotedWordsApartAgain) {
    Words words = {"plain",
                   "",
                   "a b",
                   "\t\n",
                   "'",
                   "\"",
                   "it's \"quoted\"",
                   "back\\slash",
                   "\\",
                   "\\\\\"",
                   "end\\",
                   "a b\\",
                   "$HOME",
                   "*?[a]{b,c}~",
                   "#;&|<>()`!",
                   "-o=C:\\a b\\c.txt",
                   std::filesystem::path(u8"\u00E9 \u8A08\U0001F600")};
#ifndef _WIN32
    words.emplace_back("no \xFF utf\xC3");
#endif
    std::wstring line;
    for (std::filesystem::path const &word : words)
        line += L" " + host::QuotedArgument(word.native());
    EXPECT_EQ(Split(line), words);
}

#ifndef _WIN32
TEST(CommandLine, FollowsTheRulesOfQuotesAndBackslashes) {
    struct Case {
        wchar_t const *line;
        Words words;
    };
    Case const cases[] = {
        {L"", {}},
        {L" \t\n", {}},
        {L"a  b\tc\nd", {"a", "b", "c", "d"}},
        {L"'a b'c\"d e\"", {"a bcd e"}},
        {L"'' \"\"", {"", ""}},
        {L"'a\\b\"' \"a\\b\\\"\\$\\`\\\\'\"", {"a\\b\"", "a\\b\"$`\\'"}},
        {L"a\\ b \\'c \\\\ d\\\ne \"f\\\ng\"", {"a b", "'c", "\\", "de", "fg"}},
        {L"$HOME *", {"$HOME", "*"}},
        {L"'a b", {"a b"}},
        {L"\"a b", {"a b"}},
        {L"a\\", {"a\\"}},
    };
    for (Case const &c : cases)
        EXPECT_EQ(Split(c.line), c.words) << testing::PrintToString(Split(c.line));
}
#endif
