#pragma once

#include "zvi/Export.h"

#include <string>
#include <string_view>

// Small values that the host keeps for each user under a name, such as the switches of a test environment. Windows
// keeps them in the registry, under HKEY_CURRENT_USER\Software\ZORVI\TEST. Elsewhere each is a file of its name in the
// folder ZORVI/TEST of the user's configuration (XDG_CONFIG_HOME, or .config in the home folder), to be written with
// any editor; a line end at the end of the file does not count.
//
// A name is a file name that every host takes: 1 to 200 bytes without control characters and without any of
// / \ : * ? " < > |, that does not begin with a dot, nor end with a dot or a blank. Windows does not tell the case of
// letters apart. Names and values are UTF-8. Everything here may be called from any thread, and while programs and
// libraries are being loaded or unloaded.

namespace zvi::host {

/// The value that this user has stored under `name`; empty when there is none, or it cannot be read.
ZVI_API std::string UserValue(std::string_view name);

/// Stores a value; an empty one removes it. Readers see the old value or the new one. False when the name is none, the
/// value holds a NUL, or it cannot be stored; then the old one holds.
ZVI_API bool SetUserValue(std::string_view name, std::string_view value);

/// Keeps the values of this process in a folder, named as the host names it, as files as described above, on every
/// host; it is made with the first value. An empty name goes back to the user's own. For tests.
ZVI_API void SetUserValueFolder(std::string_view folder);

} // namespace zvi::host
