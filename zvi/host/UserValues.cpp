#include "zvi/host/UserValues.h"

#include "zvi/host/Paths.h"
#include "zvi/host/ReplaceContent.h"
#include "zvi/host/UserValuesDetail.h"

#include <algorithm>
#include <cassert>
#include <fstream>
#include <iterator>
#include <mutex>
#include <system_error>

namespace zvi::host {

namespace {

/// Of a name, so that it is a file name on every host.
constexpr std::size_t kLongestName = 200;

struct FolderInUse {
    std::mutex guard;
    std::filesystem::path folder;
};

/// Made at the first call, which may come while libraries are being loaded, and never destroyed.
FolderInUse &InUse() {
    static FolderInUse *const inUse = new FolderInUse;
    return *inUse;
}

std::filesystem::path Folder() {
    FolderInUse &inUse = InUse();
    std::lock_guard const lock(inUse.guard);
    return inUse.folder;
}

std::filesystem::path PathOf(std::string_view utf8) {
    return std::filesystem::path(std::u8string(utf8.begin(), utf8.end()));
}

bool IsForbidden(char character) {
    return static_cast<unsigned char>(character) < 0x20 || character == 0x7F ||
           std::string_view("/\\:*?\"<>|").find(character) != std::string_view::npos;
}

} // namespace

bool IsUserValueName(std::string_view name) {
    return !name.empty() && name.size() <= kLongestName && name.front() != '.' && name.back() != '.' &&
           name.back() != ' ' && std::none_of(name.begin(), name.end(), IsForbidden);
}

std::string FolderValue(std::filesystem::path const &folder, std::string_view name) {
    assert(IsUserValueName(name));
    std::filesystem::path const path = folder / PathOf(name);
    std::error_code error;
    if (!std::filesystem::is_regular_file(path, error))
        return {};
    std::ifstream file(path, std::ios::binary);
    std::string value{std::istreambuf_iterator<char>(file), {}};
    if (value.ends_with('\n'))
        value.pop_back();
    if (value.ends_with('\r'))
        value.pop_back();
    return value;
}

bool SetFolderValue(std::filesystem::path const &folder, std::string_view name, std::string_view value) {
    assert(IsUserValueName(name));
    std::filesystem::path const path = folder / PathOf(name);
    std::error_code error;
    if (value.empty()) {
        std::filesystem::remove(path, error);
        return !error;
    }
    std::filesystem::create_directories(folder, error);
    return !ReplaceContent(LibraryPath(path), std::string(value) + '\n');
}

std::string UserValue(std::string_view name) {
    if (!IsUserValueName(name))
        return {};
    std::filesystem::path const folder = Folder();
    return folder.empty() ? OwnUserValue(name) : FolderValue(folder, name);
}

bool SetUserValue(std::string_view name, std::string_view value) {
    if (!IsUserValueName(name) || value.find('\0') != std::string_view::npos)
        return false;
    std::filesystem::path const folder = Folder();
    return folder.empty() ? SetOwnUserValue(name, value) : SetFolderValue(folder, name, value);
}

void SetUserValueFolder(std::string_view folder) {
    std::filesystem::path path = PathOf(folder);
    FolderInUse &inUse = InUse();
    std::lock_guard const lock(inUse.guard);
    inUse.folder.swap(path);
}

} // namespace zvi::host
