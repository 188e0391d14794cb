#include "zvi/text/MsgOut.h"

#include "tests/text/NotingPrinter.h"
#include "zvi/host/MessageBox.h"
#include "zvi/text/GErrorBox.h"

#include <gtest/gtest.h>

#include <iterator>

namespace zvi::lib::test {

namespace {

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
    {L"samewarn", nsMsgOutSampPosWarning, nsMsgOutSampPosWarning, nsMsgOutSamePosFormatWarning,
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

TEST(GErrorBox, ShowsAFormattedTextThroughTheHandlerThatIsInstalled) {
    CString shown;
    host::SetMessageBox([&](wchar_t const *text) {
        shown = text;
        host::SetMessageBox([&](wchar_t const *again) { shown += CString(L"+") + again; });
    });
    EXPECT_EQ(GErrorBox(L"%d errors in %s", 3, L"plan"), 0);
    GErrorBox(L"b");
    host::ShowMessageBox(nullptr);
    host::SetMessageBox({});
    EXPECT_EQ(shown, L"3 errors in plan+b+");
#ifndef _WIN32 // where a box would wait for somebody
    testing::internal::CaptureStderr();
    GErrorBox(L"caf\xE9");
    EXPECT_EQ(testing::internal::GetCapturedStderr(), "caf\xC3\xA9\n");
#endif
}

} // namespace zvi::lib::test
