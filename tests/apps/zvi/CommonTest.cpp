#include "apps/zvi/common/NearestName.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/OutputFile.h"
#include "apps/zvi/common/TextDecoding.h"
#include "zvi/core/Utf8.h"

#include <gtest/gtest.h>

#include <cmath>
#include <filesystem>
#include <fstream>
#include <iterator>

namespace zvi::app {

TEST(NearestName, FindsSlipsAndNothingElse) {
    EXPECT_EQ(EditDistance("", "abc"), 3u);
    EXPECT_EQ(EditDistance("kitten", "sitting"), 3u);
    EXPECT_EQ(EditDistance("jion", "join"), 1u);
    std::vector<std::string> const names = {"--join", "--json", "--svg", "--keep-duplicates"};
    EXPECT_EQ(NearestName("--jion", names), "--join");
    EXPECT_EQ(NearestName("--jsn", names), "--json");
    EXPECT_EQ(NearestName("--keep-duplicate", names), "--keep-duplicates");
    EXPECT_EQ(NearestName("--colour", names), "");
    EXPECT_EQ(NearestName("X", {"0"}), "");
    EXPECT_EQ(NearestName(std::string(100000, 'x'), names), "");
}

TEST(NumberText, ReadsAndWritesNumbersWithoutALocale) {
    EXPECT_EQ(ParseNumber(" +1.5e3\r"), 1500.0);
    EXPECT_EQ(ParseNumber("-.5"), -0.5);
    EXPECT_EQ(ParseNumber("1."), 1.0);
    for (char const *text : {"", "+", "+-1", "1,5", "1 2", "nan", "inf", "0x10", "1e400", "--1"})
        EXPECT_FALSE(ParseNumber(text)) << text;
    EXPECT_EQ(ParseInteger("  0"), 0);
    EXPECT_FALSE(ParseInteger("1.0"));
    EXPECT_EQ(ExactNumber(0.1), "0.1");
    EXPECT_EQ(ExactNumber(-0.0), "0");
    EXPECT_EQ(*ParseNumber(ExactNumber(std::nextafter(1.0, 2.0))), std::nextafter(1.0, 2.0));
    EXPECT_EQ(ShortNumber(1.0 / 3.0, 4), "0.3333");
}

TEST(OutputFile, IsThereWholeOrNotAtAll) {
    namespace fs = std::filesystem;
    fs::path const folder = fs::path(testing::TempDir()) / "zvi_output_file";
    fs::remove_all(folder);
    fs::create_directories(folder / "sub");
    fs::path const file = folder / "out.txt";
    auto const content = [&file] {
        std::ifstream stream(file);
        return std::string(std::istreambuf_iterator<char>(stream), {});
    };
    EXPECT_EQ(WriteWholeFile(file.string(), "first"), "");
    EXPECT_EQ(WriteWholeFile(file.string(), "second"), "");
    EXPECT_EQ(content(), "second");
    EXPECT_NE(WriteWholeFile((folder / "sub").string(), "x"), "");
    EXPECT_NE(WriteWholeFile((folder / "none" / "out.txt").string(), "x"), "");
    EXPECT_EQ(std::distance(fs::directory_iterator(folder), fs::directory_iterator()), 2);

    std::error_code noLinks; // such as a host on which links need a privilege
    fs::create_symlink("out.txt", folder / "link", noLinks);
    if (noLinks)
        GTEST_SKIP() << "the part about links: " << noLinks.message();
    EXPECT_EQ(WriteWholeFile((folder / "link").string(), "third"), "");
    EXPECT_EQ(content(), "third");
    EXPECT_TRUE(fs::is_symlink(folder / "link"));
}

TEST(TextDecoding, GivesWellFormedUtf8) {
    struct Case {
        char const *text;
        char const *codePage;
        char const *decoded;
    };
    Case const cases[] = {
        {"WALLS", "ANSI_1252", "WALLS"},
        {"T\xFCr", "ANSI_1252", "T\xC3\xBCr"},
        {"\x80", "", "\xE2\x82\xAC"},
        {"\x83\x89", "ansi_932", "\xE3\x83\xA9"},
        {"T\xC3\xBCr", "ANSI_1252", "T\xC3\xBCr"}, // UTF-8 in spite of what the drawing says
        {"T\xFCr", "no such page", "T\xC3\xBCr"},
        {"\\U+00FCber \\U+12", "",
         "\xC3\xBC"
         "ber \\U+12"},
        {"\\U+D800", "", "\xEF\xBF\xBD"},
        {"a\x01z", "", "a\xEF\xBF\xBDz"},
    };
    for (Case const &c : cases)
        EXPECT_EQ(DecodeDxfText(c.text, c.codePage), c.decoded) << c.decoded;
    for (char const *bad : {"\xC0\x80", "\xED\xA0\x80", "\xF5\x80\x80\x80", "\xE2\x82", "\x80", "\xF0\x80\x80\x80"}) {
        EXPECT_FALSE(lib::IsUtf8(bad));
        EXPECT_TRUE(lib::IsUtf8(DecodeDxfText(bad, "ANSI_1252")));
    }
}

} // namespace zvi::app
