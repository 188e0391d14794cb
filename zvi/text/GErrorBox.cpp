#include "zvi/text/GErrorBox.h"

#include "zvi/core/CString.h"
#include "zvi/host/MessageBox.h"

#include <cstdarg>

namespace zvi::lib {

int GErrorBox(wchar_t const *format, ...) {
    CString text;
    std::va_list arguments;
    va_start(arguments, format);
    text.FormatV(format, arguments);
    va_end(arguments);
    host::ShowMessageBox(text);
    return 0;
}

} // namespace zvi::lib
