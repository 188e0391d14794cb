#include "zvi/text/MMSGFunction.h"

#include "tests/TemporaryFolder.h"
#include "zvi/text/MessageFile.h"
#include "zvi/text/MessageLine.h"

#include <gtest/gtest.h>

#include <string>
#include <string_view>
#include <tuple>

namespace zvi::lib::test {

namespace {

std::string Utf16(std::wstring_view units) {
    std::string bytes = "\xFF\xFE";
    for (wchar_t const unit : units)
        bytes += {static_cast<char>(unit & 0xFF), static_cast<char>(unit >> 8 & 0xFF)};
    return bytes;
}

/// Begins and ends with an empty catalogue and the font of a new process.
struct MMSGFunctionTest : testing::Test {
    MMSGFunctionTest() { Clean(); }
    ~MMSGFunctionTest() override { Clean(); }

    void Add(char const *name, std::string const &bytes) {
        folder.Write(name, bytes);
        MMSGFunction::AddFile(folder.Path(name).c_str());
    }
    /// The texts of the keys A, B and C, with a hyphen for none.
    static std::wstring TextsOfABC() {
        std::wstring texts;
        for (wchar_t const *key : {L"A", L"B", L"C"})
            texts += MMSGFunction::GetValue(key).Replace(L" : 미등록 문자열", L"") ? L"-" : MMSGFunction::GetValue(key);
        return texts;
    }
    void SetFont(std::wstring_view content) {
        folder.Write("font", Utf16(content));
        MMSGFunction::SetFontPath(folder.Path("font").c_str());
    }
    void Clean() {
        SetFont(L"FONT=Tahoma\nSIZE=8");
        MMSGFunction::LoadFile();
        MMSGFunction::SetFontPath(L"");
        MMSGFunction::Reset();
    }

