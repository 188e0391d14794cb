#pragma once

#include "zvi/core/CString.h"

#include <optional>

namespace zvi::lib::text {

/// Whether a path needs a folder to start from: it begins neither with a backslash nor with a drive.
bool IsRelativePath(CString const &path);

/// A path without "." and "..": each ".." takes the item before it away, but never the root. "C:" becomes "C:\".
CString CanonicalPath(CString const &path);

/// The way from a folder to a path, which begins with "." or ".."; the last item of the path is not taken for a folder.
/// Nothing when the two have no beginning in common, as on two drives.
std::optional<CString> PathFromFolder(CString const &folder, CString const &path);

} // namespace zvi::lib::text
