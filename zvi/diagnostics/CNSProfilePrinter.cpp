#include "zvi/diagnostics/CNSProfilePrinter.h"

#include "zvi/core/WideFormat.h"
#include "zvi/text/IMSGPrinter.h"

#include <cstdarg>
#include <string>

namespace zvi::lib {

void CNSProfilePrinter::PrintLine(wchar_t const *text, ...) {
    if (!IMSGPrinter::m_pInstance)
        return;
    std::va_list arguments;
    va_start(arguments, text);
    std::wstring const line = FormatWideV(text, arguments);
    va_end(arguments);
    IMSGPrinter::m_pInstance->MsgOut(nullptr, line.c_str());
}

} // namespace zvi::lib
