#pragma once

#include "zvi/Export.h"
#include "zvi/core/CArray.h"
#include "zvi/core/CString.h"
#include "zvi/core/MArray.h"

namespace zvi::lib {

class MyParser;

/// One-call reads of typed text, each on a parser of its own, so that nothing leaks from one call to the next but the
/// variables. Each returns 1 when the text was parsed and 0 otherwise; on 0 the outputs stay as they were unless
/// stated.
///
///     double value = 0;
///     CStrParser::GetFloatNumber(L"sqrt(4)+3", value); // 5
///
/// The variables are process-wide and not guarded: only one thread may use the entries that say they know them.
class ZVI_API CStrParser {
public:
    /// An integer; 0 on failure.
    static int GetNumberOfTimes(CString const &text, int &value);
    /// A position or vector; missing coordinates are 0, and so are all three on failure.
    static int GetEQDistance(CString const &text, double &x, double &y, double &z);
    /// The same; the vector is not made a unit one.
    static int GetDirectionVector(CString const &text, double &x, double &y, double &z);
    /// Distances with repeat items: "3@2,5" gives 2, 2, 2, 5.
    static int GetUEDistance(CString const &text, CArray<double> &distances);
    /// A position; missing coordinates are 0.
    static int GetPosition(CString const &text, double &x, double &y, double &z);
    /// Up to two numbers, a missing one 0, which know the variables.
    static int Get2FloatNumber(CString const &text, double &a, double &b);
    /// One number, which knows the variables. An empty text is 0.
    static int GetFloatNumber(CString const &text, double &value);
    /// One integer; a fraction is cut off. An empty text is 0.
    static int GetINumber(CString const &text, int &value);
    /// Integers and ranges such as "1to9by2 20", which replace the contents of `list`.
    static int GetNodeList(CString const &text, CArray<int> &list);
    /// The same; a negative number becomes its value modulo 2^32.
    static int GetNodeList(CString const &text, CArray<unsigned int> &list);
    /// As the operation of `Parser`; this one and the next know the variables.
    static int ParsingPositionXYZList(CString const &text, CArray<double> &coordinates);
    /// `mode` is that of `Parser::SetPreModePosNOp`.
    static int ParsingPositionNOp(CString const &text, double &x, double &y, double &z, unsigned int &op, int mode);
    /// Whether the text is a command line; its arguments are dropped.
    static int ParsingCommandLine(CString const &text);
    /// As `GetNodeList`, by the start word of plain integer lists.
    static int ParsingListByTo(CString const &text, CArray<int> &list);

    /// Forgets all variables.
    static void ClearVariables();
    /// Appends a variable, without a look at those there are. Returns 1.
    static int AddDoubleVar(wchar_t const *name, double value);
    /// Hands all variables to the parser in their order; of two with one name the first counts.
    static void AddAllVariables(MyParser *parser);

    /// Distances as the text that `GetUEDistance` reads: 2, 2, 2, 5 give "3@2, 5". Numbers have nine digits.
    static CString ConvtDistArr2DistStr(CArray<double> const &distances);

    /// A name made from `base` that is not among `names`: `base` itself, or with the first free number from 1 to 101 in
    /// the form of `mode`: 0 "base-(Copy1)", 1 "base-1", 2 "base (1)". Returns 0 for an empty base, or for another mode
    /// once `base` is taken, with `out` untouched; and when all the numbers are taken, with the last name in `out`.
    static int MakeUniqueName(MArray<CString> const &names, CString const &base, CString &out, int mode);
};

} // namespace zvi::lib
