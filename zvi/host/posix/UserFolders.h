#pragma once

#include <filesystem>

namespace zvi::host {

/// The user's home folder: what the environment says, else the system's table of users; empty when neither does.
std::filesystem::path HomeFolder();

/// Where the user keeps what programs are to know; empty when there is no home folder.
std::filesystem::path ConfigurationFolder();

} // namespace zvi::host
