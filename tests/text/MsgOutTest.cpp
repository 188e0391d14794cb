#include "zvi/text/MsgOut.h"

#include "zvi/core/CString.h"
#include "zvi/host/MessageBox.h"
#include "zvi/text/GErrorBox.h"
#include "zvi/text/IMSGPrinter.h"

#include <gtest/gtest.h>

#include <iterator>

namespace zvi::lib::test {

namespace {

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
    void MsgOutSamePosWarning(CDocument *document, wchar_t const *text) override {
        Note(document, L"samewarning", text);
    }

    CString Taken() {
        CString const taken = m_notes;
        m_notes.Empty();
        return taken;
    }

private:
    void Note(CDocument *document, wchar_t const *name, wchar_t const *text) {
        m_notes.AppendFormat(L"%s%s:%s;", document ? L"*" : L"", name, text);
    }

    CString m_notes;
};

struct Row {
    wchar_t const *name;
    void (*plain)(wchar_t const *);
    void (*plainFor)(CDocument *, wchar_t const *);
    void (*formatted)(wchar_t const *, ...);
    void (*formattedFor)(CDocument *, wchar_t const *, ...);
};

constexpr Row kRows[] = {
    {L"out", nsMsgOut, nsMsgOut, nsMsgOutFormat, nsMsgOutFormat},
    {L"same", nsMsgOutSampPos, nsMsgOutSampPos, nsMsgOutSamePosFormat, nsMsgOutSamePosFormat},
    {L"error", nsMsgOutError, nsMsgOutError, nsMsgOutFormatError, nsMsgOutFormatError},
    {L"sameerror", nsMsgOutSampPosError, nsMsgOutSampPosError, nsMsgOutSamePosFormatError, nsMsgOutSamePosFormatError},
    {L"warning", nsMsgOutWarning, nsMsgOutWarning, nsMsgOutFormatWarning, nsMsgOutFormatWarning},
    {L"samewarning", nsMsgOutSampPosWarning, nsMsgOutSampPosWarning, nsMsgOutSamePosFormatWarning,
     nsMsgOutSamePosFormatWarning},
};

void CallAll(Row const &row, CDocument *document) {
    row.plain(L"%d");
    row.plainFor(document, L"x");
    row.formatted(L"%d%s", 1, L"y");
    row.formattedFor(document, L"%S", "z");
}

} // namespace

TEST(MsgOut, ReachesThePrinterByItsName) {
    int place = 0;
    auto *const document = reinterpret_cast<CDocument *>(&place);
    for (Row const &row : kRows)
        CallAll(row, document); // nobody is there
    {
        NotingPrinter printer;
        for (Row const &row : kRows) {
            CallAll(row, document);
            CString expected;
            expected.Format(L"%s:%%d;*%s:x;%s:1y;*%s:z;", row.name, row.name, row.name, row.name);
            EXPECT_EQ(printer.Taken(), expected);
        }
        nsActiveMessageWnd(document);
        nsActiveSessionWnd(nullptr);
        nsMsgClear(document);
        EXPECT_EQ(printer.Taken(), L"*message:;session:;*clear:;");
        nsMsgOutD(L"x");
        nsMsgOutD(document, L"x");
        nsMsgOutFormatD(L"%s", L"x");
        nsMsgOutFormatD(document, L"%s", L"x");
        EXPECT_EQ(printer.Taken(), L"");
    }
    EXPECT_EQ(IMSGPrinter::m_pInstance, nullptr);
}

TEST(GErrorBox, ShowsAFormattedText) {
    CString shown;
    host::SetMessageBox([&](wchar_t const *text) { shown = text; });
    EXPECT_EQ(GErrorBox(L"%d errors in %s", 3, L"plan"), 0);
    host::SetMessageBox({});
    EXPECT_EQ(shown, L"3 errors in plan");
}

} // namespace zvi::lib::test