    zvi::test::TemporaryFolder folder;
};

} // namespace

TEST_F(MMSGFunctionTest, GivesTheFirstTextOfAKey) {
    Add("a", Utf16(L"; comment\r\nHELLO = \"안녕\"\r\n\r\nHELLO = \"later\"\r\n"));
    // A line that is too long ends its file alone.
    Add("b", Utf16(L"HELLO = \"other\"\n" + std::wstring(1019, L'x') + L"=\"1\"\nLAST = \"\xFC\"\n" +
                   std::wstring(1024, L'x') + L"\nLOST = \"x\""));
    EXPECT_EQ(MMSGFunction::GetValue(L"HELLO"), L"HELLO : 미등록 문자열") << "not loaded yet";
    EXPECT_TRUE(MMSGFunction::LoadFile());
    EXPECT_EQ(MMSGFunction::GetValue(L"HELLO"), L"안녕");
    EXPECT_EQ(MMSGFunction::GetValue(std::wstring(1019, L'x').c_str()), L"1");
    EXPECT_EQ(MMSGFunction::GetValue(L"LAST"), L"\xFC");
    EXPECT_EQ(MMSGFunction::GetValue(L"LOST"), L"LOST : 미등록 문자열");
    for (int again = 0; again < 2; ++again)
        EXPECT_EQ(MMSGFunction::GetValue(L"hello"), L"hello : 미등록 문자열");
    MMSGFunction::Reset();
    EXPECT_EQ(MMSGFunction::GetValue(L"LAST"), L"LAST : 미등록 문자열");
    EXPECT_FALSE(MessageFile(folder.Path("none").c_str()).IsOpen());
    for (std::wstring const last : {L"", L"b"}) {
        folder.Write("cut", Utf16(L"a\n" + last) + "x");
        MessageFile file(folder.Path("cut").c_str());
        for (CString line; file.GetLine(line);)
            EXPECT_EQ(line.GetLength(), 1);
        EXPECT_TRUE(file.HowEnded() == MessageFile::End::kCutUnit && file.LineNumber() == 1 + last.size());
    }
}

TEST_F(MMSGFunctionTest, LoadsWhatWasAddedUpToAFileThatIsNotUnicode) {
    Add("a", Utf16(L"A = \"1\""));
    EXPECT_TRUE(MMSGFunction::LoadFile());
    SetFont(L"SIZE=20");
    Add("a", Utf16(L"A = \"2\"\nB = \"2\""));
    EXPECT_TRUE(MMSGFunction::LoadAddedFile()) << "the same path is listed once";
    EXPECT_EQ(TextsOfABC(), L"1--") << "and not read again";
    EXPECT_EQ(MMSGFunction::GetFontSize(), 8) << "nothing new: the font is not read either";
    Add("b", "B = \"3\"\n");
    Add("c", Utf16(L"C = \"3\""));
    EXPECT_FALSE(MMSGFunction::LoadAddedFile());
    EXPECT_EQ(TextsOfABC(), L"1--");
    EXPECT_EQ(MMSGFunction::GetFontSize(), 20);
    EXPECT_FALSE(MMSGFunction::LoadFile());
    EXPECT_EQ(TextsOfABC(), L"12-") << "what is there stays";
    Add("b", Utf16(L"B = \"3\""));
    EXPECT_TRUE(MMSGFunction::LoadAddedFile());
    EXPECT_EQ(TextsOfABC(), L"123");
    MMSGFunction::AddFile(folder.Path("none").c_str());
    EXPECT_FALSE(MMSGFunction::LoadAddedFile());
}

TEST_F(MMSGFunctionTest, ReadsTheFontByTheLetter) {
    using Row = std::tuple<wchar_t const *, wchar_t const *, int>;
    for (auto const &[content, font, size] :
         {Row{L"[Font]\n;FONT=x\n/FONT=y\n\nfont=Malgun Gothic\nSize=12", L"Malgun Gothic", 12},
          Row{L"FONT=Arial\r\nSIZE=9\r\n", L"Arial\r", 9},
          Row{L"FONT =x\n SIZE=3\nOTHER=1\nSIZE= 11pt\nFONT= a = b", L" a = b", 11},
          Row{L"FONT\nSIZE=x", L"Tahoma", 0}}) {
        Clean();
        SetFont(content);
        MMSGFunction::LoadFile();
        EXPECT_EQ(MMSGFunction::GetFont(), font);
        EXPECT_EQ(MMSGFunction::GetFontSize(), size) << content;
    }
    folder.Write("font", "FONT=narrow");
    MMSGFunction::LoadFile();
    EXPECT_EQ(MMSGFunction::GetFont(), L"Tahoma");
}

TEST(MMSGFunction, TakesOnePairOfApostrophesAway) {
    using Row = std::pair<wchar_t const *, wchar_t const *>;
    for (auto const &[text, inside] : {Row{L"'a'", L"a"}, Row{L"''a''", L"'a'"}, Row{L"''", L""}, Row{L"", L""},
                                       Row{L"'", L"'"}, Row{L"'a", L"'a"}, Row{L"a'", L"a'"}, Row{L"\"a\"", L"\"a\""}})
        EXPECT_EQ(MMSGFunction::RemoveQuote(text), inside);
}

TEST(MessageLine, HasAKeyAndATextUnlessItIsBlankOrAComment) {
    MessageEntry entry;
    // A line, its key and its text.
    for (std::wstring const row :
         {L"KEY = \"text\"|KEY|text", L"\t key =\"v\" \x3000\r|key|v", L"K=\"a\"\"b\"|K|a\"b",
          L"K=\"x\\ny\\tz\\r\"|K|x\ny\tz\r", L"K=\"a\\\\b\"|K|a\\b", L"K=\"a\\\\n\"|K|a\\\n",
          L"K=\"\"\"\\\\\"\"\"|K|\"\\\"", L"/**/KEY = \"v\"|KEY|v", L"a/**/b/**/KEY = \"v\"|b/**/KEY|v",
          L"KEY = \"/**/v\"|KEY|/**/v", L"A = \"x = y\"|A|x = y", L"KEY = v|KEY|= ", L"KEY=v|KEY|", L"KEY  =v|KEY| =",
          L"KEY = \"v\" end|KEY|v\" en", L"KEY = \"|KEY|", L"no \"text\"||text", L"=\"v\"||v", L"x||"}) {
        EXPECT_TRUE(ParseMessageLine(row.substr(0, row.find(L'|')).c_str(), entry)) << row;
        EXPECT_EQ(entry.key + L'|' + entry.text, row.substr(row.find(L'|') + 1).c_str()) << row;
    }
    for (wchar_t const *line : {L"", L" \t\r", L"; KEY = \"v\"", L"  ;"})
        EXPECT_FALSE(ParseMessageLine(line, entry)) << line;
}

} // namespace zvi::lib::test
