#pragma once

#include "zvi/Export.h"
#include "zvi/diagnostics/MProfilePrinterAdaptor.h"

#include <cstdio>

namespace zvi::lib {

/// Appends the report to the file "C:\profile.txt", in UTF-8. On a host without drives the application says where C: is
/// with `host::SetDriveRoot`; without that there is no file, and no report.
class ZVI_API CProfilePrinter : public MProfilePrinterAdaptor {
public:
    /// Opens nothing yet.
    CProfilePrinter() = default;
    /// Closes the file if it is open.
    ~CProfilePrinter() override;
    CProfilePrinter(CProfilePrinter const &) = delete;
    CProfilePrinter &operator=(CProfilePrinter const &) = delete;

    /// Opens the file; 1 if that could be done, else 0. A file that is open is closed first.
    int Open() override;
    /// Writes the text as it stands and a line end, if the file is open; further arguments are ignored.
    void PrintLine(wchar_t const *text, ...) override;
    /// Closes the file.
    void Close() override;

private:
    std::FILE *m_file = nullptr;
};

} // namespace zvi::lib
