#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace zvi::host {

/// The value in the file of that name; empty when there is none.
std::string FolderValue(std::filesystem::path const &folder, std::string_view name);

/// Writes the file of that name, or removes it for an empty value. False when that cannot be done.
bool SetFolderValue(std::filesystem::path const &folder, std::string_view name, std::string_view value);

/// The user's own store, for names and values that have been looked at.
std::string OwnUserValue(std::string_view name);
bool SetOwnUserValue(std::string_view name, std::string_view value);

} // namespace zvi::host
