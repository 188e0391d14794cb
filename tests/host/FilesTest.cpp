#include "zvi/host/Files.h"

#include "tests/TemporaryFolder.h"
#include "zvi/host/CStdioFile.h"
#include "zvi/host/CodePage.h"
#include "zvi/host/ReplaceContent.h"

#include <gtest/gtest.h>

#include <array>
#include <utility>

namespace fs = std::filesystem;
namespace host = zvi::host;

namespace {

/// Files in a folder of the test.
struct Files : testing::Test {
    zvi::test::TemporaryFolder const folder;
};
using Paths = Files;
using ReplaceContent = Files;

struct CStdioFileTest : Files {
    void ExpectNone(std::wstring const &none, unsigned int flags, CFileException::Cause cause) {
        CFileException error;
        EXPECT_EQ(file.Open(none.c_str(), flags, &error), 0);
        EXPECT_EQ(error.GetCause(), cause);
    }

    std::wstring const path = folder.Path("f");
    CStdioFile file;
};

} // namespace

TEST_F(Files, AreFoundByTheirPattern) {
    for (char const *name : {"b.txt", "a.txt", "a.b.txt", "readme"})
        folder.Write(name, "x");
    fs::create_directory(folder.Native("sub"));
    using Row = std::pair<wchar_t const *, wchar_t const *>;
    for (auto const &[pattern, expected] :
         {Row{L"*.*", L"a.b.txt a.txt b.txt readme sub "}, Row{L"*", L"a.b.txt a.txt b.txt readme sub "},
          Row{L"a*.txt", L"a.b.txt a.txt "}, Row{L"?.txt", L"a.txt b.txt "}, Row{L"*b*t", L"a.b.txt b.txt "},
          Row{L"none", L""}, Row{L"none\\*", L""}}) {
        std::wstring names;
        for (host::FoundFile const &file : host::FindFiles(folder.Path() + L'\\' + pattern)) {
            names += file.name + L' ';
            EXPECT_EQ((file.attributes & CFileStatus::directory) != 0, file.name == L"sub");
        }
        EXPECT_EQ(names, expected) << pattern;
    }
}

TEST_F(Files, AreRemoved) {
    EXPECT_TRUE(host::MakeFolder(folder.Path("sub")) && !host::MakeFolder(folder.Path("sub")));
    folder.Write("sub/a", "x");
    folder.Write("c", "x");
    EXPECT_FALSE(host::RemoveFolder(folder.Path("sub"))) << "not empty";
    EXPECT_TRUE(host::RenameFile(folder.Path("c"), folder.Path("c")));
    EXPECT_TRUE(host::RemoveFile(folder.Path("c")) && !host::RemoveFile(folder.Path("c")));
    EXPECT_FALSE(host::RemoveTree(L""));
    EXPECT_TRUE(host::RemoveTree(folder.Path("sub") + L"\\"));
    EXPECT_TRUE(folder.Names().empty());
}

TEST_F(Paths, OfDrivesOfTheCurrentFolderAndOfTheProgramAreThere) {
    folder.Write("here", "");
    host::SetDriveRoot(L'q', folder.Native());
    for (wchar_t const *path : {L"Q:\\here", L"q:\\here", L"Q:here", L"Q:"})
        EXPECT_TRUE(fs::exists(host::NativePath(path))) << path;
    host::SetDriveRoot(L'Q', {});
    EXPECT_FALSE(fs::exists(host::NativePath(L"Q:\\here"))) << "a drive without a root";
    std::wstring const before = host::CurrentFolder();
    ASSERT_TRUE(host::SetCurrentFolder(folder.Path()));
    for (fs::path const &current : {fs::current_path(), host::NativePath(host::CurrentFolder())})
        EXPECT_TRUE(fs::exists(current / "here"));
    EXPECT_FALSE(host::SetCurrentFolder(folder.Path("none")));
    EXPECT_TRUE(host::SetCurrentFolder(before));
    EXPECT_TRUE(fs::exists(host::NativePath(host::ModulePath())));
    EXPECT_TRUE(host::NativePath(std::wstring_view(L"a\0b", 3)).empty());
}

