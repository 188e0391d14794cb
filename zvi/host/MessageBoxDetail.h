#pragma once

namespace zvi::host {

/// Shows a text without the help of an application.
void ShowSystemMessage(wchar_t const *text);

} // namespace zvi::host
