#include "zvi/text/MMSGFunction.h"

#include "tests/TemporaryFolder.h"
#include "zvi/text/MMSGParser.h"
#include "zvi/text/MessageFile.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>

namespace zvi::lib::test {

namespace {

std::string Utf16(std::wstring_view units) {
    std::string bytes = "\xFF\xFE";
    for (wchar_t const unit : units)
        bytes += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8 & 0xFF)};
    return bytes;
}

/// Begins and ends with an empty catalogue and the font of a new process.
class MMSGFunctionTest : public testing::Test {
protected:
    MMSGFunctionTest() { Clean(); }
    ~MMSGFunctionTest() override { Clean(); }

    void Add(char const *name, std::string const &bytes) {
        m_folder.Write(name, bytes);
        MMSGFunction::AddFile(m_folder.Path(name).c_str());
    }
    void SetFont(std::wstring_view content) {
        m_folder.Write("font", Utf16(content));
        MMSGFunction::SetFontPath(m_folder.Path("font").c_str());
    }

    zvi::test::TemporaryFolder m_folder;

private:
    void Clean() {
        SetFont(L"FONT=Tahoma\nSIZE=8");
        MMSGFunction::LoadFile();
        MMSGFunction::SetFontPath(L"");
        MMSGFunction::Reset();
    }
};

} // namespace

TEST_F(MMSGFunctionTest, GivesTheFirstTextOfAKey) {
    Add("a", Utf16(L"; comment\r\nHELLO = \"안녕\"\r\n\r\nHELLO = \"later\"\r\nGR = \"Gr\xFC\xDF"
                   L"e\\n\""));
    // A line that is too long ends its file alone.
    Add("b", Utf16(L"HELLO = \"other\"\nLAST = \"end\"\n" + std::wstring(1024, L'x') + L"\nLOST = \"x\""));
    EXPECT_EQ(MMSGFunction::GetValue(L"HELLO"), L"HELLO : 미등록 문자열") << "not loaded yet";
    EXPECT_TRUE(MMSGFunction::LoadFile());
    EXPECT_EQ(MMSGFunction::GetValue(L"HELLO"), L"안녕");
    EXPECT_EQ(MMSGFunction::GetValue(L"GR"), L"Gr\xFC\xDF"
                                             L"e\n");
    EXPECT_EQ(MMSGFunction::GetValue(L"LAST"), L"end");
    EXPECT_EQ(MMSGFunction::GetValue(L"LOST"), L"LOST : 미등록 문자열");
    for (int again = 0; again < 2; ++again)
        EXPECT_EQ(MMSGFunction::GetValue(L"hello"), L"hello : 미등록 문자열");
    MMSGFunction::Reset();
    EXPECT_EQ(MMSGFunction::GetValue(L"LAST"), L"LAST : 미등록 문자열");
}

TEST_F(MMSGFunctionTest, LoadsWhatWasAdded) {
    Add("a", Utf16(L"A = \"1\""));
    EXPECT_TRUE(MMSGFunction::LoadFile());
    m_folder.Write("a", Utf16(L"A = \"2\"\nB = \"2\""));
    SetFont(L"SIZE=20");
    MMSGFunction::AddFile(m_folder.Path("a").c_str());
    EXPECT_TRUE(MMSGFunction::LoadAddedFile()) << "the same path is listed once";
    EXPECT_EQ(MMSGFunction::GetFontSize(), 8) << "nothing new: the font is not read either";
    EXPECT_EQ(MMSGFunction::GetValue(L"B"), L"B : 미등록 문자열");
    Add("c", Utf16(L"C = \"3\""));
    EXPECT_TRUE(MMSGFunction::LoadAddedFile());
    EXPECT_EQ(MMSGFunction::GetValue(L"C"), L"3");
    EXPECT_EQ(MMSGFunction::GetFontSize(), 20);
    EXPECT_TRUE(MMSGFunction::LoadFile());
    EXPECT_EQ(MMSGFunction::GetValue(L"A"), L"1") << "what is there stays";
    EXPECT_EQ(MMSGFunction::GetValue(L"B"), L"2");
}

