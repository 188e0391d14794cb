#include "tests/TemporaryFolder.h"
#include "tests/text/TextLines.h"
#include "zvi/text/CMbcsTextFileWithBuffer.h"
#include "zvi/text/CTextFileWithBuffer.h"
#include "zvi/text/CUnicodeTextFileWithBuffer.h"
#include "zvi/text/MFileCtrl.h"

#include <gtest/gtest.h>

#include <random>
#include <stdexcept>
#include <utility>

namespace zvi::lib::test {

namespace {

struct TextFiles : testing::Test {
    zvi::test::TemporaryFolder const folder;
    std::wstring const path = folder.Path("t");
};

} // namespace

TEST_F(TextFiles, GiveTheSameLinesAtEveryBufferSize) {
    using namespace std::string_literals;
    auto const parts = {"a"s,  "\r"s,   "\n"s,           "\r\n"s,     "\n\n"s, "\n\0"s,     "\r\0\n\0"s,
                        "\0"s, "\x1A"s, "\xED\x95\x9C"s, "\xFF\xFE"s, "\xC3"s, "\x3D\xD8"s, "abcdefg"s};
    std::mt19937 random(20260309);
    for (int round = 0; round < 100; ++round) {
        std::string bytes;
        for (std::size_t count = random() % 40; count > 0; --count)
            bytes += random() % 50 == 0 ? std::string(random() % 6000, 'x') : parts.begin()[random() % parts.size()];
        folder.Write("t", bytes);
        std::size_t const room = random() % 9;
        for (int const size : {-1, 2, 3, 4, 5, 7, 64, 4096}) {
            SCOPED_TRACE("seed 20260309, round " + std::to_string(round) + ", by " + std::to_string(size));
            for (unsigned int const mode : {CFile::kRead, CFile::kBinary}) {
                Lines const lines = MultibyteLines(bytes, mode == CFile::kRead);
                EXPECT_TRUE(GivesLines<CMbcsTextFileWithBuffer>(path, mode, size, lines, room)) << mode;
            }
            EXPECT_TRUE(GivesLines<CUnicodeTextFileWithBuffer>(path, CFile::kRead, size, Utf16Lines(bytes), room));
        }
    }
    CMbcsTextFileWithBuffer file;
    ASSERT_TRUE(file.Open(path.c_str(), CFile::kRead));
    wchar_t unit = L'x';
    EXPECT_EQ(file.ReadString(nullptr, 4), nullptr);
    EXPECT_EQ(file.ReadString(&unit, 0), nullptr);
}

TEST_F(TextFiles, IndentWhatTheyWrite) {
    CTextFileWithBuffer file;
    EXPECT_FALSE(file.WriteTagOpen(L"a")) << "not open";
    ASSERT_TRUE(file.Open(path.c_str(), CFile::kWrite | CFile::kCreate));
    EXPECT_TRUE(file.WriteTagOpen(L"a") && file.WriteData(L"x%d", 7) && file.WriteTagClose(L"b"));
    EXPECT_TRUE(file.WriteTagClose(L"left") && file.WriteFmt(L"%s %%", L"fmt"));
    file.Close();
    EXPECT_EQ(folder.Read("t"), zvi::test::HostText("a\n    x7\nb\n    left\nfmt %"));
    CMbcsTextFileWithBuffer reader;
    ASSERT_TRUE(reader.Open(path.c_str(), CFile::kRead));
    EXPECT_FALSE(reader.Open(path.c_str(), CFile::kRead)) << "open already";
    EXPECT_FALSE(reader.WriteFmt(L"x"));
    EXPECT_TRUE(reader.IsOpen());
    EXPECT_THROW(reader.WriteData(L"x"), CFileException);
    EXPECT_THROW(reader.SetFilePath(nullptr), std::invalid_argument);
}

TEST_F(TextFiles, AreReadByTheirMark) {
    using Row = std::pair<std::string, TEXT_ENCODING>;
    CString line;
    for (auto const &[mark, expected] :
         {Row{"", kEncodingMultiByte}, Row{"\xEF\xBB", kEncodingMultiByte}, Row{"\xEF\xBB\xBF", kEncodingUtf8},
          Row{"\xFF\xFE", kEncodingUtf16Little}, Row{"\xFE\xFF", kEncodingUtf16Big},
          Row{{"\0\0\xFE\xFF", 4}, kEncodingUtf32Big}}) {
        folder.Write("t", mark + "ab\ncd");
        TEXT_ENCODING type = kEncodingUtf32Big;
        EXPECT_EQ(MFileCtrl::GetTextFileEncodingInfo(path.c_str(), type), 1);
        EXPECT_EQ(type, expected) << mark;
        bool const isWide = expected != kEncodingMultiByte;
        EXPECT_EQ(MFileCtrl::IsUnicodeFile(path.c_str()), isWide);
        CTextFileWithBuffer file;
        ASSERT_TRUE(file.Open(path.c_str(), CFile::kRead, 0));
        EXPECT_EQ(file.ReadLine(line), !isWide) << mark << ": a LF alone is no unit";
    }
    TEXT_ENCODING type = kEncodingUtf8;
    EXPECT_EQ(MFileCtrl::GetTextFileEncodingInfo(folder.Path("none").c_str(), type), 0);
    EXPECT_EQ(type, kEncodingMultiByte);
    for (std::wstring const &none : {folder.Path("none"), folder.Path()})
        EXPECT_FALSE(CTextFileWithBuffer().Open(none.c_str(), CFile::kRead, 1));
}

TEST_F(TextFiles, WriteUtf16WithMarkAndCarriageReturns) {
    CTextFileWithBuffer file;
    ASSERT_TRUE(file.Open(path.c_str(), CFile::kWrite | CFile::kCreate, 1));
    EXPECT_TRUE(file.Write(L"h\xE9\n") && file.WriteData(L"%s", L"\xD55C"));
    CTextFileWithBuffer copy(file);
    EXPECT_TRUE(copy.IsOpen());
    copy.Close();
    EXPECT_FALSE(file.IsOpen()) << "copies share a file";
    std::string const bytes("\xFF\xFEh\0\xE9\0\r\0\n\0\x5C\xD5\r\0\n\0", 16);
    EXPECT_EQ(folder.Read("t"), bytes);
    EXPECT_TRUE(GivesLines<CUnicodeTextFileWithBuffer>(path, 0, 9, {L"\xFEFFh\xE9", L"\xD55C", L""}, 0));
    CUnicodeTextFileWithBuffer direct;
    ASSERT_TRUE(direct.Open(path.c_str(), CFile::kWrite | CFile::kCreate));
    direct.Write(L"\U0001F600");
    direct.Close();
    EXPECT_EQ(folder.Read("t"), "\xFF\xFE\x3D\xD8" + std::string("\0\xDE", 2));
}

} // namespace zvi::lib::test
