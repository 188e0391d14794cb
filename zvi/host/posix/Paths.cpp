#include "zvi/host/Paths.h"

#include "zvi/host/CodePage.h"
#include "zvi/host/DriveRootsDetail.h"
#include "zvi/host/posix/UserFolders.h"

#include <algorithm>
#include <fstream>

namespace zvi::host {

namespace {

namespace fs = std::filesystem;

/// A backslash in a name, as bytes of no character are held; no path holds a zero, so one may stand for it on the way.
constexpr wchar_t kBackslashOfName = 0xDC00 + L'\\';
constexpr wchar_t kMark = L'\0';

/// The bytes of a path, backslashes as slashes.
std::string NativeBytes(std::wstring_view path) {
    std::wstring units(path);
    std::replace(units.begin(), units.end(), L'\\', L'/');
    std::replace(units.begin(), units.end(), kBackslashOfName, kMark);
    std::string bytes = BytesOfWide(units);
    std::replace(bytes.begin(), bytes.end(), '\0', '\\');
    return bytes;
}

/// A value as shells quote it, backslashes in front of characters that stand for themselves.
std::string Unquoted(std::string_view value) {
    std::string text;
    bool isEscaped = false;
    for (char const c : value) {
        if (!isEscaped && c == '"')
            break;
        if (isEscaped || c != '\\')
            text += c;
        isEscaped = !isEscaped && c == '\\';
    }
    return text;
}

/// The folder of a line `XDG_DOCUMENTS_DIR="$HOME/..."` or `="/..."`; empty for any other line.
std::string DocumentsOfLine(std::string_view line, std::string const &home) {
    constexpr std::string_view kName = "XDG_DOCUMENTS_DIR";
    constexpr std::string_view kHome = "$HOME/";
    constexpr std::string_view kBlanks = " \t";
    line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
    if (!line.starts_with(kName))
        return {};
    line.remove_prefix(kName.size());
    line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
    if (!line.starts_with('='))
        return {};
    line.remove_prefix(1);
    line.remove_prefix(std::min(line.find_first_not_of(kBlanks), line.size()));
    if (!line.starts_with('"'))
        return {};
    line.remove_prefix(1);
    if (line.starts_with(kHome))
        return home + '/' + Unquoted(line.substr(kHome.size()));
    return line.starts_with('/') ? Unquoted(line) : std::string();
}

/// The documents folder that the user has chosen; empty when there is no choice. The last line that makes one counts.
std::string ChosenDocuments(std::string const &home) {
    std::ifstream file(ConfigurationFolder() / "user-dirs.dirs");
    std::string chosen;
    for (std::string line; std::getline(file, line);) {
        std::string folder = DocumentsOfLine(line, home);
        if (!folder.empty())
            chosen = std::move(folder);
    }
    return chosen;
}

} // namespace

fs::path NativePath(std::wstring_view path) {
    if (path.find(L'\0') != path.npos)
        return {};
    std::size_t const drive = DriveLength(path);
    if (drive == 0)
        return NativeBytes(path);
    std::string const root = DriveRoot(path).native();
    if (root.empty())
        return {};
    std::string const rest = NativeBytes(path.substr(drive));
    return rest.empty() || rest.starts_with('/') || root.ends_with('/') ? root + rest : root + '/' + rest;
}

std::wstring LibraryPath(fs::path const &native) {
    std::wstring path(native.native().size(), L'\0');
    path.resize(WideOfBytes(native.native(), path.data()));
    std::replace(path.begin(), path.end(), L'\\', kBackslashOfName);
    std::replace(path.begin(), path.end(), L'/', L'\\');
    return DriveLength(path) == 0 ? path : L".\\" + path;
}

std::wstring ModulePath() {
    std::error_code failure;
    fs::path const program = fs::read_symlink("/proc/self/exe", failure);
    return failure ? std::wstring() : LibraryPath(program);
}

std::wstring DocumentsFolderName() {
    std::string const home = HomeFolder().native();
    std::error_code failure;
    if (!fs::is_directory(home, failure))
        return {};
    std::string const chosen = ChosenDocuments(home);
    fs::path const folder = chosen.empty() ? fs::path(home) / "Documents" : fs::path(chosen).lexically_normal();
    std::wstring path = LibraryPath(folder);
    while (path.size() > 1 && path.ends_with(L'\\'))
        path.pop_back();
    return path;
}

std::wstring DocumentsFolder() {
    std::wstring path = DocumentsFolderName();
    std::error_code failure;
    fs::create_directories(NativePath(path), failure);
    return fs::is_directory(NativePath(path), failure) ? path : std::wstring();
}

bool IsSameName(std::wstring_view left, std::wstring_view right) {
    return left == right;
}

} // namespace zvi::host