TEST_F(MMSGFunctionTest, EndsTheLoadAtAFileThatIsNotUnicode) {
    Add("a", Utf16(L"A = \"1\""));
    Add("b", "B = \"2\"\n");
    Add("c", Utf16(L"C = \"3\""));
    EXPECT_FALSE(MMSGFunction::LoadFile());
    EXPECT_EQ(MMSGFunction::GetValue(L"A"), L"1");
    EXPECT_EQ(MMSGFunction::GetValue(L"C"), L"C : 미등록 문자열");
    EXPECT_FALSE(MMSGFunction::LoadAddedFile());
    Add("b", Utf16(L"B = \"2\""));
    EXPECT_TRUE(MMSGFunction::LoadAddedFile());
    EXPECT_EQ(MMSGFunction::GetValue(L"C"), L"3");
    MMSGFunction::AddFile(m_folder.Path("none").c_str());
    EXPECT_FALSE(MMSGFunction::LoadAddedFile());
}

TEST_F(MMSGFunctionTest, ReadsTheFontByTheLetter) {
    struct Row {
        wchar_t const *content;
        wchar_t const *font;
        int size;
    };
    for (Row const &row : {Row{L"[Font]\n;FONT=x\n/FONT=y\n\nfont=Malgun Gothic\nSize=12", L"Malgun Gothic", 12},
                           Row{L"FONT=Arial\r\nSIZE=9\r\n", L"Arial\r", 9},
                           Row{L"FONT =x\n SIZE=3\nOTHER=1\nSIZE= 11pt\nFONT= a = b", L" a = b", 11},
                           Row{L"FONT\nSIZE=x", L"Tahoma", 0}}) {
        MMSGFunction::SetFontPath(L"");
        SetFont(L"FONT=Tahoma\nSIZE=8");
        MMSGFunction::LoadFile();
        SetFont(row.content);
        MMSGFunction::LoadFile();
        EXPECT_EQ(MMSGFunction::GetFont(), row.font);
        EXPECT_EQ(MMSGFunction::GetFontSize(), row.size) << row.content;
    }
    m_folder.Write("font", "FONT=narrow");
    MMSGFunction::LoadFile();
    EXPECT_EQ(MMSGFunction::GetFont(), L"Tahoma");
}

TEST(MMSGFunction, TakesOnePairOfApostrophesAway) {
    EXPECT_EQ(MMSGFunction::RemoveQuote(L"'a'"), L"a");
    EXPECT_EQ(MMSGFunction::RemoveQuote(L"''a''"), L"'a'");
    EXPECT_EQ(MMSGFunction::RemoveQuote(L"''"), L"");
    for (wchar_t const *text : {L"", L"'", L"'a", L"a'", L"\"a\""})
        EXPECT_EQ(MMSGFunction::RemoveQuote(text), text);
}

TEST(MessageFile, TellsHowItEnded) {
    struct Row {
        std::string bytes;
        MessageFile::End end;
        std::size_t lines;
    };
    zvi::test::TemporaryFolder const folder;
    for (Row const &row :
         {Row{Utf16(L""), MessageFile::End::kWhole, 0}, Row{Utf16(L"a\n\nb"), MessageFile::End::kWhole, 3},
          Row{Utf16(L"a\nb") + "x", MessageFile::End::kCutUnit, 2},
          Row{Utf16(L"a\n") + "x", MessageFile::End::kCutUnit, 1},
          Row{Utf16(L"a\n" + std::wstring(1024, L'b')), MessageFile::End::kLongLine, 1},
          Row{Utf16(L"a\n" + std::wstring(1023, L'b')), MessageFile::End::kWhole, 2}}) {
        folder.Write("t", row.bytes);
        MessageFile file(folder.Path("t").c_str());
        std::size_t lines = 0;
        for (CString line; file.GetLine(line);)
            ++lines;
        EXPECT_EQ(lines, row.lines);
        EXPECT_EQ(file.HowEnded(), row.end);
        EXPECT_EQ(file.LineNumber(), row.lines + (row.end == MessageFile::End::kLongLine ? 1 : 0));
    }
    EXPECT_FALSE(MessageFile(folder.Path("none").c_str()).IsOpen());
}

} // namespace zvi::lib::test
