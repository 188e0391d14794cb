#pragma once

#include "zvi/Export.h"

namespace zvi::lib {

/// Shows a formatted text (see `FormatWide`) to the user and waits until he has seen it; gives 0. It goes through
/// `host::ShowMessageBox`, where an application installs its own way.
ZVI_API int GErrorBox(wchar_t const *format, ...);

} // namespace zvi::lib
