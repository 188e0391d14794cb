#include "zvi/host/CommandLine.h"

#include <gtest/gtest.h>

namespace host = zvi::host;

TEST(CommandLine, TakesQuotedWordsApartAgain) {
    std::vector<host::NativeWord> words;
    for (char8_t const *word : {u8"plain", u8"", u8"a b", u8"\t\n", u8"'", u8"\"", u8"it's \"quoted\"", u8"back\\slash",
                                u8"\\", u8"\\\\\"", u8"end\\", u8"a b\\", u8"$HOME", u8"*?[a]{b,c}~", u8"#;&|<>()`!",
                                u8"-o=C:\\a b\\c.txt", u8"\u00E9 \u8A08\U0001F600"})
        words.push_back(std::filesystem::path(word).native());
#ifndef _WIN32
    words.emplace_back("no \xFF utf\xC3");
#endif
    std::wstring line;
    for (host::NativeWord const &word : words)
        line += L" " + host::QuotedArgument(word);
    EXPECT_EQ(host::ArgumentWords(line), words);
}

#ifndef _WIN32
TEST(CommandLine, FollowsTheRulesOfQuotesAndBackslashes) {
    std::pair<wchar_t const *, std::vector<std::string>> const cases[] = {
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
    for (auto const &[line, words] : cases)
        EXPECT_EQ(host::ArgumentWords(line), words);
}
#endif
