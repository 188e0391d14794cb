#include "zvi/host/Files.h"

#include "tests/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <initializer_list>

namespace fs = std::filesystem;
namespace host = zvi::host;

TEST(Files, AreFoundByTheirPattern) {
    zvi::test::TemporaryFolder const folder;
    for (char const *name : {"b.txt", "a.txt", "a.b.txt", "readme"})
        folder.Write(name, "x");
    fs::create_directory(folder.Native("sub"));
    struct Row {
        wchar_t const *pattern;
        wchar_t const *names;
    };
    for (Row const &row : std::initializer_list<Row>{
             {L"*.*", L"a.b.txt a.txt b.txt readme sub "},
             {L"*", L"a.b.txt a.txt b.txt readme sub "},
             {L"a*.txt", L"a.b.txt a.txt "},
             {L"?.txt", L"a.txt b.txt "},
             {L"*b*t", L"a.b.txt b.txt "},
             {L"none", L""},
         }) {
        std::wstring names;
        for (host::FoundFile const &file : host::FindFiles(folder.Path() + L'\\' + row.pattern)) {
            names += file.name + L' ';
            EXPECT_EQ((file.attributes & CFileStatus::directory) != 0, file.name == L"sub");
        }
        EXPECT_EQ(names, row.names) << row.pattern;
    }
    EXPECT_TRUE(host::FindFiles(folder.Path("none") + L"\\*").empty());
}

TEST(Files, TellTheirStatus) {
    zvi::test::TemporaryFolder const folder;
    folder.Write("a.txt", "12345");
    CFileStatus status;
    ASSERT_TRUE(host::GetFileStatus(folder.Path("a.txt"), status));
    EXPECT_EQ(status.m_size, 5u);
    EXPECT_EQ(status.m_szFullName, folder.Path("a.txt"));
    EXPECT_GT(status.m_mtime, 1500000000);
    EXPECT_FALSE(status.m_attribute & (CFileStatus::directory | CFileStatus::readOnly));
    fs::permissions(folder.Native("a.txt"), fs::perms::owner_read);
    ASSERT_TRUE(host::GetFileStatus(folder.Path("a.txt"), status));
    EXPECT_TRUE(status.m_attribute & CFileStatus::readOnly);
    ASSERT_TRUE(host::GetFileStatus(folder.Path(), status));
    EXPECT_TRUE(status.m_attribute & CFileStatus::directory);
    EXPECT_FALSE(host::GetFileStatus(folder.Path("none"), status));
    fs::permissions(folder.Native("a.txt"), fs::perms::owner_all);
}

TEST(Files, AreMadeMovedAndRemoved) {
    zvi::test::TemporaryFolder const folder;
    EXPECT_TRUE(host::MakeFolder(folder.Path("sub")));
    EXPECT_FALSE(host::MakeFolder(folder.Path("sub")));
    EXPECT_FALSE(host::MakeFolder(folder.Path() + L"\\none\\sub"));
    std::FILE *const stream = host::OpenStream(folder.Path() + L"\\sub\\a", "wb");
    ASSERT_TRUE(stream);
    EXPECT_EQ(std::fclose(stream), 0);
    EXPECT_FALSE(host::OpenStream(folder.Path("none"), "rb"));
    folder.Write("b", "x");
    EXPECT_FALSE(host::RenameFile(folder.Path() + L"\\sub\\a", folder.Path("b"))) << "something is there";
    EXPECT_TRUE(host::RenameFile(folder.Path("b"), folder.Path("b")));
    EXPECT_TRUE(host::RenameFile(folder.Path("b"), folder.Path("c")));
    EXPECT_FALSE(host::RemoveFolder(folder.Path("sub"))) << "not empty";
    EXPECT_TRUE(host::RemoveFile(folder.Path("c")));
    EXPECT_FALSE(host::RemoveFile(folder.Path("c")));
    EXPECT_TRUE(host::RemoveTree(folder.Path("sub") + L"\\"));
    EXPECT_FALSE(host::RemoveTree(L""));
    EXPECT_TRUE(folder.Names().empty());
}

TEST(Files, ALinkIsRemovedAndWhatItLeadsToStays) {
    zvi::test::TemporaryFolder const folder;
    fs::create_directories(folder.Native("tree/sub"));
    fs::create_directory(folder.Native("precious"));
    folder.Write("precious/a", "x");
    std::error_code failure;
    fs::create_directory_symlink(folder.Native("precious"), folder.Native("tree/sub/link"), failure);
    if (failure)
        GTEST_SKIP() << "no links: " << failure.message();
    EXPECT_TRUE(host::RemoveTree(folder.Path("tree")));
    EXPECT_FALSE(host::Exists(folder.Path("tree")));
    EXPECT_EQ(folder.Read("precious/a"), "x");
}

TEST(Files, AShortcutLeadsToItsTarget) {
    zvi::test::TemporaryFolder const folder;
    folder.Write("a.txt", "x");
    folder.Write("file.lnk", "mine");
    std::wstring const link = folder.Path("link.lnk");
    for (int again = 0; again < 2; ++again)
        ASSERT_TRUE(host::MakeShortcut(link, {.target = folder.Path("a.txt"), .description = L"the first"}));
    EXPECT_FALSE(host::MakeShortcut(folder.Path("other.lnk"), {}));
#ifdef _WIN32
    EXPECT_EQ(folder.Read("link.lnk").substr(0, 4), std::string("L\0\0\0", 4)) << "the header of a shell link";
#else
    EXPECT_EQ(folder.Read("link.lnk"), "x");
    EXPECT_FALSE(host::MakeShortcut(folder.Path("file.lnk"), {.target = folder.Path("a.txt")}));
    EXPECT_EQ(folder.Read("file.lnk"), "mine");
#endif
}
