#pragma once

#include <filesystem>
#include <string>
#include <string_view>

namespace zvi::host {

/// Whether the host takes the text as a name: see UserValues.h.
bool IsUserValueName(std::string_view name);

/// The value in the file of that name; empty when there is none. Here and below the name is one.
std::string FolderValue(std::filesystem::path const &folder, std::string_view name);

/// Writes the file of that name, or removes it for an empty value. False when that cannot be done.
bool SetFolderValue(std::filesystem::path const &folder, std::string_view name, std::string_view value);

/// The user's own store; a value holds no NUL.
std::string OwnUserValue(std::string_view name);
bool SetOwnUserValue(std::string_view name, std::string_view value);

} // namespace zvi::host
