#include "zvi/command/MParser.h"

#include "zvi/command/NormalizeCommandText.h"
#include "zvi/units/MUnitCtrl.h"

namespace zvi::lib {

namespace {

/// The quantity kind of lengths.
constexpr int kLengthKind = 1;

/// Length units in the order of their indices.
constexpr wchar_t const *kLengthUnits[] = {L"mm", L"cm", L"m", L"in", L"ft", L"um"};

/// What the scan of a number with units is in the middle of.
enum class Scan { kNothing, kNumber, kLetters, kOther };

/// A text, and for each of its characters the index of the typed one.
struct TracedWord {
    CString text;
    std::vector<int> sources;

    void Add(wchar_t c, int source) {
        text += c;
        sources.push_back(source);
    }
    void Add(TracedWord const &other) {
        text += other.text;
        sources.insert(sources.end(), other.sources.begin(), other.sources.end());
    }
    void Empty() {
        text.Empty();
        sources.clear();
    }
};

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
    std::vector<int> sources;
    return SetUnitArgTokenString(text, unit, sources);
}

CString MParser::SetUnitArgTokenString(CString const &text, MUnitCtrl *unit, std::vector<int> &sources) {
    std::vector<int> typed;
    CString const normalized = NormalizeCommandText(text, typed);
    TracedWord result;
    TracedWord number;
    TracedWord letters;
    bool lettersBehindNumber = false;
    Scan scan = Scan::kNothing;
    auto const appendConverted = [&] {
        ConvertUnitToken(letters.text, unit);
        result.Add(L'(', number.sources.front());
        result.Add(number);
        result.Add({letters.text,
                    std::vector<int>(static_cast<std::size_t>(letters.text.GetLength()), letters.sources.front())});
        result.Add(L')', letters.sources.back());
        lettersBehindNumber = false;
    };
    for (int i = 0; i < normalized.GetLength(); ++i) {
        wchar_t const c = normalized.GetAt(i);
        int const source = typed[static_cast<std::size_t>(i)];
        if (IsAlpahbetUpper(c)) {
            if (scan != Scan::kLetters)
                letters.Empty();
            lettersBehindNumber = lettersBehindNumber || scan == Scan::kNumber;
            letters.Add(c, source);
            scan = Scan::kLetters;
            continue;
        }
        if (lettersBehindNumber)
            appendConverted();
        else
            result.Add(letters);
        letters.Empty();
        if (c == L',')
            continue;
        if (IsNumberSymbol(c)) {
            if (scan != Scan::kNumber)
                number.Empty();
            number.Add(c, source);
            scan = Scan::kNumber;
            continue;
        }
        if (scan == Scan::kNumber)
            result.Add(number);
        result.Add(c, source);
        scan = Scan::kOther;
    }
    if (scan == Scan::kNumber)
        result.Add(number);
    if (lettersBehindNumber)
        appendConverted();
    sources = std::move(result.sources);
    return result.text;
}

std::span<wchar_t const *const> MParser::LengthUnits() {
    return kLengthUnits;
}

int MParser::ConvertUnitToken(CString &token, MUnitCtrl *unit) {
    if (!unit)
        return 0;
    token.MakeLower();
    for (int i = 0; i < static_cast<int>(LengthUnits().size()); ++i) {
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
