#include "tests/diagnostics/ParsedOutput.h"

#include <gtest/gtest.h>

#include <random>
#include <string>

namespace zvi::lib::test {

TEST(ProcessParser, FollowsTheArithmeticOfOverwrittenLines) {
    std::pair<std::string, Texts> const cases[] = {
        {"abc\r\n", {"abc\r<0 abc"}},
        {"\r\n\r\n", {"\r<0 ", "\r<0 "}},
        {"a\nb\r\n", {"a\nb\r<0 a\nb"}},
        {"10%\r20%\r30%\r\nx\r\n", {"10%<0 10%", "!Same:1020%<-1 20%", "!Same:1030%\r<-1 30%", "x\r<0 x"}},
        {"12345\b\b\bx\r\n", {"12345<0 12345", "!Same:12x\r<3 x"}},
        {"12\b\b\b\bx\r\n", {"12<0 12", "!Same:x\r<4 x"}},
        {"12345\b\b\r\r\nx\r\n", {"12345<0 12345", "x\r<0 x"}},
        // A blank piece erases, and the next piece is a line again.
        {"50%\b   \bok\b!\r\n", {"50%<0 50%", "!Same:50<1    ", "ok<1 ok", "!Same:o!\r<1 !"}},
        {"50%\r   \r\nok\r\n", {"50%<0 50%", "ok\r<0 ok"}},
        {"50%\b   \b\bok\r\nx\r\n", {"50%<0 50%", "!Same:50<1    ", "!Same:5ok\r<2 ok", "x\r<0 x"}},
        {"\rabc\r\n", {"!Same:abc\r<-1 abc"}},
        {"\b\rab\bc\b\r\n\r\n", {"ab<-1 ab", "!Same:ac<1 c", "\r<0 "}},
        {"!Exit:3\r\n", {"!Exit:3\r<0 !Exit:3"}},
        {"a\r\nbc\r", {"a\r<0 a", "bc<0 bc"}},
        {"a\r\nbc", {"a\r<0 a"}},
        {std::string("a\0\xE9\r\n", 5), {std::string("a\0\xE9\r<0 a\0\xE9", 10)}},
    };
    for (auto const &[output, texts] : cases)
        EXPECT_EQ(Parsed(output, 100), texts) << output;
}

/// And whatever part of a segment has left the ring before.
TEST(ProcessParser, TellsTheSameHoweverTheOutputIsCut) {
    for (unsigned int seed = 1; seed <= 2000; ++seed) {
        std::mt19937 random(seed);
        std::string output;
        while (output.size() < 40)
            output += std::vector<std::string>{"\r\n", "\r", "\b", " ", "a", "bc", "\r\r\n", "\n"}[random() % 8];
        output += "\r\n";
        ASSERT_EQ(Parsed(output, seed % 7 + 1, 1 + random() % 5, random() % 2 == 0), Parsed(output, 100))
            << "seed " << seed;
    }
}

} // namespace zvi::lib::test
