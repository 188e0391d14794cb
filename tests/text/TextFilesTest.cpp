#include "tests/TemporaryFolder.h"
#include "zvi/host/CodePage.h"
#include "zvi/host/Files.h"
#include "zvi/text/CMbcsTextFileWithBuffer.h"
#include "zvi/text/CTextFileWithBuffer.h"
#include "zvi/text/CUnicodeTextFileWithBuffer.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <string>
#include <string_view>
#include <vector>

namespace zvi::lib::test {

namespace {

using Lines = std::vector<std::wstring>;

std::wstring TextOf(CString const &text) {
    return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

/// Every line, the rest behind the last line end last, as `ReadLine` gives them.
template <typename File>
Lines LinesOf(File &file) {
    Lines lines;
    CString line;
    while (file.ReadLine(line))
        lines.push_back(TextOf(line));
    lines.push_back(TextOf(line));
    return lines;
}

/// The same in pieces of at most `size - 1` units, put together again.
template <typename File>
std::wstring PiecesOf(File &file, int size) {
    std::vector<wchar_t> buffer(static_cast<std::size_t>(size));
    std::wstring all;
    while (file.ReadString(buffer.data(), size))
        all += buffer.data();
    return all + buffer.data();
}

/// UTF-16 text, the lower byte first, of characters of one unit.
std::string Utf16(std::wstring_view units) {
    std::string bytes;
    for (wchar_t const unit : units)
        bytes += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8 & 0xFF)};
    return bytes;
}

/// Split at every LF; with `dropsUnit` the unit in front of it goes.
Lines Split(std::wstring const &text, bool dropsUnit) {
    Lines lines(1);
    for (wchar_t const unit : text) {
        if (unit != L'\n') {
            lines.back() += unit;
            continue;
        }
        if (dropsUnit && !lines.back().empty())
            lines.back().pop_back();
        lines.emplace_back();
    }
    return lines;
}

constexpr int kBufferSizes[] = {-1, 2, 3, 4, 5, 7, 64, 4096};

} // namespace

TEST(CMbcsTextFileWithBuffer, GivesTheSameLinesAtEveryBufferSize) {
    std::wstring const korean = L"\xD55C\xAE00 and Gr\xFC\xDF"
                                L"e";
    std::string const narrow = host::MultiOfWide(korean, host::kSystemCodePage);
    std::wstring const back = host::WideOfMulti(narrow, host::kSystemCodePage);
    struct Row {
        std::string bytes;
        Lines lines;
    };
    Row const rows[] = {
        {"", {L""}},
        {"abc", {L"abc"}},
        {"abc\n", {L"abc", L""}},
        {"a\r\n\r\nb\rc\n\n", {L"a", L"", L"b\rc", L"", L""}},
        {std::string("a\0b\n\0", 5), {std::wstring(L"a\0b", 3), std::wstring(1, L'\0')}},
        {narrow + "\n" + narrow, {back, back}},
        {std::string(300, 'x') + "\nend\n", {std::wstring(300, L'x'), L"end", L""}},
    };
    zvi::test::TemporaryFolder const folder;
    for (Row const &row : rows) {
        folder.Write("t", row.bytes);
        for (int const size : kBufferSizes) {
            CMbcsTextFileWithBuffer file(size);
            ASSERT_TRUE(file.Open(folder.Path("t").c_str(), CFile::kRead));
            EXPECT_EQ(LinesOf(file), row.lines) << row.bytes << " by " << size;
            CString behind(L"x");
            EXPECT_FALSE(file.ReadString(behind));
            EXPECT_TRUE(behind.IsEmpty());
        }
    }
}

TEST(CUnicodeTextFileWithBuffer, GivesTheUnitsOfTheFileAtEveryBufferSize) {
    std::mt19937 random(20260309);
    std::wstring const alphabet = L"\r\n\xA0A\x0D\xD83D\xDE00\xFEFFz\x0A0D";
    zvi::test::TemporaryFolder const folder;
    for (int round = 0; round < 60; ++round) {
        std::wstring text = L"\xFEFF";
        for (std::size_t i = random() % 40; i > 0; --i)
            text += alphabet[random() % alphabet.size()];
        bool const isCut = random() % 2 == 0;
        folder.Write("t", Utf16(text) + (isCut ? "x" : ""));
        Lines const expected = Split(isCut ? text + L'\xFFFD' : text, true);
        for (int const size : kBufferSizes) {
            CUnicodeTextFileWithBuffer file(size);
            ASSERT_TRUE(file.Open(folder.Path("t").c_str(), CFile::kRead));
            EXPECT_EQ(LinesOf(file), expected) << "seed 20260309, round " << round << ", by " << size;
        }
    }
}

