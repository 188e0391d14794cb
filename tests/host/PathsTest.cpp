#include "zvi/host/Paths.h"

#include "tests/TemporaryFolder.h"

#include <gtest/gtest.h>

namespace fs = std::filesystem;
namespace host = zvi::host;

TEST(Paths, ADriveIsTheFolderThatWasSetForIt) {
    zvi::test::TemporaryFolder const folder;
    folder.Write("a.txt", "x");
    host::SetDriveRoot(L'q', folder.Native());
    for (wchar_t const *path : {L"Q:\\a.txt", L"q:\\a.txt", L"Q:a.txt", L"Q:"})
        EXPECT_TRUE(fs::exists(host::NativePath(path))) << path;
    host::SetDriveRoot(L'Q', {});
    EXPECT_FALSE(fs::exists(host::NativePath(L"Q:\\a.txt")));
}

TEST(Paths, OfTheCurrentFolderAndOfTheProgramAreThere) {
    zvi::test::TemporaryFolder const folder;
    std::wstring const before = host::CurrentFolder();
    ASSERT_TRUE(host::SetCurrentFolder(folder.Path()));
    folder.Write("here", "");
    EXPECT_TRUE(fs::exists("here"));
    EXPECT_TRUE(fs::exists(host::NativePath(host::CurrentFolder() + L"\\here")));
    EXPECT_FALSE(host::SetCurrentFolder(folder.Path("none")));
    EXPECT_TRUE(host::SetCurrentFolder(before));
    EXPECT_TRUE(fs::exists(host::NativePath(host::ModulePath())));
    EXPECT_TRUE(host::NativePath(std::wstring_view(L"a\0b", 3)).empty());
}

#ifndef _WIN32

TEST(Paths, EveryNameOfAFileComesBack) {
    for (char const *name : {"/plain", "sub/\xFF\xC3", "a\\b", "C:x", "/\xEB\xAF\xB8/\xF0\x9F\x98\x80", "C", ""})
        EXPECT_EQ(fs::path(name).lexically_normal(), host::NativePath(host::LibraryPath(name)).lexically_normal());
    EXPECT_EQ(host::LibraryPath("/a/b"), L"\\a\\b");
    EXPECT_TRUE(host::NativePath(L"Z:\\a").empty()) << "a drive without a root";
}

#endif
