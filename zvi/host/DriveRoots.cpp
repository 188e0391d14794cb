#include "zvi/host/DriveRootsDetail.h"

#include "zvi/host/Paths.h"

#include <array>
#include <mutex>

namespace zvi::host {

namespace {

constexpr std::size_t kDrives = 26;
constexpr std::size_t kDriveLength = 2; // "C:"

/// Number of a drive from 0; `kDrives` for what is no letter.
std::size_t DriveNumber(wchar_t letter) {
    if (letter >= L'a' && letter <= L'z')
        return static_cast<std::size_t>(letter - L'a');
    return letter >= L'A' && letter <= L'Z' ? static_cast<std::size_t>(letter - L'A') : kDrives;
}

struct DriveTable {
    std::mutex guard;
    std::array<std::filesystem::path, kDrives> roots;
};

/// Made at the first call, which may come while libraries are being loaded, and never destroyed.
DriveTable &Drives() {
    static DriveTable *const table = new DriveTable;
    return *table;
}

} // namespace

std::size_t DriveLength(std::wstring_view path) {
    bool const hasDrive = path.size() >= kDriveLength && path[1] == L':' && DriveNumber(path[0]) < kDrives;
    return hasDrive ? kDriveLength : 0;
}

std::filesystem::path DriveRoot(std::wstring_view path) {
    if (DriveLength(path) == 0)
        return {};
    DriveTable &table = Drives();
    std::lock_guard const lock(table.guard);
    return table.roots[DriveNumber(path[0])];
}

void SetDriveRoot(wchar_t drive, std::filesystem::path const &folder) {
    std::size_t const number = DriveNumber(drive);
    if (number == kDrives)
        return;
    DriveTable &table = Drives();
    std::lock_guard const lock(table.guard);
    table.roots[number] = folder;
}

} // namespace zvi::host
