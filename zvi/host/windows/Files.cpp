#include "zvi/host/Files.h"

#include "zvi/host/NamePatternDetail.h"
#include "zvi/host/Paths.h"
#include "zvi/host/windows/WindowsHeader.h"

#include <objbase.h>
#include <shlobj.h>

#include <algorithm>
#include <filesystem>

namespace zvi::host {

namespace {

namespace fs = std::filesystem;

constexpr DWORD kKnownAttributes = CFileStatus::readOnly | CFileStatus::hidden | CFileStatus::systemFile |
                                   CFileStatus::directory | CFileStatus::archive;

std::uint8_t AttributesOf(DWORD attributes) {
    return static_cast<std::uint8_t>(attributes & kKnownAttributes);
}

std::uint64_t Whole(DWORD high, DWORD low) {
    return std::uint64_t{high} << 32 | low;
}

std::int64_t SecondsOf(FILETIME const &time) {
    constexpr std::int64_t kTicksInSecond = 10000000;
    constexpr std::int64_t kSecondsFrom1601To1970 = 11644473600;
    auto const ticks = static_cast<std::int64_t>(Whole(time.dwHighDateTime, time.dwLowDateTime));
    return ticks / kTicksInSecond - kSecondsFrom1601To1970;
}

/// Calls `visit` for each entry of a folder that fits the host's own pattern.
template <typename Visit>
void ForEachEntry(std::wstring const &pattern, Visit visit) {
    WIN32_FIND_DATAW data{};
    HANDLE const search = ::FindFirstFileW(pattern.c_str(), &data);
    if (search == INVALID_HANDLE_VALUE)
        return;
    do {
        std::wstring_view const name = data.cFileName;
        if (name != L"." && name != L"..")
            visit(data);
    } while (::FindNextFileW(search, &data));
    ::FindClose(search);
}

std::wstring Folded(std::wstring_view text) {
    std::wstring folded(text);
    ::CharUpperBuffW(folded.data(), static_cast<DWORD>(folded.size()));
    return folded;
}

bool Identify(std::wstring const &path, BY_HANDLE_FILE_INFORMATION &known) {
    HANDLE const file = ::CreateFileW(path.c_str(), 0, FILE_SHARE_READ | FILE_SHARE_WRITE | FILE_SHARE_DELETE, nullptr,
                                      OPEN_EXISTING, FILE_FLAG_BACKUP_SEMANTICS, nullptr);
    if (file == INVALID_HANDLE_VALUE)
        return false;
    bool const isKnown = ::GetFileInformationByHandle(file, &known);
    ::CloseHandle(file);
    return isKnown;
}

/// What the host knows of a file or folder; of a link, what it knows of where that leads.
bool Look(std::wstring const &path, WIN32_FILE_ATTRIBUTE_DATA &known) {
    if (!::GetFileAttributesExW(path.c_str(), GetFileExInfoStandard, &known))
        return false;
    if (!(known.dwFileAttributes & FILE_ATTRIBUTE_REPARSE_POINT))
        return true;
    BY_HANDLE_FILE_INFORMATION target{};
    if (!Identify(path, target))
        return false;
    known = {target.dwFileAttributes, target.ftCreationTime, target.ftLastAccessTime,
             target.ftLastWriteTime,  target.nFileSizeHigh,  target.nFileSizeLow};
    return true;
}

bool RemoveNative(std::wstring const &path) {
    DWORD const attributes = ::GetFileAttributesW(path.c_str());
    if (attributes == INVALID_FILE_ATTRIBUTES)
        return false;
    if (attributes & FILE_ATTRIBUTE_READONLY)
        ::SetFileAttributesW(path.c_str(), attributes & ~static_cast<DWORD>(FILE_ATTRIBUTE_READONLY));
    if (!(attributes & FILE_ATTRIBUTE_DIRECTORY))
        return ::DeleteFileW(path.c_str());
    // A folder with a reparse point leads elsewhere; removing it removes the point alone.
    if (!(attributes & FILE_ATTRIBUTE_REPARSE_POINT))
        ForEachEntry(path + L"\\*",
                     [&path](WIN32_FIND_DATAW const &data) { RemoveNative(path + L'\\' + data.cFileName); });
    return ::RemoveDirectoryW(path.c_str());
}

/// The parts of COM that a shell link needs, for the time of its making.
class ShellCom {
public:
    ShellCom() : m_result(::CoInitializeEx(nullptr, COINIT_APARTMENTTHREADED)) {}
    ~ShellCom() {
        if (SUCCEEDED(m_result))
            ::CoUninitialize();
    }
    ShellCom(ShellCom const &) = delete;
    ShellCom &operator=(ShellCom const &) = delete;

private:
    HRESULT m_result;
};

bool Fill(IShellLinkW &link, Shortcut const &shortcut) {
    return SUCCEEDED(link.SetPath(NativePath(shortcut.target).c_str())) &&
           SUCCEEDED(link.SetArguments(shortcut.arguments.c_str())) &&
           SUCCEEDED(link.SetWorkingDirectory(NativePath(shortcut.workingFolder).c_str())) &&
           SUCCEEDED(link.SetDescription(shortcut.description.c_str())) &&
           (shortcut.icon.empty() || SUCCEEDED(link.SetIconLocation(NativePath(shortcut.icon).c_str(), 0)));
}

bool Save(IShellLinkW &link, std::wstring const &path) {
    void *file = nullptr;
    if (FAILED(link.QueryInterface(IID_IPersistFile, &file)))
        return false;
    auto *const persist = static_cast<IPersistFile *>(file);
    bool const isSaved = SUCCEEDED(persist->Save(path.c_str(), TRUE));
    persist->Release();
    return isSaved;
}

} // namespace

bool GetFileStatus(std::wstring_view path, CFileStatus &status) {
    fs::path const native = NativePath(path);
    WIN32_FILE_ATTRIBUTE_DATA known{};
    if (!Look(native.native(), known))
        return false;
    std::error_code failure;
    fs::path const whole = fs::absolute(native, failure);
    status = {.m_ctime = SecondsOf(known.ftCreationTime),
              .m_mtime = SecondsOf(known.ftLastWriteTime),
              .m_atime = SecondsOf(known.ftLastAccessTime),
              .m_size = Whole(known.nFileSizeHigh, known.nFileSizeLow),
              .m_attribute = AttributesOf(known.dwFileAttributes),
              .m_szFullName = LibraryPath(failure ? native : whole)};
    return true;
}

bool Exists(std::wstring_view path) {
    WIN32_FILE_ATTRIBUTE_DATA known{};
    return Look(NativePath(path).native(), known);
}

bool IsSameFile(std::wstring_view left, std::wstring_view right) {
    BY_HANDLE_FILE_INFORMATION a{};
    BY_HANDLE_FILE_INFORMATION b{};
    return Identify(NativePath(left).native(), a) && Identify(NativePath(right).native(), b) &&
           a.dwVolumeSerialNumber == b.dwVolumeSerialNumber && a.nFileIndexHigh == b.nFileIndexHigh &&
           a.nFileIndexLow == b.nFileIndexLow;
}

std::vector<FoundFile> FindFiles(std::wstring_view pattern) {
    std::size_t const parted = pattern.find_last_of(L"\\/:");
    std::size_t const start = parted == pattern.npos ? 0 : parted + 1;
    std::wstring const wanted = Folded(pattern.substr(start));
    std::vector<FoundFile> found;
    ForEachEntry(NativePath(std::wstring(pattern.substr(0, start)) + L"*").native(), [&](WIN32_FIND_DATAW const &data) {
        if (FitsPattern(Folded(data.cFileName), wanted))
            found.push_back({data.cFileName, AttributesOf(data.dwFileAttributes)});
    });
    std::sort(found.begin(), found.end(), [](FoundFile const &a, FoundFile const &b) { return a.name < b.name; });
    return found;
}

bool MakeFolder(std::wstring_view path) {
    return ::CreateDirectoryW(NativePath(path).c_str(), nullptr);
}

bool RemoveFile(std::wstring_view path) {
    return ::DeleteFileW(NativePath(path).c_str());
}

bool RemoveFolder(std::wstring_view path) {
    return ::RemoveDirectoryW(NativePath(path).c_str());
}

bool RemoveTree(std::wstring_view path) {
    std::wstring name = NativePath(path).native();
    while (name.ends_with(L'\\') || name.ends_with(L'/'))
        name.pop_back();
    return !name.empty() && !name.ends_with(L':') && RemoveNative(name);
}

bool RenameFile(std::wstring_view from, std::wstring_view to) {
    return ::MoveFileExW(NativePath(from).c_str(), NativePath(to).c_str(), 0);
}

bool MakeShortcut(std::wstring_view path, Shortcut const &shortcut) {
    constexpr std::wstring_view kSuffix = L".LNK";
    std::wstring const native = NativePath(path).native();
    DWORD const attributes = ::GetFileAttributesW(native.c_str());
    bool const isTaken = attributes != INVALID_FILE_ATTRIBUTES;
    if (shortcut.target.empty() || !Folded(native).ends_with(kSuffix) ||
        (isTaken && (attributes & FILE_ATTRIBUTE_DIRECTORY)))
        return false;
    ShellCom const com;
    void *made = nullptr;
    if (FAILED(::CoCreateInstance(CLSID_ShellLink, nullptr, CLSCTX_INPROC_SERVER, IID_IShellLinkW, &made)))
        return false;
    auto *const link = static_cast<IShellLinkW *>(made);
    bool const isDone = Fill(*link, shortcut) && Save(*link, native);
    link->Release();
    return isDone;
}

std::FILE *OpenStream(std::wstring_view path, char const *mode) {
    std::wstring wide(mode, mode + std::char_traits<char>::length(mode));
    return ::_wfopen(NativePath(path).c_str(), (wide += L'N').c_str());
}

std::string_view LineEnd() noexcept {
    return "\r\n";
}

} // namespace zvi::host
