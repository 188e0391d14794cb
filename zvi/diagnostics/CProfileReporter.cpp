#include "zvi/diagnostics/CProfileReporter.h"

#include "zvi/diagnostics/CProfilePrinter.h"
#include "zvi/diagnostics/MProfileMgr.h"

namespace zvi::lib {

CProfileReporter::~CProfileReporter() {
    // The printer is the application's; what it raises must not end the process from here.
    try {
        CProfilePrinter printer;
        MProfileMgr::PrintST(m_printer ? m_printer : &printer);
    } catch (...) { // NOLINT(bugprone-empty-catch)
    }
    if (m_own)
        delete m_printer;
}

} // namespace zvi::lib
