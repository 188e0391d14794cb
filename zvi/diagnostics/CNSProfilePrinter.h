#pragma once

#include "zvi/Export.h"
#include "zvi/diagnostics/MProfilePrinterAdaptor.h"

namespace zvi::lib {

/// Sends the report to the application's message window, by `IMSGPrinter::MsgOut` without a document.
class ZVI_API CNSProfilePrinter : public MProfilePrinterAdaptor {
public:
    /// Formats by the rules of `FormatWide` and sends the line; without a printer it is dropped.
    void PrintLine(wchar_t const *text, ...) override;
};

} // namespace zvi::lib