TEST(TextFiles, GiveLongLinesInPieces) {
    zvi::test::TemporaryFolder const folder;
    folder.Write("m", "abcdefg\n\nhi\njkl");
    folder.Write("u", Utf16(L"\xFEFF"
                            L"bcdefg\r\n\r\nhi\r\njkl"));
    for (int const size : {2, 3, 4, 8, 100}) {
        CMbcsTextFileWithBuffer narrow(3);
        CUnicodeTextFileWithBuffer wide(3);
        ASSERT_TRUE(narrow.Open(folder.Path("m").c_str(), CFile::kRead));
        ASSERT_TRUE(wide.Open(folder.Path("u").c_str(), CFile::kRead));
        EXPECT_EQ(PiecesOf(narrow, size), L"abcdefghijkl") << size;
        EXPECT_EQ(PiecesOf(wide, size), L"\xFEFF"
                                        L"bcdefghijkl")
            << size;
    }
    CMbcsTextFileWithBuffer file;
    ASSERT_TRUE(file.Open(folder.Path("m").c_str(), CFile::kRead));
    wchar_t buffer[4] = {};
    EXPECT_EQ(file.ReadString(buffer, 4), buffer);
    EXPECT_STREQ(buffer, L"abc");
    EXPECT_EQ(file.ReadString(nullptr, 4), nullptr);
    EXPECT_EQ(file.ReadString(buffer, 0), nullptr);
    CString rest;
    EXPECT_TRUE(file.ReadLine(rest));
    EXPECT_STREQ(rest, L"defg") << "the line goes on where the piece has ended";
}

TEST(TextFiles, IndentWhatTheyWrite) {
    zvi::test::TemporaryFolder const folder;
    std::wstring const path = folder.Path("t");
    std::string const end(host::LineEnd());
    CTextFileWithBuffer file;
    EXPECT_FALSE(file.WriteTagOpen(L"a")) << "not open";
    ASSERT_TRUE(file.Open(path.c_str(), CFile::kWrite | CFile::kCreate));
    EXPECT_TRUE(file.WriteTagOpen(L"a"));
    EXPECT_TRUE(file.WriteData(L"x%d", 7));
    EXPECT_TRUE(file.WriteTagClose(L"b"));
    EXPECT_TRUE(file.WriteTagClose(L"left"));
    EXPECT_TRUE(file.WriteFmt(L"%s %%", L"fmt"));
    file.Close();
    EXPECT_EQ(folder.Read("t"), "a" + end + "    x7" + end + "b" + end + "    left" + end + "fmt %");
    CMbcsTextFileWithBuffer reader;
    ASSERT_TRUE(reader.Open(path.c_str(), CFile::kRead));
    EXPECT_FALSE(reader.Open(path.c_str(), CFile::kRead)) << "open already";
    EXPECT_FALSE(reader.WriteFmt(L"x"));
    EXPECT_TRUE(reader.IsOpen());
    EXPECT_THROW(reader.WriteData(L"x"), CFileException);
    EXPECT_THROW(reader.SetFilePath(nullptr), std::invalid_argument);
}

TEST(CTextFileWithBuffer, ChoosesItsReaderByTheMark) {
    struct Row {
        std::string mark;
        bool isWide;
    };
    zvi::test::TemporaryFolder const folder;
    for (Row const &row : {Row{"", false}, Row{"\xFF\xFE", true}, Row{"\xFE\xFF", true}, Row{"\xEF\xBB\xBF", true},
                           Row{std::string("\0\0\xFE\xFF", 4), true}, Row{"\xEF\xBB", false}}) {
        folder.Write("t", row.mark + "ab\ncd");
        CTextFileWithBuffer file;
        ASSERT_TRUE(file.Open(folder.Path("t").c_str(), CFile::kRead, 0));
        EXPECT_EQ(LinesOf(file).size(), row.isWide ? 1u : 2u) << row.mark; // a LF alone is no unit
    }
    CTextFileWithBuffer none;
    EXPECT_FALSE(none.Open(folder.Path("none").c_str(), CFile::kRead, 1));
    EXPECT_FALSE(none.Open(folder.Path().c_str(), CFile::kRead, 1));
    EXPECT_FALSE(none.Open(folder.Path("none").c_str(), CFile::kRead));
}

TEST(CTextFileWithBuffer, WritesUtf16WithMarkAndCarriageReturns) {
    zvi::test::TemporaryFolder const folder;
    std::wstring const path = folder.Path("u");
    CTextFileWithBuffer file;
    ASSERT_TRUE(file.Open(path.c_str(), CFile::kWrite | CFile::kCreate, 1));
    EXPECT_TRUE(file.Write(L"h\xE9\n"));
    EXPECT_TRUE(file.WriteData(L"%s", L"\xD55C"));
    CTextFileWithBuffer copy(file);
    EXPECT_TRUE(copy.IsOpen());
    copy.Close();
    EXPECT_FALSE(file.IsOpen()) << "copies share a file";
    EXPECT_EQ(folder.Read("u"), Utf16(L"\xFEFFh\xE9\r\n\xD55C\r\n"));
    CUnicodeTextFileWithBuffer direct;
    ASSERT_TRUE(direct.Open(folder.Path("d").c_str(), CFile::kWrite | CFile::kCreate));
    direct.Write(L"a\n");
    direct.Write(L"\U0001F600");
    direct.Close();
    EXPECT_EQ(folder.Read("d"), Utf16(L"\xFEFF"
                                      L"a\r\n\xD83D\xDE00"));
    ASSERT_TRUE(file.Open(path.c_str(), CFile::kRead));
    EXPECT_EQ(LinesOf(file), (Lines{L"\xFEFFh\xE9", L"\xD55C", L""}));
}

} // namespace zvi::lib::test
