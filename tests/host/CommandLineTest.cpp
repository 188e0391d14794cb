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
    Words words;
    for (char8_t const *word : {u8"plain", u8"", u8"a b", u8"\t\n", u8"'", u8"\"", u8"it's \"quoted\"", u8"back\\slash",
                                u8"\\", u8"\\\\\"", u8"end\\", u8"a b\\", u8"$HOME", u8"*?[a]{b,c}~", u8"#;&|<>()`!",
                                u8"-o=C:\\a b\\c.txt", u8"\u00E9 \u8A08\U0001F600"})
        words.emplace_back(word);
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
    std::pair<wchar_t const *, Words> const cases[] = {
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
        EXPECT_EQ(Split(line), words) << testing::PrintToString(Split(line));
}
#endif
