#pragma once

#include "zvi/Export.h"

class CDocument;

namespace zvi::lib {

// Texts for the message window of the application, which is the printer registered through IMSGPrinter; without one a
// text is dropped without a word. Each operation stands in four forms: a text or a format with its arguments (see
// FormatWide), for no document in particular or for one. The plain forms say SampPos where the formatted ones say
// SamePos; callers know both.

/// A line of the message window, and one that replaces its last line.
ZVI_API void nsMsgOut(wchar_t const *text);
ZVI_API void nsMsgOut(CDocument *document, wchar_t const *text);
ZVI_API void nsMsgOutFormat(wchar_t const *format, ...);
ZVI_API void nsMsgOutFormat(CDocument *document, wchar_t const *format, ...);
ZVI_API void nsMsgOutSampPos(wchar_t const *text);
ZVI_API void nsMsgOutSampPos(CDocument *document, wchar_t const *text);
ZVI_API void nsMsgOutSamePosFormat(wchar_t const *format, ...);
ZVI_API void nsMsgOutSamePosFormat(CDocument *document, wchar_t const *format, ...);

/// The same as errors.
ZVI_API void nsMsgOutError(wchar_t const *text);
ZVI_API void nsMsgOutError(CDocument *document, wchar_t const *text);
ZVI_API void nsMsgOutFormatError(wchar_t const *format, ...);
ZVI_API void nsMsgOutFormatError(CDocument *document, wchar_t const *format, ...);
ZVI_API void nsMsgOutSampPosError(wchar_t const *text);
ZVI_API void nsMsgOutSampPosError(CDocument *document, wchar_t const *text);
ZVI_API void nsMsgOutSamePosFormatError(wchar_t const *format, ...);
ZVI_API void nsMsgOutSamePosFormatError(CDocument *document, wchar_t const *format, ...);

/// The same as warnings.
ZVI_API void nsMsgOutWarning(wchar_t const *text);
ZVI_API void nsMsgOutWarning(CDocument *document, wchar_t const *text);
ZVI_API void nsMsgOutFormatWarning(wchar_t const *format, ...);
ZVI_API void nsMsgOutFormatWarning(CDocument *document, wchar_t const *format, ...);
ZVI_API void nsMsgOutSampPosWarning(wchar_t const *text);
ZVI_API void nsMsgOutSampPosWarning(CDocument *document, wchar_t const *text);
ZVI_API void nsMsgOutSamePosFormatWarning(wchar_t const *format, ...);
ZVI_API void nsMsgOutSamePosFormatWarning(CDocument *document, wchar_t const *format, ...);

/// Bring the message window, and the session window, to the front, and empty the message window.
ZVI_API void nsActiveMessageWnd(CDocument *document);
ZVI_API void nsActiveSessionWnd(CDocument *document);
ZVI_API void nsMsgClear(CDocument *document);

/// Messages for debugging: deliberately do nothing at all, not even format, so that calling code can keep them.
ZVI_API void nsMsgOutD(wchar_t const *text);
ZVI_API void nsMsgOutD(CDocument *document, wchar_t const *text);
ZVI_API void nsMsgOutFormatD(wchar_t const *format, ...);
ZVI_API void nsMsgOutFormatD(CDocument *document, wchar_t const *format, ...);

} // namespace zvi::lib
