#include "zvi/host/CStdioFile.h"

#include "tests/TemporaryFolder.h"
#include "zvi/host/CodePage.h"
#include "zvi/host/Files.h"

#include <gtest/gtest.h>

#include <array>
#include <string>

namespace zvi::host::test {

namespace {

struct CStdioFileTest : testing::Test {
    void ExpectNone(std::wstring const &none, unsigned int flags, CFileException::Cause cause) {
        CFileException error;
        EXPECT_EQ(file.Open(none.c_str(), flags, &error), 0);
        EXPECT_EQ(error.GetCause(), cause);
    }

    zvi::test::TemporaryFolder const folder;
    std::wstring const path = folder.Path("f");
    CStdioFile file;
};

} // namespace

TEST_F(CStdioFileTest, OpensByItsFlags) {
    ExpectNone(path, CFile::kWrite, CFileException::kFileNotFound);
    ExpectNone(folder.Path("none") + L"\\f", CFile::kRead | CFile::kCreate | CFile::kWrite,
               host::LineEnd().size() == 1 ? CFileException::kFileNotFound : CFileException::kBadPath);
    ExpectNone(folder.Path(), CFile::kRead, CFileException::kAccessDenied);
    folder.Write("f", "12345");
    ASSERT_TRUE(file.Open(path.c_str(), CFile::kReadWrite));
    EXPECT_FALSE(file.Open(path.c_str(), CFile::kRead)) << "open already";
    file.WriteString(L"ab");
    file.Close();
    EXPECT_EQ(folder.Read("f"), "ab345");
    {
        CStdioFile other;
        ASSERT_TRUE(other.Open(path.c_str(), CFile::kCreate | CFile::kNoTruncate | CFile::kWrite));
        other.Write("x", 1);
    }
    EXPECT_EQ(folder.Read("f"), "xb345") << "the destructor closes";
    ASSERT_TRUE(file.Open(path.c_str(), CFile::kCreate | CFile::kWrite));
    file.WriteString(L"\xE4\n");
    file.WriteAtOnce("b\n");
    std::string const content = MultiOfWide(L"\xE4", kSystemCodePage) + zvi::test::HostText("\nb\n");
    EXPECT_EQ(folder.Read("f"), content);
    file.WriteString(L"c");
    file.Close();
    EXPECT_EQ(folder.Read("f"), content + "c");
}

TEST_F(CStdioFileTest, RaisesWhatCannotBeReadOrWritten) {
    std::array<char, 4> buffer{};
    EXPECT_THROW(file.WriteString(L"x"), CFileException);
    EXPECT_THROW(file.Read(buffer.data(), 4), CFileException);
    EXPECT_NO_THROW(file.Close());
    ASSERT_TRUE(file.Open(path.c_str(), CFile::kCreate | CFile::kWrite));
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
    EXPECT_TRUE(file.Open(path.c_str(), CFile::kRead)) << "it was closed all the same";
#endif
}

} // namespace zvi::host::test
