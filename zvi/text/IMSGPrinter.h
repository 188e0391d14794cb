#pragma once

#include "zvi/Export.h"

class CDocument;

namespace zvi::lib {

/// The message window of an application, which implements it; the library knows no window. Making an object registers
/// it. Every operation gets the document it is for, which may be null. The order of the virtual operations is fixed,
/// because applications are compiled against it.
///
/// The forms named SamePos replace the last line of the window instead of adding one, which is what a progress counter
/// wants. All are called on the thread of the caller.
class ZVI_API IMSGPrinter {
protected:
    /// Takes the place of the printer until now.
    IMSGPrinter();
    /// Leaves no printer, also where another one has taken its place.
    virtual ~IMSGPrinter();

public:
    IMSGPrinter(IMSGPrinter const &) = delete;
    IMSGPrinter &operator=(IMSGPrinter const &) = delete;

    /// Brings the message window to the front.
    virtual void ActiveMessageWnd(CDocument *document) = 0;
    /// Brings the session window to the front.
    virtual void ActiveSessionWnd(CDocument *document) = 0;
    /// Empties the message window.
    virtual void MsgClear(CDocument *document) = 0;
    /// Shows a line.
    virtual void MsgOut(CDocument *document, wchar_t const *text) = 0;
    /// Shows a line in place of the last one.
    virtual void MsgOutSamePos(CDocument *document, wchar_t const *text) = 0;
    /// Shows a line as an error.
    virtual void MsgOutError(CDocument *document, wchar_t const *text) = 0;
    /// Shows a line as an error in place of the last one.
    virtual void MsgOutSamePosError(CDocument *document, wchar_t const *text) = 0;
    /// Shows a line as a warning.
    virtual void MsgOutWarning(CDocument *document, wchar_t const *text) = 0;
    /// Shows a line as a warning in place of the last one.
    virtual void MsgOutSamePosWarning(CDocument *document, wchar_t const *text) = 0;

    /// The printer of the process, null without one. The object made last; the destruction of any clears it.
    static IMSGPrinter *m_pInstance;
};

} // namespace zvi::lib
