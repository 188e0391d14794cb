#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"

#include <string>

namespace zvi::lib {

/// Text between wide characters and multi-byte encodings: every text that crosses a file boundary in the library goes
/// through it. Code pages are told by their numbers (949, 1252, ...) on every host; 0 is the system's own, which is
/// UTF-8 on POSIX, and 65001 is UTF-8.
///
/// Lengths count bytes or elements; -1 says that the text ends at its zero, which is not taken into the result.
/// Elements of wide texts are UTF-16 units on every host. What is no character of the page becomes the replacement or
/// default character of the host; a text that cannot be converted at all, a null one and one of an unknown page give an
/// empty result.
class ZVI_API MConvertString {
public:
    /// For clients that derive from it; there is nothing to free.
    virtual ~MConvertString();

    /// A text of a code page as a wide one, and the other way round; page 0 is that of the system.
    static std::wstring MultiToWide(char const *text, int length = -1, unsigned int codePage = 0);
    static std::string WideToMulti(wchar_t const *text, int length = -1, unsigned int codePage = 0);
    /// `MultiToWide` as a `CString`. The name is spelled so.
    static CString MultiToWideCSting(char const *text, int length = -1, unsigned int codePage = 0);

    /// The number at the start of a text; 0 when there is none. See `NarrowToInt` and `NarrowToDouble`.
    static int atoi(CString &text);
    static double atof(CString &text);

    /// A UTF-8 text by way of the system's code page: characters that it lacks are lost there.
    static CString UTF8ToANSI(char const *text);
};

} // namespace zvi::lib
