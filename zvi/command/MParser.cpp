#include "zvi/command/MParser.h"

#include "zvi/command/NormalizeCommandText.h"
#include "zvi/units/MUnitCtrl.h"

#include <cassert>
#include <functional>
#include <utility>

namespace zvi::lib {

namespace {

/// The quantity kind of lengths.
constexpr int kLengthKind = 1;

/// Length units in the order of their indices.
constexpr wchar_t const *kLengthUnits[] = {L"mm", L"cm", L"m", L"in", L"ft", L"um"};

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

/// Takes a text letter by letter and puts each number with a unit behind it in parentheses, as a product with the
/// factor of the unit. Other letters stay unless the text ends in them.
class UnitScan {
public:
    /// `convert` turns the letters behind a number into "*" and a factor.
    explicit UnitScan(std::function<void(CString &)> convert) : m_convert(std::move(convert)) {}

    void Letter(wchar_t c, int source) {
        if (m_in != In::kLetters)
            m_letters.Empty();
        m_behindNumber = m_behindNumber || m_in == In::kNumber;
        m_letters.Add(c, source);
        m_in = In::kLetters;
    }

    /// Any character that is no letter comes after the end of the letters before it.
    void EndLetters() {
        if (m_behindNumber)
            AddConverted();
        else
            m_result.Add(m_letters);
        m_letters.Empty();
    }

    void NumberSymbol(wchar_t c, int source) {
        if (m_in != In::kNumber)
            m_number.Empty();
        m_number.Add(c, source);
        m_in = In::kNumber;
    }

    void Other(wchar_t c, int source) {
        if (m_in == In::kNumber)
            m_result.Add(m_number);
        m_result.Add(c, source);
        m_in = In::kOther;
    }

    TracedWord Finish() {
        if (m_in == In::kNumber)
            m_result.Add(m_number);
        if (m_behindNumber)
            AddConverted();
        return std::move(m_result);
    }

private:
    enum class In { kNothing, kNumber, kLetters, kOther };

    /// Puts the number and the letters behind it into the result.
    void AddConverted() {
        assert(!m_number.sources.empty() && !m_letters.sources.empty());
        m_convert(m_letters.text);
        m_result.Add(L'(', m_number.sources.front());
        m_result.Add(m_number);
        m_result.Add({m_letters.text, std::vector<int>(static_cast<std::size_t>(m_letters.text.GetLength()),
                                                       m_letters.sources.front())});
        m_result.Add(L')', m_letters.sources.back());
        m_behindNumber = false;
    }

    std::function<void(CString &)> m_convert;
    TracedWord m_result;
    TracedWord m_number;
    TracedWord m_letters;
    bool m_behindNumber = false; ///< the letters stand behind a number
    In m_in = In::kNothing;
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
    UnitScan scan([this, unit](CString &letters) { ConvertUnitToken(letters, unit); });
    for (int i = 0; i < normalized.GetLength(); ++i) {
        wchar_t const c = normalized.GetAt(i);
        int const source = typed[static_cast<std::size_t>(i)];
        if (IsAlpahbetUpper(c)) {
            scan.Letter(c, source);
            continue;
        }
        scan.EndLetters();
        if (IsNumberSymbol(c))
            scan.NumberSymbol(c, source);
        else if (c != L',')
            scan.Other(c, source);
    }
    TracedWord result = scan.Finish();
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
