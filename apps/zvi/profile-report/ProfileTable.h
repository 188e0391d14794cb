#pragma once

#include "apps/zvi/profile-report/ProfileRows.h"

#include <string>

namespace zvi::app {

/// The rows as a table for people, and how many rows of the report it leaves out. A bar shows a name's time as a part
/// of the report's total: '#' for its own, '.' for that of the scopes inside.
std::string ProfileTable(ProfileReport const &report, std::vector<ProfileRow> const &rows);

/// The same as one JSON object.
std::string ProfileJson(ProfileReport const &report, std::vector<ProfileRow> const &rows);

} // namespace zvi::app
