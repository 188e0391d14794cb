#include "tests/diagnostics/ParsedOutput.h"

#include <gtest/gtest.h>

#include <random>
#include <string>
#include <vector>

namespace zvi::lib::test {

TEST(ProcessParser, FollowsTheArithmeticOfOverwrittenLines) {
    struct Case {
        std::string output;
        Texts texts;
    };
    Case const cases[] = {
        {"abc\r\n", {"abc\r<0 abc"}},
        {"\r\n\r\n", {"\r<0 ", "\r<0 "}},
        {"a\nb\r\n", {"a\nb\r<0 a\nb"}},
        {"10%\r20%\r\n", {"10%<0 10%", "!Same:1020%\r<-1 20%"}},
        {"10%\r20%\r30%\r\nx\r\n", {"10%<0 10%", "!Same:1020%<-1 20%", "!Same:1030%\r<-1 30%", "x\r<0 x"}},
        {"12345\b\b\bx\r\n", {"12345<0 12345", "!Same:12x\r<3 x"}},
        {"12\b\b\b\bx\r\n", {"12<0 12", "!Same:x\r<4 x"}},
        {"12345\b\b\r\r\nx\r\n", {"12345<0 12345", "x\r<0 x"}},
        // A blank piece erases, and the next piece is a line again.
        {"50%\b   \bok\b!\r\n", {"50%<0 50%", "!Same:50<1    ", "ok<1 ok", "!Same:o!\r<1 !"}},
        {"50%\r   \r\nok\r\n", {"50%<0 50%", "ok\r<0 ok"}},
        {"\rabc\r\n", {"!Same:abc\r<-1 abc"}},
        {"!Exit:3\r\n", {"!Exit:3\r<0 !Exit:3"}},
        {"a\r\nbc\r", {"a\r<0 a", "bc<0 bc"}},
        {"a\r\nbc", {"a\r<0 a"}},
        {std::string("a\0b\r\n", 5), {std::string("a\0b\r<0 a\0b", 10)}},
    };
    for (Case const &c : cases) {
        EXPECT_EQ(Parsed(c.output, {}), c.texts) << c.output;
        std::vector<std::size_t> everywhere;
        for (std::size_t i = 1; i < c.output.size(); ++i)
            everywhere.push_back(i);
        for (bool const asUnfinished : {false, true})
            EXPECT_EQ(Parsed(c.output, everywhere, 1, asUnfinished), c.texts) << c.output;
    }
}

TEST(ProcessParser, ExtendsTheSignOfEachByte) {
    diagnostics::ProcessMessages messages;
    messages.Add({}, "\xC3\xA9\x7F\xFF");
    std::wstring text;
    T_PROCESS_MSG about;
    messages.TakeNext(text, about);
    EXPECT_EQ(text, std::wstring({0xFFC3, 0xFFA9, 0x7F, 0xFFFF}));
}

/// However the output is cut, and whatever part of a segment has left the ring before.
TEST(ProcessParser, FollowsItsRulesHoweverTheOutputIsCut) {
    for (unsigned int seed = 1; seed <= 2000; ++seed) {
        std::mt19937 random(seed);
        std::string output;
        while (output.size() < 40)
            output += std::vector<std::string>{"\r\n", "\r", "\b", " ", "a", "bc", "\r\r\n", "d"}[random() % 8];
        output += "\r\n";
        std::vector<std::size_t> cuts;
        for (std::size_t i = 1; i < output.size(); ++i)
            if (random() % 3 == 0)
                cuts.push_back(i);
        ASSERT_EQ(Parsed(output, cuts, 1 + random() % 5, random() % 2 == 0), ParsedByTheRules(output))
            << "seed " << seed;
    }
}

} // namespace zvi::lib::test
