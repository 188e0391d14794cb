#include "zvi/diagnostics/CProfilePrinter.h"

#include "zvi/core/CString.h"
#include "zvi/core/Utf8.h"
#include "zvi/host/Files.h"

#include <string>
#include <utility>

namespace zvi::lib {

CProfilePrinter::~CProfilePrinter() {
    CProfilePrinter::Close();
}

int CProfilePrinter::Open() {
    CProfilePrinter::Close();
    m_file = host::OpenStream(L"C:\\profile.txt", "at");
    return m_file ? 1 : 0;
}

void CProfilePrinter::PrintLine(wchar_t const *text, ...) {
    if (m_file)
        std::fputs((Utf8Of(CString(text)) += '\n').c_str(), m_file);
}

void CProfilePrinter::Close() {
    if (m_file)
        std::fclose(std::exchange(m_file, nullptr));
}

} // namespace zvi::lib
