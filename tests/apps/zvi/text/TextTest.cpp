#include "tests/apps/zvi/Run.h"

#include "tests/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <array>
#include <utility>

namespace zvi::app::test {

using namespace std::string_literals;

namespace {

/// Korean, German and a character beyond the basic plane, in every encoding that is named.
constexpr char const *kText = "한ü😀\r\nx\n";

/// A file, and the name of its encoding.
using Row = std::pair<std::string, char const *>;

/// The characters in units of so many bytes, behind a mark.
std::string Encoded(std::vector<unsigned> const &units, std::size_t size, bool isLittle) {
    std::string bytes;
    for (unsigned const unit : units)
        for (std::size_t i = 0; i < size; ++i)
            bytes += static_cast<char>(unit >> 8 * (isLittle ? i : size - 1 - i));
    return bytes;
}

std::vector<Row> Rows() {
    std::vector<unsigned> const two{0xFEFF, 0xD55C, 0xFC, 0xD83D, 0xDE00, '\r', '\n', 'x', '\n'};
    std::vector<unsigned> const four{0xFEFF, 0xD55C, 0xFC, 0x1F600, '\r', '\n', 'x', '\n'};
    return {{kText, "UTF-8;"},
            {std::string("\xEF\xBB\xBF") + kText, "UTF-8, with its mark;"},
            {Encoded(two, 2, true), "UTF-16, lower byte first, with its mark;"},
            {Encoded(two, 2, false), "UTF-16, higher byte first, with its mark;"},
            {Encoded(four, 4, true), "UTF-32, lower byte first, with its mark;"},
            {Encoded(four, 4, false), "UTF-32, higher byte first, with its mark;"}};
}

} // namespace

TEST(Text, IsShownAndConvertedWhateverItsEncoding) {
    std::string const utf16 = Rows()[2].first;
    for (auto const &[bytes, encoding] : Rows()) {
        RunOutcome const shown = RunZvi({"text"}, bytes);
        EXPECT_EQ(shown.out, "한ü😀\nx\n") << encoding;
        EXPECT_EQ(shown.err, std::string("zvi: standard input: ") + encoding + " 2 lines, LF and CR LF\n");
        EXPECT_EQ(RunZvi({"text", "--to", "utf-8"}, bytes).out, kText) << encoding;
        EXPECT_EQ(RunZvi({"text", "--to", "UTF-16"}, bytes).out, utf16) << encoding;
    }
    EXPECT_EQ(RunZvi({"text", "--from", "CP1252"}, "gr\xF6\xDFz").out, "größz\n");
    EXPECT_EQ(RunZvi({"text"}, "a\0b\0\n\0"s).out, "ab\n") << "UTF-16 without a mark";
    EXPECT_EQ(RunZvi({"text"}, "a\0\x1B[1m\r\xC2\x9B"s).out, "a␀␛[1m\n\xEF\xBF\xBD\n");
    EXPECT_EQ(RunZvi({"text"}, "").out, "");
}

TEST(Text, IsNotConvertedWithLossUnlessThatIsAskedFor) {
    using Broken = std::array<std::string, 3>;
    for (auto const &[bytes, err, lossy] :
         {Broken{"a\nb\xFF", ":2: 1 place is no character", "a\nb\xEF\xBF\xBD"},
          Broken{"\xFF\xFE\x3D\xD8x\0"s, ":1: 1 place", "\xEF\xBF\xBDx"},
          Broken{"\xFF\xFEx\0\0\xDC\x3D\xD8y"s, ":1: 3 places", "x\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
          Broken{"\0\0\xFE\xFF\0\x11\0\0\0"s, ":1: 2 places", "\xEF\xBF\xBD\xEF\xBF\xBD"}}) {
        RunOutcome const refused = RunZvi({"text", "--to", "utf-8"}, bytes);
        EXPECT_EQ(refused.status, 1);
        EXPECT_EQ(refused.out, "");
        EXPECT_NE(refused.err.find(err), std::string::npos) << refused.err;
        EXPECT_EQ(RunZvi({"text", "--to", "utf-8", "--lossy"}, bytes).out, lossy);
        EXPECT_EQ(RunZvi({"text"}, bytes).status, 0);
    }
}

TEST(Text, GoesToAFileAndToJson) {
    zvi::test::TemporaryFolder const folder;
    std::string const out = folder.Native("out").string();
    EXPECT_EQ(RunZvi({"text", "--to", "utf-16", "--out", out}, kText).status, 0);
    EXPECT_EQ(folder.Read("out"), Rows()[2].first);
    EXPECT_EQ(RunZvi({"text", "--json", out}).out,
              R"({"schema":1,"encoding":"UTF-16, lower byte first","mark":true,"lines":2,"lf":1,"crlf":1,"cr":0,)"
              R"("lastLineEnded":true,"broken":0,"firstBrokenLine":0})"
              "\n");
    using Words = std::vector<std::string>;
    for (Words const &words :
         {Words{"text", "--to", "utf8"}, Words{"text", "--out", "x"}, Words{"text", "--lossy"}, Words{"text", "a", "b"},
          Words{"text", "--json", "--to", "utf-8"}, Words{"text", "--from", "CP4711"}})
        EXPECT_EQ(RunZvi(words, "x").status, 2) << words[1];
    EXPECT_EQ(RunZvi({"text", "nowhere"}).status, 1);
}

} // namespace zvi::app::test
