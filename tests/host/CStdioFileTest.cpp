#include "zvi/host/CStdioFile.h"

#include "tests/TemporaryFolder.h"
#include "zvi/host/CodePage.h"
#include "zvi/host/Files.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace zvi::host::test {

namespace {

CFileException::Cause CauseOfOpening(std::wstring const &path, unsigned int flags) {
    CStdioFile file;
    CFileException error;
    EXPECT_EQ(file.Open(path.c_str(), flags, &error), 0);
    return error.GetCause();
}

} // namespace

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
    std::string const content = MultiOfWide(L"\xE4", kSystemCodePage) + zvi::test::HostText("\nb\n");
    EXPECT_EQ(folder.Read("f"), content);
    file.WriteString(L"c");
    file.Close();
    EXPECT_EQ(folder.Read("f"), content + "c");
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

} // namespace zvi::host::test
