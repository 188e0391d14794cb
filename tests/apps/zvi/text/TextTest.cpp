#include "tests/apps/zvi/Run.h"

#include "tests/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace zvi::app::test {

namespace {

/// Korean, German and a character beyond the basic plane, in every encoding that is named.
constexpr char const *kText = "한ü😀\r\nx\n";

struct Row {
    std::string bytes;
    char const *encoding;
};

std::string Zeros(char const *bytes, std::size_t size) {
    return {bytes, size};
}

std::vector<Row> Rows() {
    std::string const little = Zeros("\x5C\xD5\xFC\0\x3D\xD8\0\xDE\r\0\n\0x\0\n\0", 16);
    std::string big;
    for (std::size_t i = 0; i < little.size(); i += 2)
        big += {little[i + 1], little[i]};
    std::string const bigger = Zeros("\0\0\xD5\x5C\0\0\0\xFC\0\1\xF6\0\0\0\0\r\0\0\0\n\0\0\0x\0\0\0\n", 28);
    std::string smaller;
    for (std::size_t i = 0; i < bigger.size(); i += 4)
        smaller += {bigger[i + 3], bigger[i + 2], bigger[i + 1], bigger[i]};
    return {{kText, "UTF-8;"},
            {std::string("\xEF\xBB\xBF") + kText, "UTF-8, with its mark;"},
            {"\xFF\xFE" + little, "UTF-16, lower byte first, with its mark;"},
            {"\xFE\xFF" + big, "UTF-16, higher byte first, with its mark;"},
            {Zeros("\xFF\xFE\0\0", 4) + smaller, "UTF-32, lower byte first, with its mark;"},
            {Zeros("\0\0\xFE\xFF", 4) + bigger, "UTF-32, higher byte first, with its mark;"}};
}

} // namespace

TEST(Text, IsShownAndConvertedWhateverItsEncoding) {
    std::string const utf16 = Rows()[2].bytes;
    for (Row const &row : Rows()) {
        RunOutcome const shown = RunZvi({"text"}, row.bytes);
        EXPECT_EQ(shown.out, "한ü😀\nx\n") << row.encoding;
        EXPECT_EQ(shown.err, std::string("zvi: standard input: ") + row.encoding + " 2 lines, LF and CR LF\n");
        EXPECT_EQ(RunZvi({"text", "--to", "utf-8"}, row.bytes).out, kText) << row.encoding;
        EXPECT_EQ(RunZvi({"text", "--to", "UTF-16"}, row.bytes).out, utf16) << row.encoding;
    }
    EXPECT_EQ(RunZvi({"text", "--from", "CP1252"}, "Gr\xF6\xDF"
                                                   "e")
                  .out,
              "Größe\n");
    EXPECT_EQ(RunZvi({"text"}, Zeros("a\0b\0\n\0", 6)).out, "ab\n") << "UTF-16 without a mark";
    EXPECT_EQ(RunZvi({"text"}, Zeros("a\0\x1B[1m\r\xC2\x9B", 9)).out, "a␀␛[1m\n\xEF\xBF\xBD\n");
    EXPECT_EQ(RunZvi({"text"}, "").out, "");
}

TEST(Text, IsNotConvertedWithLossUnlessThatIsAskedFor) {
    struct Broken {
        std::string bytes;
        char const *err;
        char const *lossy;
    };
    for (Broken const &row :
         {Broken{"a\nb\xFF", ":2: 1 place is no character", "a\nb\xEF\xBF\xBD"},
          Broken{Zeros("\xFF\xFE\x3D\xD8x\0", 6), ":1: 1 place", "\xEF\xBF\xBDx"},
          Broken{Zeros("\xFF\xFEx\0\0\xDC\x3D\xD8y", 9), ":1: 3 places", "x\xEF\xBF\xBD\xEF\xBF\xBD\xEF\xBF\xBD"},
          Broken{Zeros("\0\0\xFE\xFF\0\x11\0\0\0", 9), ":1: 2 places", "\xEF\xBF\xBD\xEF\xBF\xBD"}}) {
        RunOutcome const refused = RunZvi({"text", "--to", "utf-8"}, row.bytes);
        EXPECT_EQ(refused.status, 1);
        EXPECT_EQ(refused.out, "");
        EXPECT_NE(refused.err.find(row.err), std::string::npos) << refused.err;
        EXPECT_EQ(RunZvi({"text", "--to", "utf-8", "--lossy"}, row.bytes).out, row.lossy);
        EXPECT_EQ(RunZvi({"text"}, row.bytes).status, 0);
    }
}

TEST(Text, GoesToAFileAndToJson) {
    zvi::test::TemporaryFolder const folder;
    std::string const out = folder.Native("out").string();
    EXPECT_EQ(RunZvi({"text", "--to", "utf-16", "--out", out}, kText).status, 0);
    EXPECT_EQ(folder.Read("out"), Rows()[2].bytes);
    EXPECT_EQ(RunZvi({"text", "--json", out}).out,
              R"({"schema":1,"encoding":"UTF-16, lower byte first","mark":true,"lines":2,"lf":1,"crlf":1,"cr":0,)"
              R"("lastLineEnded":true,"broken":0,"firstBrokenLine":0})"
              "\n");
    for (std::vector<std::string> const &words : {std::vector<std::string>{"text", "--to", "utf8"},
                                                  {"text", "--out", "x"},
                                                  {"text", "--lossy"},
                                                  {"text", "--json", "--to", "utf-8"},
                                                  {"text", "a", "b"},
                                                  {"text", "--from", "CP4711"}})
        EXPECT_EQ(RunZvi(words, "x").status, 2) << words[1];
    EXPECT_EQ(RunZvi({"text", "nowhere"}).status, 1);
}

} // namespace zvi::app::test
