#pragma once

#include "zvi/Export.h"
#include "zvi/core/CArray.h"
#include "zvi/core/CString.h"
#include "zvi/core/CStringArray.h"
#include "zvi/core/MArray.h"

namespace zvi::lib {

/// Splits plain text at a separator and reads the pieces. White space around a piece does not count. A piece converts
/// when all of it is one decimal number in the range of its type; "1e3" is a number for the `double` forms alone.
class ZVI_API MArrayParser {
public:
    /// Empties `values` and appends every piece that converts; the others are skipped. Returns 1.
    static int ParseArray_Int(wchar_t const *text, wchar_t separator, MArray<int> &values);
    /// The same for decimal numbers.
    static int ParseArray_Double(wchar_t const *text, wchar_t separator, MArray<double> &values);

    /// Empties `values` and appends the pieces without the white space around them. Empty pieces are skipped unless
    /// `keepEmpty` is non-zero. Returns 1.
    static int ParseArray_String(wchar_t const *text, wchar_t separator, CStringArray &values, int keepEmpty);

    /// Cuts at the first separator and reads both sides. Returns 1, or 0 with the outputs as they were when there is no
    /// separator or a side does not convert.
    static int Parse2Number(wchar_t const *text, wchar_t separator, int &first, int &second);
    /// The same for an integer and a decimal number.
    static int Parse2Number(wchar_t const *text, wchar_t separator, int &first, double &second);
    /// The same for two decimal numbers.
    static int Parse2Number(wchar_t const *text, wchar_t separator, double &first, double &second);
};

} // namespace zvi::lib
