#pragma once

#include "zvi/core/CString.h"
#include "zvi/text/IMSGPrinter.h"

#include <utility>

namespace zvi::lib::test {

/// Notes what it is told as "NAME:TEXT;", with a "*" for a document.
class NotingPrinter : public IMSGPrinter {
public:
    void ActiveMessageWnd(CDocument *document) override { Note(document, L"message", L""); }
    void ActiveSessionWnd(CDocument *document) override { Note(document, L"session", L""); }
    void MsgClear(CDocument *document) override { Note(document, L"clear", L""); }
    void MsgOut(CDocument *document, wchar_t const *text) override { Note(document, L"out", text); }
    void MsgOutSamePos(CDocument *document, wchar_t const *text) override { Note(document, L"same", text); }
    void MsgOutError(CDocument *document, wchar_t const *text) override { Note(document, L"error", text); }
    void MsgOutSamePosError(CDocument *document, wchar_t const *text) override { Note(document, L"sameerror", text); }
    void MsgOutWarning(CDocument *document, wchar_t const *text) override { Note(document, L"warning", text); }
    void MsgOutSamePosWarning(CDocument *document, wchar_t const *text) override { Note(document, L"samewarn", text); }

    /// What it was told since the last call.
    CString Taken() { return std::exchange(m_notes, CString()); }

private:
    void Note(CDocument *document, wchar_t const *name, wchar_t const *text) {
        m_notes.AppendFormat(L"%s%s:%s;", document ? L"*" : L"", name, text);
    }

    CString m_notes;
};

} // namespace zvi::lib::test
