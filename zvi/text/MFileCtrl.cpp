#include "zvi/text/MFileCtrl.h"

#include "zvi/host/Files.h"
#include "zvi/host/ReplaceContent.h"
#include "zvi/text/MConvertString.h"
#include "zvi/text/PathItemsDetail.h"

#include <algorithm>
#include <cstdio>
#include <memory>
#include <string>
#include <string_view>
#include <vector>

namespace zvi::lib {

namespace {

constexpr wchar_t kForbidden[] = L"/*\\?\"<>|";
constexpr std::size_t kBytesAtOnce = std::size_t{1} << 16;

std::wstring_view View(CString const &text) {
    return {text.GetString(), static_cast<std::size_t>(text.GetLength())};
}

std::wstring_view View(wchar_t const *text) {
    return text ? std::wstring_view(text) : std::wstring_view();
}

bool IsFolder(std::wstring_view path) {
    CFileStatus status;
    return host::GetFileStatus(path, status) && (status.m_attribute & CFileStatus::directory) != 0;
}

/// A path without its last item and the backslash in front of it; all of it without a backslash.
CString FolderOf(CString const &path) {
    int const last = path.ReverseFind(L'\\');
    return last < 0 ? path : path.Left(last);
}

struct Close {
    void operator()(std::FILE *file) const { std::fclose(file); }
};
using File = std::unique_ptr<std::FILE, Close>;

/// Reads a file to its end in parts, which `use` takes; says whether all went well.
template <typename Use>
bool ReadParts(std::FILE *file, Use use) {
    std::vector<char> part(kBytesAtOnce);
    while (std::size_t const count = std::fread(part.data(), 1, part.size(), file))
        if (!use(std::string_view(part.data(), count)))
            return false;
    return std::ferror(file) == 0;
}

/// Whether the target is an address on the net, such as "https://host/page".
bool IsAddress(CString const &target) {
    int const scheme = target.Find(L"://");
    auto const isLetter = [](wchar_t c) { return (c >= L'a' && c <= L'z') || (c >= L'A' && c <= L'Z'); };
    std::wstring_view const name = View(target).substr(0, static_cast<std::size_t>(std::max(scheme, 0)));
    return scheme > 1 && std::all_of(name.begin(), name.end(), isLetter);
}

CString WithSuffix(CString const &path, wchar_t const *suffix) {
    CString const wanted(suffix);
    return path.Right(wanted.GetLength()).CompareNoCase(wanted) == 0 ? path : path + wanted;
}

/// A text file in the form of the shell, which ends its lines with CR LF.
bool WriteAddress(CString const &path, CString const &address) {
    if (address.Find(L'\n') >= 0 || address.Find(L'\r') >= 0)
        return false;
    std::string const content =
        "[InternetShortcut]\r\nURL=" + MConvertString::WideToMulti(address.GetString(), address.GetLength()) + "\r\n";
    return !host::ReplaceContent(View(path), content);
}

} // namespace

MFileCtrl::MFileCtrl() = default;

MFileCtrl::MFileCtrl(wchar_t const *path) {
    SetFilePathNameExt(path);
}

MFileCtrl::~MFileCtrl() = default;

void MFileCtrl::SetFilePathNameExt(wchar_t const *path) {
    CString const whole(path);
    int const folder = whole.ReverseFind(L'\\') + 1;
    CString const file = whole.Mid(folder);
    int const dot = file.ReverseFind(L'.');
    m_folder = whole.Left(folder);
    m_name = dot < 0 ? file : file.Left(dot);
    m_extension = dot < 0 ? CString() : file.Mid(dot + 1);
}

CString MFileCtrl::GetFilePath() const {
    return m_folder;
}

CString MFileCtrl::GetFilePathNameExt() const {
    return m_folder + GetFileNameExt();
}

CString MFileCtrl::GetFilePathName() const {
    return m_folder + m_name;
}

CString MFileCtrl::GetFileNameExt() const {
    return m_extension.IsEmpty() ? m_name : m_name + L"." + m_extension;
}

CString MFileCtrl::GetFileExt() const {
    return m_extension;
}

CString MFileCtrl::GetAbbPathNameExt(int maxLength) const {
    return Shortened([maxLength](CString const &path) { return path.GetLength() <= maxLength; });
}

CString MFileCtrl::GetAbbPathNameExt(CDC *surface, tagRECT *rectangle) const {
    long long const width = host::WidthOf(*rectangle);
    return Shortened([surface, width](CString const &path) { return surface->TextWidth(path) <= width; });
}

/// Leaves out one folder more until it fits.
CString MFileCtrl::Shortened(std::function<bool(CString const &)> const &fits) const {
    CString const file = GetFileNameExt();
    CString path = m_folder + file;
    int const first = m_folder.Find(L'\\');
    int next = first < 0 ? -1 : m_folder.Find(L'\\', first + 1);
    for (; !fits(path) && next >= 0; next = m_folder.Find(L'\\', next + 1))
        path = m_folder.Left(first + 1) + L"..." + m_folder.Mid(next) + file;
    return fits(path) ? path : file;
}

int MFileCtrl::FileExists() const {
    return FileExists(GetFilePathNameExt().GetString());
}

int MFileCtrl::GetFileStatus(CFileStatus &status) const {
    return host::GetFileStatus(View(GetFilePathNameExt()), status) ? 1 : 0;
}

int MFileCtrl::FileExists(wchar_t const *path) {
    return host::Exists(View(path)) ? 1 : 0;
}

int MFileCtrl::CopyFileW(wchar_t const *from, wchar_t const *to) {
    if (IsFolder(View(from)) || host::IsSameFile(View(from), View(to)))
        return 0;
    File const source(host::OpenStream(View(from), "rb"));
    if (!source)
        return 0;
    File target(host::OpenStream(View(to), "wb"));
    if (!target)
        return 0;
    bool const isCopied = ReadParts(source.get(), [&target](std::string_view part) {
        return std::fwrite(part.data(), 1, part.size(), target.get()) == part.size();
    });
    return std::fclose(target.release()) == 0 && isCopied ? 1 : 0;
}

// NOLINTBEGIN(performance-unnecessary-value-param): the signatures are those that callers know
int MFileCtrl::GetAbsoluteToRelativePath(CString base, CString path, CString &result) {
    std::optional<CString> const way = text::PathFromFolder(FolderOf(base), path);
    if (!way)
        return 0;
    result = *way;
    return 1;
}

int MFileCtrl::GetRelativeToAbsolutePath(CString base, CString path, CString &result) {
    constexpr int kUpLength = 3;
    if (!text::IsRelativePath(path)) {
        result = path;
        return 1;
    }
    CString folder = FolderOf(base);
    auto const nextUp = [&path] {
        int const slash = path.Find(L"../");
        int const backslash = path.Find(L"..\\");
        return slash < 0 ? backslash : backslash < 0 ? slash : std::min(slash, backslash);
    };
    for (int up = nextUp(); up >= 0; up = nextUp()) {
        folder = FolderOf(folder);
        path = path.Mid(up + kUpLength);
    }
    result = text::CanonicalPath(folder + L"\\" + path);
    return 1;
}
// NOLINTEND(performance-unnecessary-value-param)

int MFileCtrl::MakeDirectory(wchar_t const *path) {
    if (host::FindFiles(View(CString(path) + L"\\*.*")).empty())
        host::MakeFolder(View(path));
    return 1;
}

int MFileCtrl::ValidateFileName(wchar_t const *name) {
    return View(name).find_first_of(kForbidden) == std::wstring_view::npos ? 1 : 0;
}

CString MFileCtrl::GetValidFileName(wchar_t const *name) {
    CString valid(name);
    for (wchar_t const *forbidden = kForbidden; *forbidden != L'\0'; ++forbidden)
        valid.Replace(*forbidden, L' ');
    return valid;
}

void MFileCtrl::RemoveDirectoryRecursive(wchar_t const *path) {
    if (IsFolder(View(path)))
        host::RemoveTree(View(path));
}

int MFileCtrl::IsReadOnlyFile(wchar_t const *path) {
    CFileStatus status;
    return host::GetFileStatus(View(path), status) && (status.m_attribute & CFileStatus::readOnly) != 0 ? 1 : 0;
}

int MFileCtrl::FindFolder(CString const &path, MArray<CString> &result) {
    CString folder = path + L"\\";
    folder.Replace(L"\\\\", L"\\");
    for (host::FoundFile const &found : host::FindFiles(View(folder + L"*.*")))
        if ((found.attributes & CFileStatus::directory) != 0)
            result.PushBack(CString(std::wstring_view(found.name)));
    return IsFolder(View(folder)) ? 1 : 0;
}

CString MFileCtrl::GetLastPathItem(CString const &path) {
    bool const hasEnd = path.Right(1) == L"\\";
    CString const items = hasEnd ? path.Left(path.GetLength() - 1) : path;
    return items.Mid(items.ReverseFind(L'\\') + 1);
}

std::uint64_t MFileCtrl::GetNumberOfFileLines(wchar_t const *path) {
    File const file(host::OpenStream(View(path), "rb"));
    if (!file)
        return 0;
    std::uint64_t lines = 0;
    char last = '\n';
    ReadParts(file.get(), [&](std::string_view part) {
        lines += static_cast<std::uint64_t>(std::count(part.begin(), part.end(), '\n'));
        last = part.back();
        return true;
    });
    return last == '\n' ? lines : lines + 1;
}

int MFileCtrl::CreateShortcut(CString const &link, CString const &target, CString const &arguments,
                              CString const &workingFolder, CString const &description) {
    if (link.IsEmpty() || target.IsEmpty())
        return 0;
    if (IsAddress(target))
        return WriteAddress(WithSuffix(link, L".url"), target) ? 1 : 0;
    host::Shortcut const shortcut{.target = std::wstring(View(target)),
                                  .arguments = std::wstring(View(arguments)),
                                  .workingFolder = std::wstring(View(workingFolder)),
                                  .description = std::wstring(View(description))};
    return host::MakeShortcut(View(WithSuffix(link, L".lnk")), shortcut) ? 1 : 0;
}

int MFileCtrl::IsUnicodeFile(wchar_t const *path) {
    return HasUnicodeMark(path);
}

int MFileCtrl::GetTextFileEncodingInfo(wchar_t const *path, TEXT_ENCODING &type) {
    return ReadTextEncoding(path, type);
}

} // namespace zvi::lib
