#include "zvi/host/Paths.h"

#include "zvi/host/DriveRootsDetail.h"
#include "zvi/host/windows/WindowsHeader.h"

#include <shlobj.h>

#include <array>

namespace zvi::host {

namespace fs = std::filesystem;

namespace {

std::wstring DocumentsBy(int flag) {
    std::array<wchar_t, MAX_PATH> path{};
    HRESULT const result = ::SHGetFolderPathW(nullptr, CSIDL_PERSONAL | flag, nullptr, SHGFP_TYPE_CURRENT, path.data());
    return result == S_OK ? std::wstring(path.data()) : std::wstring();
}

} // namespace

fs::path NativePath(std::wstring_view path) {
    if (path.find(L'\0') != path.npos)
        return {};
    std::wstring root = DriveRoot(path).native();
    if (root.empty())
        return std::wstring(path);
    std::wstring_view const rest = path.substr(DriveLength(path));
    auto const isParted = [](wchar_t c) { return c == L'\\' || c == L'/'; };
    if (!rest.empty() && !isParted(rest.front()) && !isParted(root.back()))
        root += L'\\';
    return root += rest;
}

std::wstring LibraryPath(fs::path const &native) {
    std::wstring path = native.native();
    for (wchar_t &c : path)
        if (c == L'/')
            c = L'\\';
    return path;
}

std::wstring ModulePath() {
    constexpr std::size_t kLongestPath = 1 << 15;
    std::wstring path(MAX_PATH, L'\0');
    while (path.size() <= kLongestPath) {
        DWORD const length = ::GetModuleFileNameW(nullptr, path.data(), static_cast<DWORD>(path.size()));
        if (length < path.size()) {
            path.resize(length);
            return path;
        }
        path.resize(2 * path.size());
    }
    return {};
}

std::wstring DocumentsFolder() {
    return DocumentsBy(CSIDL_FLAG_CREATE);
}

std::wstring DocumentsFolderName() {
    return DocumentsBy(CSIDL_FLAG_DONT_VERIFY);
}

bool IsSameName(std::wstring_view left, std::wstring_view right) {
    return ::CompareStringOrdinal(left.data(), static_cast<int>(left.size()), right.data(),
                                  static_cast<int>(right.size()), TRUE) == CSTR_EQUAL;
}

} // namespace zvi::host
