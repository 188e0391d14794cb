#include "zvi/command/MParser.h"

#include "zvi/command/NormalizeCommandText.h"
#include "zvi/units/MUnitCtrl.h"

#include <iterator>

namespace zvi::lib {

namespace {

/// The quantity kind of lengths.
constexpr int kLengthKind = 1;

/// Length units in the order of their indices.
constexpr wchar_t const *kLengthUnits[] = {L"mm", L"cm", L"m", L"in", L"ft", L"um"};

/// What the scan of a number with units is in the middle of.
enum class Scan { kNothing, kNumber, kLetters, kOther };

} // namespace

MParser::MParser() = default;
MParser::~MParser() = default;

int MParser::ParsingUNumberArg(CString const &text, MUnitCtrl *unit) {
    CString const converted = SetUnitArgTokenString(text, CString(), unit);
    return converted.IsEmpty() ? 0 : ParsingNumberArg(converted);
}

int MParser::ParsingUINumberArg(CString const &text, MUnitCtrl *unit) {
    CString const converted = SetUnitArgTokenString(text, CString(), unit);
    return converted.IsEmpty() ? 0 : ParsingINumberArg(converted);
}

CString MParser::SetUnitArgTokenString(CString const &text, CString const &, MUnitCtrl *unit) {
    CString const normalized = NormalizeCommandText(text);
    CString result;
    CString number;
    CString letters;
    bool lettersBehindNumber = false;
    Scan scan = Scan::kNothing;
    auto const appendConverted = [&] {
        ConvertUnitToken(letters, unit);
        result.AppendFormat(L"(%s%s)", number.GetString(), letters.GetString());
        lettersBehindNumber = false;
    };
    for (int i = 0; i < normalized.GetLength(); ++i) {
        wchar_t const c = normalized.GetAt(i);
        if (IsAlpahbetUpper(c)) {
            if (scan != Scan::kLetters)
                letters.Empty();
            lettersBehindNumber = lettersBehindNumber || scan == Scan::kNumber;
            letters += c;
            scan = Scan::kLetters;
            continue;
        }
        if (lettersBehindNumber)
            appendConverted();
        else
            result += letters;
        letters.Empty();
        if (c == L',')
            continue;
        if (IsNumberSymbol(c)) {
            if (scan != Scan::kNumber)
                number.Empty();
            number += c;
            scan = Scan::kNumber;
            continue;
        }
        if (scan == Scan::kNumber)
            result += number;
        result += c;
        scan = Scan::kOther;
    }
    if (scan == Scan::kNumber)
        result += number;
    if (lettersBehindNumber)
        appendConverted();
    return result;
}

int MParser::ConvertUnitToken(CString &token, MUnitCtrl *unit) {
    if (!unit)
        return 0;
    token.MakeLower();
    for (int i = 0; i < static_cast<int>(std::size(kLengthUnits)); ++i) {
        if (token != kLengthUnits[i])
            continue;
        double const factor =
            unit->GetConvertFactorTgtUnit(i, i, i, i, i, kLengthKind) / unit->GetConvertFactorCurrent(kLengthKind);
        token.Format(L"*%lf", factor);
        return 1;
    }
    return 0;
}

} // namespace zvi::lib
