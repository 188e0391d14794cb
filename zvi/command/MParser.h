#pragma once

#include "zvi/command/MyParser.h"

#include <span>
#include <vector>

namespace zvi::lib {

/// The unit system whose length unit the results are in; see zvi/units/MUnitCtrl.h.
class MUnitCtrl;

/// A parser whose numbers may bear a length unit: 5MM, 1,000MM, 2M+30CM.
class ZVI_API MParser : public MyParser {
public:
    /// Makes the parser that it owns.
    MParser();
    /// Deletes it.
    ~MParser() override;

    /// As `ParsingNumberArg`, once the length units have become factors to the current length unit of `unit`. Returns 0
    /// for an empty text too.
    int ParsingUNumberArg(CString const &text, MUnitCtrl *unit);
    /// The same for one integer.
    int ParsingUINumberArg(CString const &text, MUnitCtrl *unit);

    /// The normalised text with each length unit behind a number as a multiplication: "5MM+3" becomes
    /// "(5*0.001000)+3" when the current unit is the metre. Commas inside numbers go: "1,000MM" is 1000 mm. A word
    /// behind a number that is no length unit stays, in lower case, and makes the parse fail; so do "ft" and other
    /// words with a B or a T, which are markers by then. `token` is not used.
    CString SetUnitArgTokenString(CString const &text, CString const &token, MUnitCtrl *unit);
    /// The same; `sources` receives, for each character of the result, the index in `text` of the character it comes
    /// from.
    CString SetUnitArgTokenString(CString const &text, MUnitCtrl *unit, std::vector<int> &sources);

    /// Turns "mm", "cm", "m", "in", "ft" or "um", whatever its case, into "*" and its factor with six decimals, and
    /// returns 1. Any other word becomes lower case and returns 0; without `unit` it stays as it is.
    int ConvertUnitToken(CString &token, MUnitCtrl *unit);

    /// The words that `ConvertUnitToken` knows, in the order of their indices. "ft" is among them, though no typed text
    /// can reach it.
    static std::span<wchar_t const *const> LengthUnits();

    /// Digits and the decimal point; capitals; small letters.
    bool IsNumberSymbol(wchar_t c) const { return (c >= L'0' && c <= L'9') || c == L'.'; }
    bool IsAlpahbetUpper(wchar_t c) const { return c >= L'A' && c <= L'Z'; }
    bool IsAlpahbetLower(wchar_t c) const { return c >= L'a' && c <= L'z'; }
};

} // namespace zvi::lib
