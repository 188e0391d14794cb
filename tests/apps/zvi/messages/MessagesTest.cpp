#include "tests/apps/zvi/Run.h"

#include "apps/zvi/text/Encoding.h"
#include "tests/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <utility>

namespace zvi::app::test {

TEST(Messages, AreListedWithWhatIsAmiss) {
    zvi::test::TemporaryFolder const folder;
    folder.Write("a",
                 Utf16Bytes("; comment\r\nHELLO = \"안녕\"\r\nGR = \"Größe\\n\\t1\"\r\nHELLO = \"x\"\r\nno key\r\n"));
    folder.Write("b", Utf16Bytes("GR = \"y\"\nold/**/LAST = \"z\n" + std::string(1024, 'k') + "\nG = \"1\"\n"));
    std::string const a = folder.Native("a").string(), b = folder.Native("b").string();
    RunOutcome const run = RunZvi({"messages", a, b});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, " = o ke\nGR = Größe\\n\\t1\nHELLO = 안녕\nLAST = \n");
    EXPECT_EQ(
        run.err,
        "zvi: " + a + ":4: 'HELLO' is defined again and passed over; it is defined at " + a + ":2\n" + "zvi: " + a +
            ":5: there is no '=', so the line belongs to the empty key; write KEY = \"text\"\n" + "zvi: " + a +
            ":5: the line does not end in a double quote; its last character is left out\n" + "zvi: " + b +
            ":1: 'GR' is defined again and passed over; it is defined at " + a + ":3\n" + "zvi: " + b +
            ":2: the line does not end in a double quote; its last character is left out\n" + "zvi: " + b +
            ":3: a line of more than 1023 characters ends the file here; nothing from it on is read, so shorten it\n");
    EXPECT_EQ(RunZvi({"messages", "--strict", a}).status, 3);
    EXPECT_EQ(RunZvi({"messages", a, "--key", "GR"}).out, "Größe\n\t1\n");
    EXPECT_NE(RunZvi({"messages", a, "--key", "HELO"}).err.find("did you mean 'HELLO'?"), std::string::npos);
    EXPECT_EQ(RunZvi({"messages", a, "--key", "HELO"}).status, 1);
    EXPECT_NE(RunZvi({"messages", "--json", a}).out.find(R"({"key":"HELLO","text":"안녕","place":{)"),
              std::string::npos);
}

TEST(Messages, AreRefusedUnlessTheyAreUtf16) {
    using Row = std::pair<std::string, char const *>;
    for (auto const &[bytes, err] : {Row{"A = \"1\"", "is without a mark"}, Row{"\xEF\xBB\xBFx", "is UTF-8"},
                                     Row{"\xFE\xFFx", "higher byte first"}, Row{"", "without a mark"}}) {
        RunOutcome const run = RunZvi({"messages"}, bytes);
        EXPECT_EQ(run.status, 1);
        EXPECT_NE(run.err.find(err), std::string::npos) << run.err;
    }
    for (std::string const text : {"A = \"1\"\nB", "A = \"1\"\n"})
        EXPECT_NE(RunZvi({"messages"}, Utf16Bytes(text) + "x").err.find("middle of a character"), std::string::npos);
    EXPECT_EQ(RunZvi({"messages", "nowhere"}).status, 1);
    EXPECT_EQ(RunZvi({"messages", "-", "-"}).status, 2);
}

} // namespace zvi::app::test
