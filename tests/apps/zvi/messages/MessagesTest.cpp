#include "tests/apps/zvi/Run.h"

#include "apps/zvi/messages/Catalogue.h"
#include "apps/zvi/text/Encoding.h"
#include "tests/TemporaryFolder.h"
#include "zvi/core/Utf8.h"
#include "zvi/text/MMSGFunction.h"

#include <gtest/gtest.h>

#include <sstream>

namespace zvi::app::test {

namespace {

/// Lines with a repeated key, one in another file, and odd ones.
constexpr char const *kFirst = "; comment\r\nHELLO = \"안녕\"\r\nGR = \"Größe\\n\\t1\"\r\nHELLO = \"x\"\r\nno key\r\n";
constexpr char const *kSecond = "GR = \"y\"\nLAST = \"z";

} // namespace

TEST(Messages, AreListedWithWhatIsAmiss) {
    zvi::test::TemporaryFolder const folder;
    folder.Write("a", Utf16Bytes(kFirst));
    folder.Write("b", Utf16Bytes(kSecond));
    std::string const a = folder.Native("a").string(), b = folder.Native("b").string();
    RunOutcome const run = RunZvi({"messages", a, b});
    EXPECT_EQ(run.status, 0);
    EXPECT_EQ(run.out, " = o ke\nGR = Größe\\n\\t1\nHELLO = 안녕\nLAST = \n");
    EXPECT_EQ(run.err,
              "zvi: " + a + ":4: 'HELLO' is defined again and passed over; it is defined at " + a + ":2\n" +
                  "zvi: " + a + ":5: there is no '=', so the line belongs to the empty key; write KEY = \"text\"\n" +
                  "zvi: " + a + ":5: the line does not end in a double quote; its last character is left out\n" +
                  "zvi: " + b + ":1: 'GR' is defined again and passed over; it is defined at " + a + ":3\n" +
                  "zvi: " + b + ":2: the line does not end in a double quote; its last character is left out\n");
    EXPECT_EQ(RunZvi({"messages", "--strict", a}).status, 3);
    EXPECT_EQ(RunZvi({"messages", a, "--key", "GR"}).out, "Größe\n\t1\n");
    EXPECT_NE(RunZvi({"messages", a, "--key", "HELO"}).err.find("did you mean 'HELLO'?"), std::string::npos);
    EXPECT_EQ(RunZvi({"messages", a, "--key", "HELO"}).status, 1);
    EXPECT_NE(RunZvi({"messages", "--json", a}).out.find(R"({"key":"HELLO","text":"안녕","place":{)"),
              std::string::npos);
}

TEST(Messages, AreThoseThatAProgramReads) {
    zvi::test::TemporaryFolder const folder;
    folder.Write("a", Utf16Bytes(std::string(kFirst) + "old/**/KEY = \"v\"\n" + std::string(1023, 'k') +
                                 "\nF = \"1\"\n" + std::string(1024, 'k') + "\nG = \"1\"\n"));
    std::istringstream none;
    Catalogue const catalogue = ReadCatalogue({folder.Native("a").string()}, none);
    EXPECT_EQ(catalogue.remarks.back().kind, CatalogueRemark::Kind::kLongLine);
    EXPECT_EQ(catalogue.remarks.back().place.line, 9u);
    lib::MMSGFunction::Reset();
    lib::MMSGFunction::AddFile(folder.Path("a").c_str());
    EXPECT_TRUE(lib::MMSGFunction::LoadFile());
    EXPECT_EQ(catalogue.messages.size(), 5u);
    for (auto const &[key, message] : catalogue.messages)
        EXPECT_EQ(lib::MMSGFunction::GetValue(key), message.text);
    EXPECT_FALSE(catalogue.messages.contains(L"G"));
    lib::MMSGFunction::Reset();
}

TEST(Messages, AreRefusedUnlessTheyAreUtf16) {
    struct Row {
        std::string bytes;
        char const *err;
    };
    for (Row const &row : {Row{"A = \"1\"", "is without a mark"},
                           Row{"\xEF\xBB\xBF"
                               "A = \"1\"",
                               "is UTF-8"},
                           Row{"\xFE\xFF"
                               "A",
                               "higher byte first"},
                           Row{"", "without a mark"}}) {
        RunOutcome const run = RunZvi({"messages"}, row.bytes);
        EXPECT_EQ(run.status, 1);
        EXPECT_NE(run.err.find(row.err), std::string::npos) << run.err;
    }
    EXPECT_NE(RunZvi({"messages"}, Utf16Bytes("A = \"1\"\nB") + "x").err.find("middle of a character"),
              std::string::npos);
    EXPECT_EQ(RunZvi({"messages", "nowhere"}).status, 1);
    EXPECT_EQ(RunZvi({"messages", "-", "-"}).status, 2);
}

} // namespace zvi::app::test
