#include "zvi/host/Paths.h"

#include "zvi/base/Utf8Sequence.h"
#include "zvi/host/DriveRootsDetail.h"
#include "zvi/host/posix/UserFolders.h"

#include <algorithm>
#include <fstream>

namespace zvi::host {

namespace {

namespace fs = std::filesystem;
namespace base = lib::base;

/// What a byte that cannot stand in a path of the library is added to: a surrogate that no text has.
constexpr std::uint32_t kByteUnit = base::kFirstLowSurrogate;

bool IsByteUnit(std::uint32_t unit) {
    return unit == kByteUnit + '\\' || (unit >= kByteUnit + 0x80 && unit <= kByteUnit + 0xFF);
}

/// The bytes of a path, backslashes as slashes.
std::string NativeBytes(std::wstring_view path) {
    std::string bytes;
    bytes.reserve(path.size());
    for (std::size_t i = 0; i < path.size(); ++i) {
        auto unit = static_cast<std::uint32_t>(path[i]);
        if (base::IsHighSurrogate(unit) && i + 1 < path.size() &&
            base::IsLowSurrogate(static_cast<std::uint32_t>(path[i + 1])))
            unit = base::CharacterOf(unit, static_cast<std::uint32_t>(path[++i]));
        if (unit == L'\\')
            bytes += '/';
        else if (IsByteUnit(unit))
            bytes += static_cast<char>(unit - kByteUnit);
        else
            base::AppendUtf8(bytes, base::IsCharacter(unit) ? unit : 0xFFFD);
    }
    return bytes;
}

void AppendUnits(std::wstring &units, std::uint32_t character) {
    if (character >= base::kFirstBeyondBasicPlane) {
        units += static_cast<wchar_t>(base::HighSurrogate(character));
        character = base::LowSurrogate(character);
    }
    units += static_cast<wchar_t>(character);
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
    std::string_view bytes = native.native();
    std::wstring path;
    path.reserve(bytes.size());
    while (!bytes.empty()) {
        std::uint32_t character = 0;
        std::size_t const length = base::ReadUtf8(bytes, character);
        if (length == 0)
            character = kByteUnit + static_cast<unsigned char>(bytes[0]);
        else if (character == '/')
            character = L'\\';
        else if (character == '\\')
            character = kByteUnit + '\\';
        AppendUnits(path, character);
        bytes.remove_prefix(std::max<std::size_t>(length, 1));
    }
    return DriveLength(path) == 0 ? path : L".\\" + path;
}

std::wstring ModulePath() {
    std::error_code failure;
    fs::path const program = fs::read_symlink("/proc/self/exe", failure);
    return failure ? std::wstring() : LibraryPath(program);
}

std::wstring DocumentsFolder() {
    std::string const home = HomeFolder().native();
    std::error_code failure;
    if (!fs::is_directory(home, failure))
        return {};
    std::string const chosen = ChosenDocuments(home);
    fs::path const folder = chosen.empty() ? fs::path(home) / "Documents" : fs::path(chosen).lexically_normal();
    fs::create_directories(folder, failure);
    if (!fs::is_directory(folder, failure))
        return {};
    std::wstring path = LibraryPath(folder);
    while (path.size() > 1 && path.ends_with(L'\\'))
        path.pop_back();
    return path;
}

std::wstring CurrentFolder() {
    std::error_code failure;
    fs::path const folder = fs::current_path(failure);
    return failure ? std::wstring() : LibraryPath(folder);
}

bool SetCurrentFolder(std::wstring_view path) {
    std::error_code failure;
    fs::current_path(NativePath(path), failure);
    return !failure;
}

} // namespace zvi::host
