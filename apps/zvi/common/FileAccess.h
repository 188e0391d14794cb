#pragma once

#include <filesystem>
#include <string>
#include <string_view>
#include <system_error>

namespace zvi::app {

/// The path of a name as it stands on the command line, which is UTF-8 where the host's own names are wide.
std::filesystem::path PathOf(std::string const &name);

/// The name of a path, for people and for `PathOf`.
std::string NameOf(std::filesystem::path const &path);

/// Whether the path names a device or a pipe, which is written as it is, and not a file or folder.
bool IsDevice(std::filesystem::path const &path);

/// A file name that no other process uses, beside the path.
std::filesystem::path NameBeside(std::filesystem::path const &path);

/// Makes the file anew, or opens the device, and writes `content` to it. An interrupt may remove the file meanwhile.
std::error_code WriteContent(std::filesystem::path const &path, std::string_view content);

} // namespace zvi::app
