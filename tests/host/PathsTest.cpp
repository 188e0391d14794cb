#include "zvi/host/Paths.h"

#include "tests/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;
namespace host = zvi::host;

TEST(Paths, GoOutAndComeBack) {
    zvi::test::TemporaryFolder const folder;
    fs::create_directory(folder.Native("sub"));
    folder.Write("sub/a.txt", "x");
    std::wstring const path = folder.Path() + L"\\sub\\a.txt";
    EXPECT_TRUE(fs::exists(host::NativePath(path)));
    EXPECT_EQ(host::LibraryPath(host::NativePath(path)), path);
    EXPECT_EQ(host::LibraryPath(folder.Native() / "sub" / "a.txt"), path);
    EXPECT_TRUE(host::NativePath(std::wstring_view(L"a\0b", 3)).empty());
    EXPECT_TRUE(fs::exists(host::NativePath(host::ModulePath())));
}

TEST(Paths, ADriveIsTheFolderThatWasSetForIt) {
    zvi::test::TemporaryFolder const folder;
    folder.Write("a.txt", "x");
    host::SetDriveRoot(L'q', folder.Native());
    for (wchar_t const *path : {L"Q:\\a.txt", L"q:\\a.txt", L"Q:a.txt", L"Q:"})
        EXPECT_TRUE(fs::exists(host::NativePath(path))) << path;
    host::SetDriveRoot(L'Q', {});
    EXPECT_FALSE(fs::exists(host::NativePath(L"Q:\\a.txt")));
}

TEST(Paths, TheCurrentFolderMoves) {
    zvi::test::TemporaryFolder const folder;
    std::wstring const before = host::CurrentFolder();
    ASSERT_TRUE(host::SetCurrentFolder(folder.Path()));
    folder.Write("here", "");
    EXPECT_TRUE(fs::exists("here"));
    EXPECT_TRUE(fs::exists(host::NativePath(host::CurrentFolder() + L"\\here")));
    EXPECT_FALSE(host::SetCurrentFolder(folder.Path("none")));
    EXPECT_TRUE(host::SetCurrentFolder(before));
}

#ifndef _WIN32

TEST(Paths, EveryNameOfAFileComesBack) {
    for (char const *name : {"/plain", "sub/\xFF\xC3", "a\\b", "C:x", "/\xEB\xAF\xB8/\xF0\x9F\x98\x80", "C", ""})
        EXPECT_EQ(fs::path(name).lexically_normal(), host::NativePath(host::LibraryPath(name)).lexically_normal());
    EXPECT_EQ(host::LibraryPath("/a/b"), L"\\a\\b");
    EXPECT_TRUE(host::NativePath(L"Z:\\a").empty()) << "a drive without a root";
}

#endif