#ifndef _WIN32

TEST_F(Paths, EveryNameOfAFileComesBack) {
    for (char const *name : {"/plain", "sub/\xFF\xC3", "a\\b", "C:x", "/\xEB\xAF\xB8/\xF0\x9F\x98\x80", "C", ""})
        EXPECT_EQ(fs::path(name).lexically_normal(), host::NativePath(host::LibraryPath(name)).lexically_normal());
    EXPECT_EQ(host::LibraryPath("/a/b"), L"\\a\\b");
}

#endif

TEST_F(ReplaceContent, RefusesAReadOnlyFileFollowsLinksAndRemovesWhatWasLeft) {
    folder.Write("a", "old");
    fs::permissions(folder.Native("a"), fs::perms::owner_read);
    // Who is allowed everything may write it too.
    std::error_code failure = host::ReplaceContent(folder.Path("a"), "new");
    EXPECT_EQ(folder.Read("a"), failure ? "old" : "new");
    EXPECT_EQ(folder.Names().size(), 1u);
    fs::permissions(folder.Native("a"), fs::perms::owner_all);
    fs::create_directory(folder.Native("sub"));
    for (std::wstring const &path : {folder.Path("sub"), std::wstring()})
        EXPECT_TRUE(host::ReplaceContent(path, "x"));
    folder.Write("sub/a", "old");
    folder.Write("sub/a.1.2.zvi-part", "half");
    folder.Write("sub/a.zvi-part", "half");
    fs::create_symlink("sub/a", folder.Native("link"), failure);
    if (failure)
        GTEST_SKIP() << "no links: " << failure.message();
    EXPECT_FALSE(host::ReplaceContent(folder.Path("link"), "new"));
    EXPECT_TRUE(fs::is_symlink(folder.Native("link")));
    EXPECT_EQ(folder.Read("sub/a"), "new");
    EXPECT_FALSE(fs::exists(folder.Native("sub/a.zvi-part")));
    fs::create_directory_symlink("sub", folder.Native("way"), failure);
    EXPECT_TRUE(host::RemoveTree(folder.Path("way") + L"\\"));
    EXPECT_EQ(folder.Read("sub/a"), "new") << "no link is followed";
}

#ifndef _WIN32

TEST_F(ReplaceContent, KeepsPermissionsAndWritesInPlaceWhereItMust) {
    folder.Write("a", "old");
    fs::permissions(folder.Native("a"), fs::perms(0640));
    EXPECT_FALSE(host::ReplaceContent(folder.Path("a"), "new"));
    EXPECT_EQ(fs::status(folder.Native("a")).permissions(), fs::perms(0640));
    fs::create_symlink("b", folder.Native("link"));
    EXPECT_FALSE(host::ReplaceContent(folder.Path("link"), "new"));
    EXPECT_EQ(folder.Read("b"), "new");
    fs::create_symlink("loop", folder.Native("loop"));
    EXPECT_EQ(host::ReplaceContent(folder.Path("loop"), "x"), std::errc::too_many_symbolic_link_levels);
    EXPECT_EQ(host::ReplaceContent(L"\\dev\\full", "x"), std::errc::no_space_on_device);
    EXPECT_FALSE(host::ReplaceContent(L"\\dev\\null", "x"));
    std::string const name(250, 'n'); // leaves no room for another beside
    folder.Write(name, "the old and longer content");
    for (char const *content : {"new", "longer than that was"}) {
        EXPECT_FALSE(host::ReplaceContent(folder.Path(name), content));
        EXPECT_EQ(folder.Read(name), content);
    }
}

#endif

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
    std::string const content = host::MultiOfWide(L"\xE4", host::kSystemCodePage) + zvi::test::HostText("\nb\n");
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
