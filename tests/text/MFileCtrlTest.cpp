#include "zvi/text/MFileCtrl.h"

#include "tests/TemporaryFolder.h"
#include "zvi/core/Utf8.h"

#include <gtest/gtest.h>

#include <initializer_list>

#ifdef _WIN32
#include <windows.h>

#include <shlwapi.h>
#endif

namespace zvi::lib::test {

namespace {

struct Way {
    wchar_t const *base;
    wchar_t const *path;
    wchar_t const *way; ///< null for none
};

/// A surface on which every character is 10 wide.
class TypeWriter : public CDC {
public:
    void *SelectHollowBrush() override { return nullptr; }
    void SelectBrush(void *) override {}
    void Rectangle(int, int, int, int) override {}
    int TextWidth(wchar_t const *text) override { return 10 * CString(text).GetLength(); }
};

constexpr Way kWays[] = {
    {L"C:\\a\\b\\f.txt", L"C:\\a\\c\\d.txt", L"..\\c\\d.txt"},
    {L"C:\\a\\f", L"C:\\a\\x", L".\\x"},
    {L"C:\\a\\f", L"C:\\a", L"..\\a"},
    {L"C:\\a\\b\\c\\f", L"C:\\x", L"..\\..\\..\\x"},
    {L"C:\\a\\f", L"C:\\a\\b\\", L".\\b\\"},
    {L"C:\\a\\f", L"D:\\a", nullptr},
    {L"c:\\ab\\f", L"C:\\abc\\x", L"..\\abc\\x"},
    {L"a\\b\\f", L"a\\c", L"..\\c"},
    {L"a\\f", L"b", nullptr},
    {L"\\\\s\\h\\a\\f", L"\\\\s\\h\\b", L"..\\b"},
    {L"\\\\s\\h\\f", L"\\\\t\\h\\b", nullptr},
    {L"\\a\\b\\f", L"\\a\\x", L"..\\x"},
    {L"C:\\a\\f", L"", nullptr},
};

} // namespace

TEST(MFileCtrl, TakesPathsApart) {
    struct Row {
        wchar_t const *path;
        wchar_t const *folder;
        wchar_t const *name;
        wchar_t const *extension;
    };
    for (Row const &row : std::initializer_list<Row>{
             {L"C:\\plans\\floor.dxf", L"C:\\plans\\", L"floor", L"dxf"},
             {L"a.b.c", L"", L"a.b", L"c"},
             {L"plain", L"", L"plain", L""},
             {L"C:\\plans\\", L"C:\\plans\\", L"", L""},
             {L"a.b\\.profile", L"a.b\\", L"", L"profile"},
             {L"a/b.c", L"", L"a/b", L"c"},
             {L"", L"", L"", L""},
         }) {
        MFileCtrl const file(row.path);
        EXPECT_EQ(file.GetFilePath(), row.folder);
        EXPECT_EQ(file.GetFilePathName(), CString(row.folder) + row.name);
        EXPECT_EQ(file.GetFileExt(), row.extension);
        EXPECT_EQ(file.GetFilePathNameExt(), row.path);
        EXPECT_EQ(file.GetFilePath() + file.GetFileNameExt(), row.path);
    }
    EXPECT_EQ(MFileCtrl(nullptr).GetFilePathNameExt(), L"");
}

TEST(MFileCtrl, ShortensAPathFromItsMiddle) {
    MFileCtrl const file(L"C:\\first\\two\\three\\f.txt");
    struct Row {
        int most;
        wchar_t const *path;
    };
    for (Row const &row : std::initializer_list<Row>{
             {24, L"C:\\first\\two\\three\\f.txt"},
             {23, L"C:\\...\\two\\three\\f.txt"},
             {21, L"C:\\...\\three\\f.txt"},
             {17, L"C:\\...\\f.txt"},
             {11, L"f.txt"},
             {0, L"f.txt"},
         }) {
        EXPECT_EQ(file.GetAbbPathNameExt(row.most), row.path) << row.most;
        TypeWriter paper;
        tagRECT rectangle{5, 0, 5 + 10 * row.most, 20};
        EXPECT_EQ(file.GetAbbPathNameExt(&paper, &rectangle), row.path) << row.most;
    }
    EXPECT_EQ(MFileCtrl(L"C:\\longer.txt").GetAbbPathNameExt(5), L"longer.txt");
}

TEST(MFileCtrl, FindsTheWayFromAFileToAnother) {
    for (Way const &row : kWays) {
        CString way(L"as it was");
        EXPECT_EQ(MFileCtrl::GetAbsoluteToRelativePath(row.base, row.path, way), row.way ? 1 : 0);
        EXPECT_EQ(way, row.way ? row.way : L"as it was") << Utf8Of(CString(row.path));
#ifdef _WIN32
        wchar_t theirs[MAX_PATH] = L"as it was";
        CString const folder = CString(row.base).Left(CString(row.base).ReverseFind(L'\\'));
        EXPECT_EQ(PathRelativePathToW(theirs, folder, FILE_ATTRIBUTE_DIRECTORY, row.path, 0) != 0, row.way != nullptr);
        EXPECT_EQ(CString(theirs), row.way ? row.way : theirs);
#endif
    }
    CString way;
    EXPECT_EQ(MFileCtrl::GetAbsoluteToRelativePath(L"C:\\f", L"C:\\x", way), 1);
    EXPECT_EQ(way, L".\\x") << "the root is a folder too";
}

TEST(MFileCtrl, FindsWhereAWayLeads) {
    for (Way const &row : kWays) {
        if (!row.way)
            continue;
        CString path;
        EXPECT_EQ(MFileCtrl::GetRelativeToAbsolutePath(row.base, row.way, path), 1);
        EXPECT_EQ(path.CompareNoCase(row.path), 0) << Utf8Of(path);
    }
    for (Way const &row : std::initializer_list<Way>{
             {L"C:\\a\\f", L"D:\\x", L"D:\\x"},
             {L"C:\\a\\f", L"\\x\\..\\y", L"\\x\\..\\y"},
             {L"C:\\a\\b\\f", L"../x/y", L"C:\\a\\x/y"},
             {L"C:\\a\\b\\f", L"..\\../x", L"C:\\x"},
             {L"C:\\a\\f", L"..\\..\\..\\x", L"C:\\x"},
             {L"C:\\a\\b\\f", L"x\\..\\y", L"C:\\a\\y"},
             {L"C:\\a\\f", L".", L"C:\\a"},
             {L"C:\\a\\b\\f", L"..", L"C:\\a"},
             {L"C:\\f", L"..", L"C:\\"},
         }) {
        CString path;
        EXPECT_EQ(MFileCtrl::GetRelativeToAbsolutePath(row.base, row.path, path), 1);
        EXPECT_EQ(path, row.way);
    }
}

TEST(MFileCtrl, NamesMayHoldAColonAndNoneOfEightCharacters) {
    EXPECT_EQ(MFileCtrl::ValidateFileName(L"a:b"), 1);
    for (wchar_t const *name : {L"a/", L"*", L"\\", L"?", L"\"", L"<", L">", L"|"})
        EXPECT_EQ(MFileCtrl::ValidateFileName(name), 0);
    EXPECT_EQ(MFileCtrl::GetValidFileName(L"a/b*c:d|"), L"a b c:d ");
    EXPECT_EQ(MFileCtrl::GetLastPathItem(L"C:\\a\\b\\"), L"b");
    EXPECT_EQ(MFileCtrl::GetLastPathItem(L"C:\\a\\b"), L"b");
    EXPECT_EQ(MFileCtrl::GetLastPathItem(L"b"), L"b");
}

TEST(MFileCtrl, CopiesAndCountsFiles) {
    zvi::test::TemporaryFolder const folder;
    auto const path = [&folder](char const *name) { return CString(std::wstring_view(folder.Path(name))); };
    std::string const bytes("one\r\ntwo\0\n\x1A three", 18);
    folder.Write("a", bytes);
    EXPECT_EQ(MFileCtrl::CopyFileW(path("a"), path("b")), 1);
    EXPECT_EQ(folder.Read("b"), bytes);
    EXPECT_EQ(MFileCtrl::GetNumberOfFileLines(path("b")), 3u);
    EXPECT_EQ(MFileCtrl::CopyFileW(path("a"), path("a")), 0);
    EXPECT_EQ(folder.Read("a"), bytes) << "it is still there";
    EXPECT_EQ(MFileCtrl::CopyFileW(path("none"), path("c")), 0);
    EXPECT_EQ(MFileCtrl::CopyFileW(path("a"), path("none") + L"\\c"), 0);
    EXPECT_EQ(MFileCtrl::CopyFileW(folder.Path().c_str(), path("c")), 0);
    EXPECT_EQ(MFileCtrl::FileExists(path("c")), 0);
    EXPECT_EQ(MFileCtrl::GetNumberOfFileLines(path("none")), 0u);
}

TEST(MFileCtrl, MakesFindsAndRemovesFolders) {
    zvi::test::TemporaryFolder const folder;
    CString const top{std::wstring_view(folder.Path("top"))};
    for (wchar_t const *sub : {L"", L"\\b", L"\\a", L"\\a\\deep", L"\\a"})
        EXPECT_EQ(MFileCtrl::MakeDirectory(top + sub), 1);
    folder.Write("top/file", "x");
    MArray<CString> found;
    EXPECT_EQ(MFileCtrl::FindFolder(top + L"\\", found), 1);
    ASSERT_EQ(found.Size(), 2u);
    EXPECT_EQ(found[0], L"a");
    EXPECT_EQ(found[1], L"b");
    MFileCtrl::RemoveDirectoryRecursive(top + L"\\file");
    EXPECT_EQ(MFileCtrl::FileExists(top + L"\\file"), 1) << "which is no folder";
    MFileCtrl::RemoveDirectoryRecursive(top);
    EXPECT_EQ(MFileCtrl(top).FileExists(), 0);
    EXPECT_EQ(MFileCtrl::FindFolder(top, found), 0);
}

TEST(MFileCtrl, TellsTheMarkOfATextFile) {
    zvi::test::TemporaryFolder const folder;
    struct Row {
        std::string_view bytes;
        TEXT_ENCODING type;
    };
    for (Row const &row : std::initializer_list<Row>{
             {"", kEncodingMultiByte},
             {"\xEF\xBB", kEncodingMultiByte},
             {"\xEF\xBB\xBF", kEncodingUtf8},
             {"\xFF\xFEx", kEncodingUtf16Little},
             {"\xFE\xFF", kEncodingUtf16Big},
             {{"\0\0\xFE\xFF", 4}, kEncodingUtf32Big},
             {"text", kEncodingMultiByte},
         }) {
        folder.Write("a", row.bytes);
        TEXT_ENCODING type = kEncodingUtf8;
        EXPECT_EQ(MFileCtrl::GetTextFileEncodingInfo(folder.Path("a").c_str(), type), 1);
        EXPECT_EQ(type, row.type);
        EXPECT_EQ(MFileCtrl::IsUnicodeFile(folder.Path("a").c_str()), row.type != kEncodingMultiByte);
    }
    TEXT_ENCODING type = kEncodingUtf8;
    EXPECT_EQ(MFileCtrl::GetTextFileEncodingInfo(folder.Path("none").c_str(), type), 0);
    EXPECT_EQ(type, kEncodingMultiByte);
}

TEST(MFileCtrl, MakesShortcutsToFilesAndAddresses) {
    zvi::test::TemporaryFolder const folder;
    folder.Write("a.txt", "x");
    CString const link{std::wstring_view(folder.Path("link"))};
    EXPECT_EQ(MFileCtrl::CreateShortcut(link, CString(std::wstring_view(folder.Path("a.txt")))), 1);
    EXPECT_EQ(MFileCtrl::FileExists(link + L".lnk"), 1);
    EXPECT_EQ(MFileCtrl::CreateShortcut(link + L".URL", L"https://example.org/x"), 1);
    EXPECT_EQ(folder.Read("link.URL"), "[InternetShortcut]\r\nURL=https://example.org/x\r\n");
    EXPECT_EQ(MFileCtrl::CreateShortcut(link, L""), 0);
}

} // namespace zvi::lib::test
