#pragma once

#include "zvi/Export.h"

namespace zvi::lib {

class MProfilePrinterAdaptor;

/// Reports all data of `MProfileMgr` when it is destroyed; one at the top of `main` is the usual way to a report.
class ZVI_API CProfileReporter {
public:
    /// Will report with a `CProfilePrinter` of its own.
    CProfileReporter() = default;
    /// Will report with `printer`, and delete it if `own` is not 0. A null one is as none.
    CProfileReporter(MProfilePrinterAdaptor *printer, int own) : m_printer(printer), m_own(own) {}
    /// Reports. What a printer raises is lost.
    virtual ~CProfileReporter();
    CProfileReporter(CProfileReporter const &) = delete;
    CProfileReporter &operator=(CProfileReporter const &) = delete;

private:
    MProfilePrinterAdaptor *m_printer = nullptr;
    int m_own = 0;
};

} // namespace zvi::lib
