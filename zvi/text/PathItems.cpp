#include "zvi/text/PathItemsDetail.h"

#include "zvi/host/Paths.h"

#include <algorithm>
#include <string_view>
#include <vector>

namespace zvi::lib::text {

namespace {

std::wstring_view View(CString const &path) {
    return {path.GetString(), static_cast<std::size_t>(path.GetLength())};
}

/// "C:\plans\floor.dxf" has the root "C:\" and two items; one more, which is empty, with a backslash at the end.
struct PathItems {
    std::wstring_view root;
    std::vector<std::wstring_view> items;
};

bool HasDrive(std::wstring_view path) {
    return path.size() >= 2 && path[1] == L':';
}

/// "C:\", "C:", "\\server\", "\", or nothing.
std::wstring_view RootOf(std::wstring_view path) {
    constexpr std::wstring_view kServer = L"\\\\";
    if (HasDrive(path))
        return path.substr(0, path.substr(2).starts_with(L'\\') ? 3 : 2);
    if (path.starts_with(kServer))
        return path.substr(0, std::min(path.find(L'\\', kServer.size()), path.size() - 1) + 1);
    return path.substr(0, path.starts_with(L'\\') ? 1 : 0);
}

PathItems ItemsOf(std::wstring_view path) {
    PathItems parts{RootOf(path), {}};
    path.remove_prefix(parts.root.size());
    while (!path.empty()) {
        std::size_t const end = path.find(L'\\');
        parts.items.push_back(path.substr(0, end));
        path.remove_prefix(std::min(end, path.size()));
        if (path == L"\\")
            parts.items.push_back({});
        path.remove_prefix(path.empty() ? 0 : 1);
    }
    return parts;
}

std::wstring_view WithoutBackslash(std::wstring_view root) {
    return root.ends_with(L'\\') ? root.substr(0, root.size() - 1) : root;
}

/// Drives and servers are the same in either case on every host.
bool IsSameRoot(std::wstring_view left, std::wstring_view right) {
    CString const first(WithoutBackslash(left));
    return first.CompareNoCase(CString(WithoutBackslash(right))) == 0 && left.empty() == right.empty();
}

std::wstring Joined(std::vector<std::wstring_view> const &items, std::size_t first) {
    std::wstring path;
    for (std::size_t i = first; i < items.size(); ++i)
        path.append(i == first ? L"" : L"\\").append(items[i]);
    return path;
}

} // namespace

bool IsRelativePath(CString const &path) {
    return !View(path).starts_with(L'\\') && !HasDrive(View(path));
}

CString CanonicalPath(CString const &path) {
    PathItems const parts = ItemsOf(View(path));
    std::vector<std::wstring_view> kept;
    for (std::wstring_view const item : parts.items) {
        if (item == L".")
            continue;
        bool const isUp = item == L"..";
        if (isUp && !kept.empty() && kept.back() != L"..")
            kept.pop_back();
        else if (!isUp || parts.root.empty())
            kept.push_back(item);
    }
    std::wstring canonical(parts.root);
    if (HasDrive(canonical) && !canonical.ends_with(L'\\') && kept.empty())
        canonical += L'\\';
    return CString(std::wstring_view(canonical + Joined(kept, 0)));
}

std::optional<CString> PathFromFolder(CString const &folder, CString const &path) {
    PathItems from = ItemsOf(View(folder));
    PathItems const to = ItemsOf(View(path));
    if (!IsSameRoot(from.root, to.root))
        return std::nullopt;
    if (!from.items.empty() && from.items.back().empty())
        from.items.pop_back();
    std::size_t const folders = to.items.empty() ? 0 : to.items.size() - 1;
    std::size_t common = 0;
    while (common < std::min(from.items.size(), folders) && host::IsSameName(from.items[common], to.items[common]))
        ++common;
    if (common == 0 && to.root.empty())
        return std::nullopt;
    std::wstring way = common == from.items.size() ? L".\\" : L"";
    for (std::size_t i = common; i < from.items.size(); ++i)
        way += L"..\\";
    std::wstring const rest = Joined(to.items, common);
    if (rest.empty() && way != L".\\")
        way.pop_back();
    return CString(std::wstring_view(way + rest));
}

} // namespace zvi::lib::text
