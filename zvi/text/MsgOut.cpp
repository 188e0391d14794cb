#include "zvi/text/MsgOut.h"

#include "zvi/core/CString.h"
#include "zvi/text/IMSGPrinter.h"

#include <cstdarg>

namespace zvi::lib {

namespace {

using Operation = void (IMSGPrinter::*)(CDocument *document, wchar_t const *text);
using WindowOperation = void (IMSGPrinter::*)(CDocument *document);

void Print(Operation operation, CDocument *document, wchar_t const *text) {
    if (IMSGPrinter *const printer = IMSGPrinter::m_pInstance)
        (printer->*operation)(document, text);
}

void PrintFormatted(Operation operation, CDocument *document, wchar_t const *format, std::va_list arguments) {
    if (!IMSGPrinter::m_pInstance)
        return;
    CString text;
    text.FormatV(format, arguments);
    Print(operation, document, text);
}

void Tell(WindowOperation operation, CDocument *document) {
    if (IMSGPrinter *const printer = IMSGPrinter::m_pInstance)
        (printer->*operation)(document);
}

} // namespace

void nsMsgOut(wchar_t const *text) {
    Print(&IMSGPrinter::MsgOut, nullptr, text);
}

void nsMsgOut(CDocument *document, wchar_t const *text) {
    Print(&IMSGPrinter::MsgOut, document, text);
}

void nsMsgOutFormat(wchar_t const *format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    PrintFormatted(&IMSGPrinter::MsgOut, nullptr, format, arguments);
    va_end(arguments);
}

void nsMsgOutFormat(CDocument *document, wchar_t const *format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    PrintFormatted(&IMSGPrinter::MsgOut, document, format, arguments);
    va_end(arguments);
}

void nsMsgOutSampPos(wchar_t const *text) {
    Print(&IMSGPrinter::MsgOutSamePos, nullptr, text);
}

void nsMsgOutSampPos(CDocument *document, wchar_t const *text) {
    Print(&IMSGPrinter::MsgOutSamePos, document, text);
}

void nsMsgOutSamePosFormat(wchar_t const *format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    PrintFormatted(&IMSGPrinter::MsgOutSamePos, nullptr, format, arguments);
    va_end(arguments);
}

void nsMsgOutSamePosFormat(CDocument *document, wchar_t const *format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    PrintFormatted(&IMSGPrinter::MsgOutSamePos, document, format, arguments);
    va_end(arguments);
}

void nsMsgOutError(wchar_t const *text) {
    Print(&IMSGPrinter::MsgOutError, nullptr, text);
}

void nsMsgOutError(CDocument *document, wchar_t const *text) {
    Print(&IMSGPrinter::MsgOutError, document, text);
}

void nsMsgOutFormatError(wchar_t const *format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    PrintFormatted(&IMSGPrinter::MsgOutError, nullptr, format, arguments);
    va_end(arguments);
}

void nsMsgOutFormatError(CDocument *document, wchar_t const *format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    PrintFormatted(&IMSGPrinter::MsgOutError, document, format, arguments);
    va_end(arguments);
}

void nsMsgOutSampPosError(wchar_t const *text) {
    Print(&IMSGPrinter::MsgOutSamePosError, nullptr, text);
}

void nsMsgOutSampPosError(CDocument *document, wchar_t const *text) {
    Print(&IMSGPrinter::MsgOutSamePosError, document, text);
}

void nsMsgOutSamePosFormatError(wchar_t const *format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    PrintFormatted(&IMSGPrinter::MsgOutSamePosError, nullptr, format, arguments);
    va_end(arguments);
}

void nsMsgOutSamePosFormatError(CDocument *document, wchar_t const *format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    PrintFormatted(&IMSGPrinter::MsgOutSamePosError, document, format, arguments);
    va_end(arguments);
}

void nsMsgOutWarning(wchar_t const *text) {
    Print(&IMSGPrinter::MsgOutWarning, nullptr, text);
}

void nsMsgOutWarning(CDocument *document, wchar_t const *text) {
    Print(&IMSGPrinter::MsgOutWarning, document, text);
}

void nsMsgOutFormatWarning(wchar_t const *format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    PrintFormatted(&IMSGPrinter::MsgOutWarning, nullptr, format, arguments);
    va_end(arguments);
}

void nsMsgOutFormatWarning(CDocument *document, wchar_t const *format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    PrintFormatted(&IMSGPrinter::MsgOutWarning, document, format, arguments);
    va_end(arguments);
}

void nsMsgOutSampPosWarning(wchar_t const *text) {
    Print(&IMSGPrinter::MsgOutSamePosWarning, nullptr, text);
}

void nsMsgOutSampPosWarning(CDocument *document, wchar_t const *text) {
    Print(&IMSGPrinter::MsgOutSamePosWarning, document, text);
}

void nsMsgOutSamePosFormatWarning(wchar_t const *format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    PrintFormatted(&IMSGPrinter::MsgOutSamePosWarning, nullptr, format, arguments);
    va_end(arguments);
}

void nsMsgOutSamePosFormatWarning(CDocument *document, wchar_t const *format, ...) {
    std::va_list arguments;
    va_start(arguments, format);
    PrintFormatted(&IMSGPrinter::MsgOutSamePosWarning, document, format, arguments);
    va_end(arguments);
}

void nsActiveMessageWnd(CDocument *document) {
    Tell(&IMSGPrinter::ActiveMessageWnd, document);
}

void nsActiveSessionWnd(CDocument *document) {
    Tell(&IMSGPrinter::ActiveSessionWnd, document);
}

void nsMsgClear(CDocument *document) {
    Tell(&IMSGPrinter::MsgClear, document);
}

void nsMsgOutD(wchar_t const *) {}

void nsMsgOutD(CDocument *, wchar_t const *) {}

void nsMsgOutFormatD(wchar_t const *, ...) {}

void nsMsgOutFormatD(CDocument *, wchar_t const *, ...) {}

} // namespace zvi::lib
