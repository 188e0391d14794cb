#pragma once

#include <filesystem>
#include <string_view>

namespace zvi::host {

/// Length of "C:" at the start of a path; 0 without a drive.
std::size_t DriveLength(std::wstring_view path);

/// The folder that the application has set for the drive at the start of a path; empty when there is none.
std::filesystem::path DriveRoot(std::wstring_view path);

} // namespace zvi::host
