#include "zvi/text/MFileCtrl.h"

#include "tests/TemporaryFolder.h"
#include "zvi/core/Utf8.h"

#include <gtest/gtest.h>

#include <array>
#include <utility>

#ifdef _WIN32
#include <windows.h>

#include <shlwapi.h>
#endif

namespace fs = std::filesystem;

namespace zvi::lib::test {

namespace {

/// The file a way begins at, where it leads, and the way; null for none.
using Way = std::array<wchar_t const *, 3>;

/// A surface on which every character is 10 wide.
class TypeWriter : public CDC {
public:
    void *SelectHollowBrush() override { return nullptr; }
    void SelectBrush(void *) override {}
    void Rectangle(int, int, int, int) override {}
    int TextWidth(wchar_t const *text) override { return 10 * CString(text).GetLength(); }
};

/// Paths in a folder.
struct MFileCtrlFiles : testing::Test {
    CString Path(char const *name) const { return CString(std::wstring_view(folder.Path(name))); }

    zvi::test::TemporaryFolder const folder;
};

} // namespace

TEST(MFileCtrl, TakesPathsApart) {
    using Row = std::array<wchar_t const *, 4>;
    for (auto const &[folder, base, dot, extension] :
         {Row{L"C:\\plans\\", L"floor", L".", L"dxf"}, Row{L"", L"a.b", L".", L"c"}, Row{L"", L"plain", L"", L""},
          Row{L"C:\\plans\\", L"", L"", L""}, Row{L"a.b\\", L"", L".", L"profile"}, Row{L"", L"a/b", L".", L"c"},
          Row{L"", L"", L"", L""}}) {
        CString const name = CString(base) + dot + extension;
        MFileCtrl const file(folder + name);
        EXPECT_EQ(file.GetFilePath(), folder);
        EXPECT_EQ(file.GetFilePathName(), CString(folder) + base);
        EXPECT_EQ(file.GetFileExt(), extension);
        EXPECT_EQ(file.GetFilePathNameExt(), folder + name);
        EXPECT_EQ(file.GetFileNameExt(), name);
    }
    EXPECT_EQ(MFileCtrl(nullptr).GetFilePathNameExt(), L"");
    for (wchar_t const *path : {L"C:\\a\\b\\", L"C:\\a\\b", L"b"})
        EXPECT_EQ(MFileCtrl::GetLastPathItem(path), L"b");
}

TEST(MFileCtrl, ShortensAPathFromItsMiddle) {
    MFileCtrl const file(L"C:\\first\\two\\three\\f.txt");
    using Row = std::pair<int, wchar_t const *>;
    TypeWriter paper;
    for (auto const &[most, path] :
         {Row{24, L"C:\\first\\two\\three\\f.txt"}, Row{23, L"C:\\...\\two\\three\\f.txt"},
          Row{21, L"C:\\...\\three\\f.txt"}, Row{17, L"C:\\...\\f.txt"}, Row{11, L"f.txt"}, Row{0, L"f.txt"}}) {
        EXPECT_EQ(file.GetAbbPathNameExt(most), path) << most;
        tagRECT rectangle{5, 0, 5 + 10 * most, 20};
        EXPECT_EQ(file.GetAbbPathNameExt(&paper, &rectangle), path) << most;
    }
    EXPECT_EQ(MFileCtrl(L"C:\\longer.txt").GetAbbPathNameExt(5), L"longer.txt");
}

TEST(MFileCtrl, FindsTheWayFromAFileToAnotherAndBack) {
    for (auto const &[base, path, way] :
         {Way{L"C:\\a\\b\\f.txt", L"C:\\a\\c\\d.txt", L"..\\c\\d.txt"}, Way{L"C:\\a\\f", L"C:\\a\\x", L".\\x"},
          Way{L"C:\\a\\f", L"C:\\a", L"..\\a"}, Way{L"C:\\a\\b\\c\\f", L"C:\\x", L"..\\..\\..\\x"},
          Way{L"C:\\a\\f", L"C:\\a\\b\\", L".\\b\\"}, Way{L"C:\\a\\f", L"D:\\a", nullptr},
          Way{L"c:\\ab\\f", L"C:\\abc\\x", L"..\\abc\\x"}, Way{L"a\\b\\f", L"a\\c", L"..\\c"},
          Way{L"a\\f", L"b", nullptr}, Way{L"\\\\s\\h\\a\\f", L"\\\\s\\h\\b", L"..\\b"},
          Way{L"\\\\s\\h\\f", L"\\\\t\\h\\b", nullptr}, Way{L"\\a\\b\\f", L"\\a\\x", L"..\\x"},
          Way{L"C:\\a\\f", L"", nullptr}}) {
        CString found(L"as it was");
        EXPECT_EQ(MFileCtrl::GetAbsoluteToRelativePath(base, path, found), way ? 1 : 0);
        EXPECT_EQ(found, way ? way : L"as it was") << Utf8Of(CString(path));
        CString back(path);
        EXPECT_TRUE(!way || MFileCtrl::GetRelativeToAbsolutePath(base, way, back));
        EXPECT_EQ(back.CompareNoCase(path), 0) << Utf8Of(back);
#ifdef _WIN32
        wchar_t theirs[MAX_PATH] = L"as it was";
        CString const folder = CString(base).Left(CString(base).ReverseFind(L'\\'));
        EXPECT_EQ(PathRelativePathToW(theirs, folder, FILE_ATTRIBUTE_DIRECTORY, path, 0) != 0, way != nullptr);
        EXPECT_EQ(CString(theirs), way ? way : theirs);
#endif
    }
    CString found;
    EXPECT_EQ(MFileCtrl::GetAbsoluteToRelativePath(L"C:\\f", L"C:\\x", found), 1);
    EXPECT_EQ(found, L".\\x") << "the root is a folder too";
    for (auto const &[base, path, way] :
         {Way{L"C:\\a\\f", L"D:\\x", L"D:\\x"}, Way{L"C:\\a\\f", L"\\x\\..\\y", L"\\x\\..\\y"},
          Way{L"C:\\a\\b\\f", L"C:\\a\\x/y", L"../x/y"}, Way{L"C:\\a\\b\\f", L"C:\\x", L"..\\../x"},
          Way{L"C:\\a\\f", L"C:\\x", L"..\\..\\..\\x"}, Way{L"C:\\a\\b\\f", L"C:\\a\\y", L"x\\..\\y"},
          Way{L"C:\\a\\f", L"C:\\a", L"."}, Way{L"C:\\a\\b\\f", L"C:\\a", L".."}, Way{L"C:\\f", L"C:\\", L".."}}) {
        EXPECT_EQ(MFileCtrl::GetRelativeToAbsolutePath(base, way, found), 1);
        EXPECT_EQ(found, path);
    }
}

TEST(MFileCtrl, NamesMayHoldAColonAndNoneOfEightCharacters) {
    EXPECT_EQ(MFileCtrl::ValidateFileName(L"a:b"), 1);
    for (wchar_t const *name : {L"a/", L"*", L"\\", L"?", L"\"", L"<", L">", L"|"})
        EXPECT_EQ(MFileCtrl::ValidateFileName(name), 0);
    EXPECT_EQ(MFileCtrl::GetValidFileName(L"a/b*c:d|"), L"a b c:d ");
}

TEST_F(MFileCtrlFiles, AreCopiedAndCounted) {
    std::string const bytes("one\r\ntwo\0\n\x1A three", 17);
    folder.Write("a", bytes);
    EXPECT_EQ(MFileCtrl::CopyFileW(Path("a"), Path("b")), 1);
    EXPECT_EQ(folder.Read("b"), bytes);
    EXPECT_EQ(MFileCtrl::GetNumberOfFileLines(Path("b")), 3u);
    EXPECT_EQ(MFileCtrl::CopyFileW(Path("a"), Path("a")), 0);
    EXPECT_EQ(folder.Read("a"), bytes) << "it is still there";
    for (auto const &[from, to] : {std::pair{"none", "c"}, std::pair{"a", "none/c"}, std::pair{"", "c"}})
        EXPECT_EQ(MFileCtrl::CopyFileW(Path(from), Path(to)), 0);
    EXPECT_EQ(MFileCtrl::FileExists(Path("c")), 0);
    EXPECT_EQ(MFileCtrl::GetNumberOfFileLines(Path("none")), 0u);
}

TEST_F(MFileCtrlFiles, TellTheirStatus) {
    folder.Write("a.txt", "12345");
    CString const path = Path("a.txt");
    CFileStatus status;
    for (bool const isReadOnly : {false, true}) {
        fs::permissions(folder.Native("a.txt"), isReadOnly ? fs::perms::owner_read : fs::perms::owner_all);
        ASSERT_EQ(MFileCtrl(path).GetFileStatus(status), 1);
        EXPECT_EQ(status.m_attribute & (CFileStatus::directory | CFileStatus::readOnly), isReadOnly ? 1 : 0);
        EXPECT_EQ(MFileCtrl::IsReadOnlyFile(path), isReadOnly);
    }
    fs::permissions(folder.Native("a.txt"), fs::perms::owner_all);
    EXPECT_TRUE(status.m_size == 5 && status.m_szFullName == path.GetString() && status.m_mtime > 1500000000);
    ASSERT_EQ(MFileCtrl(Path("")).GetFileStatus(status), 1);
    EXPECT_TRUE(status.m_attribute & CFileStatus::directory);
    EXPECT_EQ(MFileCtrl(Path("none")).GetFileStatus(status), 0);
}

TEST_F(MFileCtrlFiles, LieInFoldersThatAreMadeFoundAndRemoved) {
    CString const top = Path("top");
    for (wchar_t const *sub : {L"", L"\\b", L"\\a", L"\\a\\deep", L"\\a"})
        EXPECT_EQ(MFileCtrl::MakeDirectory(top + sub), 1);
    folder.Write("top/file", "x");
    fs::create_directory(folder.Native("kept"));
    std::error_code failure; // on a host where links need a privilege
    fs::create_directory_symlink(folder.Native("kept"), folder.Native("top/a/link"), failure);
    folder.Write("kept/file", "x");
    MArray<CString> found;
    EXPECT_EQ(MFileCtrl::FindFolder(top + L"\\", found), 1);
    EXPECT_EQ(found, (MArray<CString>{L"a", L"b"}));
    MFileCtrl::RemoveDirectoryRecursive(top + L"\\file");
    EXPECT_EQ(MFileCtrl::FileExists(top + L"\\file"), 1) << "which is no folder";
    MFileCtrl::RemoveDirectoryRecursive(top);
    EXPECT_EQ(MFileCtrl(top).FileExists(), 0);
    EXPECT_EQ(folder.Read("kept/file"), "x") << "no link is followed";
    EXPECT_EQ(MFileCtrl::FindFolder(top, found), 0);
}

TEST_F(MFileCtrlFiles, AreLedToByShortcuts) {
    folder.Write("a", "x");
    for (int again = 0; again < 2; ++again)
        EXPECT_EQ(MFileCtrl::CreateShortcut(Path("link"), Path("a"), L"", L"", L"the first"), 1);
    EXPECT_EQ(MFileCtrl::CreateShortcut(Path("link.URL"), L"https://example.org/x"), 1);
    EXPECT_EQ(folder.Read("link.URL"), "[InternetShortcut]\r\nURL=https://example.org/x\r\n");
    EXPECT_EQ(MFileCtrl::CreateShortcut(Path("link"), L""), 0);
#ifdef _WIN32
    EXPECT_EQ(folder.Read("link.lnk").substr(0, 4), std::string("L\0\0\0", 4)) << "the header of a shell link";
#else
    EXPECT_EQ(folder.Read("link.lnk"), "x");
    folder.Write("file.lnk", "mine");
    EXPECT_EQ(MFileCtrl::CreateShortcut(Path("file"), Path("a")), 0);
    EXPECT_EQ(folder.Read("file.lnk"), "mine");
#endif
}

} // namespace zvi::lib::test
