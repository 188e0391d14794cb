// Usual slips as a table: the rule of the language that was broken, and the text with the slip mended.

#include "apps/zvi/eval/hints/Mistakes.h"

#include "apps/zvi/common/Characters.h"
#include "apps/zvi/common/WideText.h"

#include <algorithm>

namespace zvi::app {

namespace {

using Failed = FailedText;

/// Most slips that are mended in one text.
constexpr int kMostRepairs = 8;
/// Longest corrected text that a hint shows, in characters.
constexpr std::size_t kLongestShown = 100;

/// A mistyped text with slips mended.
struct RepairedText {
    std::wstring text;
    std::string why; ///< the rule of the language that was broken first, for people
    EvalOutcome outcome;
};

/// The text with `length` characters at `at` replaced; as it is when the slip was not `seen`.
std::wstring Mended(bool seen, std::wstring const &text, std::size_t at, std::size_t length, std::wstring_view by) {
    return seen ? std::wstring(text).replace(at, length, by) : text;
}

/// The same for the character at the place of the failure.
std::wstring MendedHere(bool seen, Failed const &failed, std::wstring_view by) {
    return Mended(seen, failed.typed, failed.Place(), 1, by);
}

struct SignForm {
    wchar_t sign;
    wchar_t const *plain;
};

/// Signs as books, word processors and other keyboards write them.
constexpr SignForm kSignForms[] = {
    {0x00D7, L"*"},  {0x00B7, L"*"},  {0x22C5, L"*"},  {0x2217, L"*"},    {0x00F7, L"/"},  {0x2215, L"/"},
    {0x2212, L"-"},  {0x2013, L"-"},  {0x2014, L"-"},  {0x2010, L"-"},    {0x2011, L"-"},  {0x00B2, L"^2"},
    {0x00B3, L"^3"}, {0x2074, L"^4"}, {0x03C0, L"pi"}, {0x2220, L"<"},    {0x00B0, L""},   {0x3000, L" "},
    {0x00A0, L" "},  {0x202F, L" "},  {0x2009, L" "},  {0x221A, L"sqrt"}, {0x2026, L"to"}, {0x3001, L","},
};

/// The full-width forms of ASCII stand in its order behind this character.
constexpr wchar_t kFullWidth = 0xFF00;
constexpr wchar_t kLastFullWidth = 0xFF5E;

std::wstring PlainSigns(Failed const &failed) {
    std::wstring plain;
    for (wchar_t const c : failed.typed) {
        auto const form = std::find_if(std::begin(kSignForms), std::end(kSignForms),
                                       [c](SignForm const &entry) { return entry.sign == c; });
        if (form != std::end(kSignForms))
            plain += form->plain;
        else
            plain += c > kFullWidth && c <= kLastFullWidth ? static_cast<wchar_t>(c - kFullWidth + L' ') : c;
    }
    return plain;
}

/// Takes away the blanks on both sides of operators and inside parentheses. In a list a minus with a blank in front and
/// none behind is the sign of the next item and stays so.
std::wstring Tightened(Failed const &failed) {
    std::wstring tight;
    for (std::size_t i = 0; i < failed.typed.size(); ++i) {
        if (!IsBlank(failed.typed[i])) {
            tight += failed.typed[i];
            continue;
        }
        std::size_t const next = std::min(NextItem(failed.typed, i), failed.typed.size());
        wchar_t const before = tight.empty() ? L'\0' : tight.back();
        wchar_t const after = failed.At(next);
        bool const isSign = after == L'-' && next + 1 < failed.typed.size() && !IsBlank(failed.At(next + 1)) &&
                            !IsOperator(before) && !ReadsOneExpression(failed.settings.mode);
        bool const drops = IsOperator(before) || before == L'(' || after == L')' || (IsOperator(after) && !isSign) ||
                           (after == L'(' && IsLetter(before));
        if (drops)
            i = next - 1;
        else
            tight += failed.typed[i];
    }
    return tight;
}

/// Whether exactly three digits stand at `at`, as behind the sign between thousands.
bool IsGroupOfThree(Failed const &failed, std::size_t at) {
    return EndOfDigits(failed.typed, at) == at + 3;
}

std::wstring CommaInNumber(Failed const &failed) {
    std::size_t const at = failed.Place();
    bool const between = at > 0 && failed.IsHere(L",") && IsDigit(failed.At(at - 1)) && IsDigit(failed.At(at + 1));
    bool const alone = failed.typed.find(L',') == failed.typed.rfind(L',');
    bool const seen = between && alone && ReadsOneExpression(failed.settings.mode);
    return MendedHere(seen, failed, IsGroupOfThree(failed, at + 1) ? L"" : L".");
}

std::wstring BlankInNumber(Failed const &failed) {
    std::size_t const end = failed.Before() + 1;
    bool const seen = end != 0 && end < failed.Place() && IsDigit(failed.At(end - 1)) &&
                      IsGroupOfThree(failed, failed.Place()) && ReadsOneExpression(failed.settings.mode);
    return Mended(seen, failed.typed, end, failed.Place() - end, L"");
}

/// The text with the brackets closed that are open at its end.
std::wstring Closed(Failed const &failed) {
    std::wstring closing;
    for (wchar_t const c : failed.typed) {
        if (c == L'(' || c == L'[')
            closing.insert(closing.begin(), c == L'(' ? L')' : L']');
        else if (!closing.empty() && c == closing.front())
            closing.erase(closing.begin());
    }
    return failed.typed + closing;
}

/// "sin 30" as "sin(30)", and "sin[30]" or "sin{30}" too.
std::wstring FunctionArgument(Failed const &failed) {
    std::wstring const &text = failed.typed;
    std::vector<std::string> const &functions = BuiltInFunctions();
    for (Span const &word : Words(text)) {
        std::size_t const begin = NextItem(text, word.End());
        if (begin == kNowhere ||
            std::find(functions.begin(), functions.end(), Lower(Part(text, word))) == functions.end())
            continue;
        bool const isOpen = text[begin] == L'[' || text[begin] == L'{';
        std::size_t const close = text.find(text[begin] == L'[' ? L']' : L'}', begin);
        if (isOpen && close != kNowhere)
            return Mended(true, Mended(true, text, close, 1, L")"), begin, 1, L"(");
        std::size_t const end = EndOfName(text, EndOfNumber(text, begin));
        if (end > begin)
            return Mended(true, text, word.End(), end - word.End(), L"(" + text.substr(begin, end - begin) + L")");
    }
    return text;
}

std::wstring TimesSign(Failed const &failed) {
    std::size_t const end = failed.Before() + 1;
    wchar_t const left = end == 0 ? L'\0' : failed.At(end - 1);
    wchar_t const right = failed.Here();
    bool const begins = IsLetter(right) || right == L'(' || (left == L')' && IsDigit(right));
    bool const seen = begins && (IsNameChar(left) || left == L'.' || left == L')');
    return Mended(seen, failed.typed, end, failed.Place() - end, L"*");
}

std::wstring RangeWord(Failed const &failed) {
    if (failed.IsHere(L":~"))
        return MendedHere(true, failed, L"to");
    std::size_t const dots = failed.typed.find(L"..");
    std::size_t const end = dots == kNowhere ? kNowhere : failed.typed.find_first_not_of(L'.', dots);
    return Mended(end != kNowhere, failed.typed, dots, end - dots, L"to");
}

/// A range that does not rise and does not say so: the reading stopped behind it.
std::wstring FallingRange(Failed const &failed) {
    std::size_t const end = failed.Before() + 1;
    std::size_t begin = end;
    while (begin > 0 && IsDigit(failed.At(begin - 1)))
        --begin;
    bool const hasStep = begin > 0 && failed.IsAt(begin - 1, L"BbYy");
    return Mended(failed.Fault() == lib::ParseFaultKind::kRangeStep, failed.typed, hasStep ? begin : end, 0,
                  hasStep ? L"-" : L"by-1");
}

std::wstring PolarSign(Failed const &failed) {
    bool const seen = failed.settings.mode == EvalMode::kPosition && failed.typed.find(L'<') != kNowhere &&
                      failed.typed.find(L'@') == kNowhere;
    return Mended(seen, failed.typed, 0, 0, L"@");
}

/// The text with each of some characters replaced by the one in the same place of `others`.
std::wstring Exchanged(std::wstring text, std::wstring_view characters, std::wstring_view others) {
    for (wchar_t &c : text) {
        std::size_t const at = c == 0 ? kNowhere : characters.find(c);
        c = at == kNowhere ? c : others[at];
    }
    return text;
}

std::wstring PointBrackets(Failed const &failed) {
    if (failed.settings.mode != EvalMode::kPoints || failed.typed.find(L'[') != kNowhere)
        return failed.typed;
    return failed.typed.find(L'(') == kNowhere ? L"[" + failed.typed + L"]" : Exchanged(failed.typed, L"()", L"[]");
}

std::wstring RoundBrackets(Failed const &failed) {
    // A comma in square brackets makes a point.
    bool const hasPoints = failed.settings.mode == EvalMode::kPoints || failed.typed.find(L',') != kNowhere;
    return Exchanged(failed.typed, hasPoints ? L"{}" : L"{}[]", L"()()");
}

std::wstring WithoutEquals(Failed const &failed) {
    bool const atEnd = NextItem(failed.typed, failed.Place() + 1) == kNowhere;
    return MendedHere(failed.IsHere(L"=") && (failed.Before() == kNowhere || atEnd), failed, L"");
}

std::wstring WithoutQuotes(Failed const &failed) {
    std::wstring text = failed.typed;
    // A mark behind a number means something else.
    if (!text.empty() && !IsNameChar(text.front()) && text.front() != L'(')
        std::erase_if(text, [](wchar_t c) {
            return std::wstring_view(L"\"'`").find(c) != kNowhere || (c >= 0x2018 && c <= 0x201F);
        });
    return text;
}

std::wstring FeetInInches(Failed const &failed) {
    std::wstring const upper = Upper(failed.typed);
    for (std::size_t at = upper.find(L"FT"); failed.HasUnits() && at != kNowhere; at = upper.find(L"FT", at + 1)) {
        std::size_t const end = ItemBefore(upper, at) + 1;
        bool const behindNumber = end != 0 && (IsDigit(upper[end - 1]) || upper[end - 1] == L'.');
        if (behindNumber && !IsNameChar(failed.At(at + 2)))
            return Mended(true, failed.typed, end, at + 2 - end, L"*12in");
    }
    return failed.typed;
}

/// With units a name at the end of the text is taken for a unit that has no number, and passed over.
std::wstring NameAtEnd(Failed const &failed) {
    std::vector<Span> const words = Words(failed.typed);
    if (words.empty() || NextItem(failed.typed, words.back().End()) != kNowhere)
        return failed.typed;
    Span const &name = words.back();
    return Mended(failed.HasUnits(), failed.typed, name.begin, name.length,
                  L"(" + std::wstring(Part(failed.typed, name)) + L")");
}

/// A position or list without brackets around it.
std::wstring WithoutFrame(Failed const &failed) {
    std::wstring const &text = failed.typed;
    std::size_t const first = NextItem(text, 0);
    std::size_t const last = ItemBefore(text, text.size());
    if (first == last || text.find_first_of(L", ") == kNowhere || ReadsOneExpression(failed.settings.mode) ||
        failed.settings.mode == EvalMode::kPoints)
        return text;
    bool const framed = (text[first] == L'(' && text[last] == L')') || (text[first] == L'[' && text[last] == L']');
    return framed ? text.substr(first + 1, last - first - 1) : text;
}

struct Repair {
    char const *why;                      ///< the rule that was broken
    std::wstring (*mend)(Failed const &); ///< the mended text; the same when it does not apply
    std::wstring_view here = {};          ///< without `mend`: the slip is one of these characters at the place
    std::wstring_view by = {};            ///< what it is replaced by
};

constexpr Repair kRepairs[] = {
    {"only plain signs are read", PlainSigns},
    {"blanks separate items", Tightened},
    {"quotation marks are not part of the text", WithoutQuotes},
    {"the text is the expression alone, without =", WithoutEquals},
    {"a number has no sign +", nullptr, L"+", L""},
    {"a power is written ^",
     [](Failed const &f) {
         bool const seen = f.Place() > 0 && f.IsHere(L"*") && f.At(f.Place() - 1) == L'*';
         return Mended(seen, f.typed, f.Place() - 1, 2, L"^");
     }},
    {"a comma separates items, the decimal sign is the point", CommaInNumber},
    {"blanks separate items, also inside a number", BlankInNumber},
    {"ft cannot be read, because T stands for TO", FeetInInches},
    {"with units a name cannot end the text", NameAtEnd},
    {"a function takes its argument in parentheses", FunctionArgument},
    {"a bracket is not closed", Closed},
    {"a bracket closes nothing", nullptr, L")]", L""},
    {"a polar position begins with @", PolarSign},
    {"each point stands in brackets", PointBrackets},
    {"the items stand without brackets around them", WithoutFrame},
    {"inches are written in",
     [](Failed const &f) {
         return MendedHere(f.HasUnits() && f.IsHere(L"\"'"), f, f.IsHere(L"\"") ? L"in" : L"*12in");
     }},
    {"a range is written with to", RangeWord},
    {"a range that does not rise needs a negative step", FallingRange},
    {"a product needs its *", TimesSign},
    {"a comma or a blank separates items", nullptr, L";|", L","},
    {"an item is missing in front of the comma",
     [](Failed const &f) { return MendedHere(f.IsHere(L",") && f.Before() == kNowhere, f, L"0,"); }},
    {"an expression is grouped by ( and )", RoundBrackets},
};

/// The text with the first slip mended that lets all of it be read, or else that lets more of it be read.
std::optional<RepairedText> Mend(Failed const &failed) {
    // What is left to read is what counts: a repair may change the length of what was read.
    auto const left = [](std::wstring const &text, EvalOutcome const &outcome) {
        return static_cast<std::ptrdiff_t>(text.size()) - outcome.place;
    };
    std::optional<RepairedText> best;
    for (Repair const &repair : kRepairs) {
        std::wstring mended =
            repair.mend ? repair.mend(failed) : MendedHere(failed.IsHere(repair.here), failed, repair.by);
        if (mended == failed.typed)
            continue;
        EvalOutcome outcome = Evaluate(CString(std::wstring_view(mended)), failed.settings);
        bool const all = outcome.parsed;
        if (all || (!best && left(mended, outcome) < left(failed.typed, failed.outcome)))
            best = {std::move(mended), repair.why, std::move(outcome)};
        if (all)
            break;
    }
    return best;
}

/// The text mended as far as it goes; nothing when no slip was found.
std::optional<RepairedText> FindRepair(Failed const &failed) {
    std::optional<RepairedText> repaired = Mend(failed);
    for (int i = 1; i < kMostRepairs && repaired && !repaired->outcome.parsed; ++i) {
        std::optional<RepairedText> next = Mend({repaired->text, failed.settings, repaired->outcome});
        if (!next)
            break;
        next->why = repaired->why;
        repaired = std::move(next);
    }
    return repaired;
}

} // namespace

std::optional<Mistake> FindSlip(FailedText const &failed) {
    std::optional<RepairedText> const repaired = FindRepair(failed);
    if (!repaired)
        return std::nullopt;
    Mistake slip{{failed.Place(), 1}, repaired->why};
    bool const isMended = repaired->outcome.parsed;
    if (isMended && repaired->text.size() <= kLongestShown)
        slip.hint += "; write " + Utf8Of(repaired->text);
    if (isMended)
        return slip;
    FailedText const left{repaired->text, failed.settings, repaired->outcome};
    if (left.Fault() != lib::ParseFaultKind::kZeroDivisor && left.Fault() != lib::ParseFaultKind::kExponent)
        return std::nullopt;
    bool const isExponent = left.Fault() == lib::ParseFaultKind::kExponent;
    slip.hint += "; " + (isExponent ? FindExponent(left) : FindZeroDivisor(left))->hint;
    return slip;
}

} // namespace zvi::app
