#include "zvi/host/CStdioFile.h"

#include "tests/TemporaryFolder.h"
#include "zvi/host/CodePage.h"
#include "zvi/host/Files.h"
#include "zvi/host/MessageBox.h"

#include <gtest/gtest.h>

#include <array>
#include <string>
#include <vector>

namespace zvi::host::test {

namespace {

std::string ReadAll(CStdioFile &file, std::size_t piece) {
    std::vector<char> buffer(piece);
    std::string all;
    while (std::size_t const count = file.Read(buffer.data(), piece))
        all.append(buffer.data(), count);
    return all;
}

CFileException::Cause CauseOfOpening(std::wstring const &path, unsigned int flags) {
    CStdioFile file;
    CFileException error;
    EXPECT_EQ(file.Open(path.c_str(), flags, &error), 0);
    return error.GetCause();
}

} // namespace

TEST(CStdioFile, TurnsCarriageReturnLineFeedIntoLineFeedInTextModeAlone) {
    struct Row {
        std::string bytes;
        std::string text;
    };
    Row const rows[] = {
        {"", ""},
        {"\r\n", "\n"},
        {"a\r\nb\nc\r", "a\nb\nc\r"},
        {"\r\r\n\r\n\n\r", "\r\n\n\n\r"},
        {std::string("a\x1A\0\xFF\r\n", 6), std::string("a\x1A\0\xFF\n", 5)},
    };
    zvi::test::TemporaryFolder const folder;
    for (Row const &row : rows) {
        folder.Write("t", row.bytes);
        for (std::size_t const piece : std::array<std::size_t, 4>{1, 2, 3, 7}) {
            CStdioFile text;
            CStdioFile binary;
            ASSERT_TRUE(text.Open(folder.Path("t").c_str(), CFile::kRead));
            ASSERT_TRUE(binary.Open(folder.Path("t").c_str(), CFile::kBinary));
            EXPECT_EQ(ReadAll(text, piece), row.text) << piece;
            EXPECT_EQ(ReadAll(binary, piece), row.bytes) << piece;
            EXPECT_TRUE(text.IsAtEnd());
        }
    }
}

TEST(CStdioFile, OpensByItsFlags) {
    zvi::test::TemporaryFolder const folder;
    std::wstring const path = folder.Path("f");
    EXPECT_EQ(CauseOfOpening(path, CFile::kWrite), CFileException::kFileNotFound);
    EXPECT_EQ(CauseOfOpening(folder.Path("none") + L"\\f", CFile::kRead | CFile::kCreate | CFile::kWrite),
              host::LineEnd().size() == 1 ? CFileException::kFileNotFound : CFileException::kBadPath);
    EXPECT_EQ(CauseOfOpening(folder.Path(), CFile::kRead), CFileException::kAccessDenied);
    folder.Write("f", "12345");
    {
        CStdioFile file;
        ASSERT_TRUE(file.Open(path.c_str(), CFile::kReadWrite));
        EXPECT_FALSE(file.Open(path.c_str(), CFile::kRead)) << "open already";
        file.WriteString(L"ab");
        file.Close();
        EXPECT_EQ(folder.Read("f"), "ab345");
        ASSERT_TRUE(file.Open(path.c_str(), CFile::kCreate | CFile::kNoTruncate | CFile::kWrite));
        file.Write("x", 1);
    }
    EXPECT_EQ(folder.Read("f"), "xb345") << "the destructor closes";
    CStdioFile file;
    ASSERT_TRUE(file.Open(path.c_str(), CFile::kCreate | CFile::kWrite));
    file.WriteString(L"\xE4\n");
    file.WriteAtOnce("b\n");
    std::string const end(LineEnd());
    EXPECT_EQ(folder.Read("f"), MultiOfWide(L"\xE4", kSystemCodePage) + end + "b" + end);
    file.WriteString(L"c");
    file.Close();
    EXPECT_EQ(folder.Read("f"), MultiOfWide(L"\xE4", kSystemCodePage) + end + "b" + end + "c");
}

TEST(CStdioFile, RaisesWhatCannotBeReadOrWritten) {
    zvi::test::TemporaryFolder const folder;
    CStdioFile file;
    std::array<char, 4> buffer{};
    EXPECT_THROW(file.WriteString(L"x"), CFileException);
    EXPECT_THROW(file.Read(buffer.data(), 4), CFileException);
    EXPECT_NO_THROW(file.Close());
    ASSERT_TRUE(file.Open(folder.Path("w").c_str(), CFile::kCreate | CFile::kWrite));
    EXPECT_THROW(file.Read(buffer.data(), 4), CFileException);
    file.Close();
#ifdef __linux__
    ASSERT_TRUE(file.Open(L"\\dev\\full", CFile::kWrite));
    file.WriteString(L"x");
    try {
        file.Close();
        ADD_FAILURE() << "the disk is full";
    } catch (CFileException const &error) {
        EXPECT_EQ(error.GetCause(), CFileException::kDiskFull);
    }
    EXPECT_TRUE(file.Open(folder.Path("w").c_str(), CFile::kRead)) << "it was closed all the same";
#endif
}

TEST(MessageBox, GoesThroughTheHandlerThatIsInstalled) {
    std::wstring shown;
    SetMessageBox([&](wchar_t const *text) {
        shown += text;
        SetMessageBox([&](wchar_t const *again) { shown += std::wstring(L"+") + again; });
    });
    ShowMessageBox(L"a");
    ShowMessageBox(L"b");
    ShowMessageBox(nullptr);
    SetMessageBox({});
    EXPECT_EQ(shown, L"a+b+");
#ifndef _WIN32 // where a box would wait for somebody
    testing::internal::CaptureStderr();
    ShowMessageBox(L"caf\xE9");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "caf\xC3\xA9\n");
#endif
}

} // namespace zvi::host::test
