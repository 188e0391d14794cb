#pragma once

#include "zvi/Export.h"

#include <functional>

namespace zvi::host {

/// What an application installs to show a message to the user: takes the text and comes back when he has seen it.
using MessageBoxHandler = std::function<void(wchar_t const *text)>;

/// Installs the handler of the process in place of the one before; an empty function takes it away. Install it on the
/// thread that shows messages; the handler may replace itself while it is called.
ZVI_API void SetMessageBox(MessageBoxHandler handler);

/// Shows a text (null is an empty one) through the handler. Without one: on Windows in a box of the system with an OK
/// button, and where there can be none, as on POSIX always, as a line of standard error.
ZVI_API void ShowMessageBox(wchar_t const *text);

} // namespace zvi::host
