#pragma once

#include "zvi/Export.h"

namespace zvi::lib {

/// Where the report of `MProfileMgr` goes, line by line: derive from it to send it elsewhere.
class ZVI_API MProfilePrinterAdaptor {
public:
    /// An object may be deleted through this class.
    virtual ~MProfilePrinterAdaptor();

    /// Comes before the first line; with 0 there are no lines, and no `Close`. 1 here.
    virtual int Open();
    /// A line without its line end. The report's lines are finished texts, with percent signs that are no conversions;
    /// only a `CNSProfilePrinter` gets them as a format and an argument.
    virtual void PrintLine(wchar_t const *text, ...) = 0;
    /// Comes after the last line. Does nothing here.
    virtual void Close();

protected:
    /// For classes derived from it alone.
    MProfilePrinterAdaptor() = default;
    MProfilePrinterAdaptor(MProfilePrinterAdaptor const &) = default;
    MProfilePrinterAdaptor &operator=(MProfilePrinterAdaptor const &) = default;
};

} // namespace zvi::lib
