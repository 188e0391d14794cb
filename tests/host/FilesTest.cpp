#include "zvi/host/Files.h"

#include "tests/TemporaryFolder.h"

#include <gtest/gtest.h>

#include <utility>

namespace fs = std::filesystem;
namespace host = zvi::host;

TEST(Files, AreFoundByTheirPattern) {
    zvi::test::TemporaryFolder const folder;
    for (char const *name : {"b.txt", "a.txt", "a.b.txt", "readme"})
        folder.Write(name, "x");
    fs::create_directory(folder.Native("sub"));
    using Row = std::pair<wchar_t const *, wchar_t const *>;
    for (auto const &[pattern, expected] :
         {Row{L"*.*", L"a.b.txt a.txt b.txt readme sub "}, Row{L"*", L"a.b.txt a.txt b.txt readme sub "},
          Row{L"a*.txt", L"a.b.txt a.txt "}, Row{L"?.txt", L"a.txt b.txt "}, Row{L"*b*t", L"a.b.txt b.txt "},
          Row{L"none", L""}}) {
        std::wstring names;
        for (host::FoundFile const &file : host::FindFiles(folder.Path() + L'\\' + pattern)) {
            names += file.name + L' ';
            EXPECT_EQ((file.attributes & CFileStatus::directory) != 0, file.name == L"sub");
        }
        EXPECT_EQ(names, expected) << pattern;
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

TEST(Files, AreMovedAndRemoved) {
    zvi::test::TemporaryFolder const folder;
    EXPECT_TRUE(host::MakeFolder(folder.Path("sub")));
    EXPECT_FALSE(host::MakeFolder(folder.Path("sub")));
    folder.Write("sub/a", "x");
    folder.Write("b", "x");
    EXPECT_FALSE(host::RenameFile(folder.Path("sub/a"), folder.Path("b"))) << "something is there";
    for (char const *to : {"b", "c"})
        EXPECT_TRUE(host::RenameFile(folder.Path("b"), folder.Path(to)));
    EXPECT_FALSE(host::RemoveFolder(folder.Path("sub"))) << "not empty";
    EXPECT_TRUE(host::RemoveFile(folder.Path("c")));
    EXPECT_FALSE(host::RemoveFile(folder.Path("c")));
    EXPECT_FALSE(host::RemoveTree(L""));
    fs::create_directory(folder.Native("precious"));
    folder.Write("precious/a", "x");
    std::error_code failure; // on a host where links need a privilege
    fs::create_directory_symlink(folder.Native("precious"), folder.Native("sub/link"), failure);
    EXPECT_TRUE(host::RemoveTree(folder.Path("sub") + L"\\"));
    EXPECT_EQ(folder.Names(), std::vector<std::string>{"precious"});
    EXPECT_EQ(folder.Read("precious/a"), "x") << "no link is followed";
}
