#include "apps/zvi/eval/Repairs.h"

#include "apps/zvi/eval/TypedRange.h"
#include "apps/zvi/eval/TypedText.h"

#include <algorithm>

namespace zvi::app {

namespace {

constexpr std::size_t kNowhere = std::wstring::npos;

/// Most slips that are mended in one text.
constexpr int kMostRepairs = 8;

/// A text and where its reading failed.
struct Failed {
    std::wstring const &text;
    std::size_t place;
    EvalSettings const &settings;

    wchar_t At(std::size_t index) const { return index < text.size() ? text[index] : L'\0'; }
    wchar_t Here() const { return At(place); }
    /// The index of the last character before the place that is no blank; kNowhere if there is none.
    std::size_t Before() const { return ItemBefore(text, place); }
};

std::wstring Replaced(std::wstring const &text, std::size_t at, std::size_t length, std::wstring const &by) {
    return text.substr(0, at) + by + text.substr(at + length);
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

std::wstring PlainSigns(Failed const &failed) {
    std::wstring plain;
    for (wchar_t const c : failed.text) {
        auto const form = std::find_if(std::begin(kSignForms), std::end(kSignForms),
                                       [c](SignForm const &entry) { return entry.sign == c; });
        if (form != std::end(kSignForms)) {
            plain += form->plain;
        } else {
            // The full-width forms of ASCII stand in its order.
            plain += c > 0xFF00 && c < 0xFF5F ? static_cast<wchar_t>(c - 0xFF00 + 0x20) : c;
        }
    }
    return plain;
}

/// Takes away the blanks on both sides of operators and inside parentheses. In a list a minus with a blank in front and
/// none behind is the sign of the next item and stays so.
std::wstring Tightened(Failed const &failed) {
    std::wstring const &text = failed.text;
    std::wstring tight;
    for (std::size_t i = 0; i < text.size(); ++i) {
        if (!IsBlank(text[i])) {
            tight += text[i];
            continue;
        }
        std::size_t const next = NextItem(text, i);
        wchar_t const before = tight.empty() ? L'\0' : tight.back();
        wchar_t const after = next == kNowhere ? L'\0' : text[next];
        bool const isSign = after == L'-' && next + 1 < text.size() && !IsBlank(text[next + 1]) &&
                            !IsOperator(before) && !ReadsOneExpression(failed.settings.mode);
        bool const drops = IsOperator(before) || before == L'(' || after == L')' || (IsOperator(after) && !isSign) ||
                           (after == L'(' && IsLetter(before));
        if (drops)
            i = next == kNowhere ? text.size() : next - 1;
        else
            tight += text[i];
    }
    return tight;
}

std::wstring PowerSign(Failed const &failed) {
    bool const isDouble = failed.Here() == L'*' && failed.place > 0 && failed.At(failed.place - 1) == L'*';
    return isDouble ? Replaced(failed.text, failed.place - 1, 2, L"^") : failed.text;
}

/// Digits of a group that a comma or blank in front sets apart: exactly three.
bool IsGroupOfThree(Failed const &failed, std::size_t at) {
    return IsDigit(failed.At(at)) && IsDigit(failed.At(at + 1)) && IsDigit(failed.At(at + 2)) &&
           !IsDigit(failed.At(at + 3));
}

std::wstring CommaInNumber(Failed const &failed) {
    bool const between = failed.place > 0 && failed.Here() == L',' && IsDigit(failed.At(failed.place - 1)) &&
                         IsDigit(failed.At(failed.place + 1));
    bool const alone = failed.text.find(L',') == failed.text.rfind(L',');
    if (!between || !alone || !ReadsOneExpression(failed.settings.mode))
        return failed.text;
    return Replaced(failed.text, failed.place, 1, IsGroupOfThree(failed, failed.place + 1) ? L"" : L".");
}

std::wstring BlankInNumber(Failed const &failed) {
    std::size_t const before = failed.Before();
    bool const between = before != kNowhere && before + 1 < failed.place && IsDigit(failed.At(before)) &&
                         IsGroupOfThree(failed, failed.place);
    if (!between || !ReadsOneExpression(failed.settings.mode))
        return failed.text;
    return Replaced(failed.text, before + 1, failed.place - before - 1, L"");
}

/// The brackets that are open at the end, as the text that closes them.
std::wstring Closing(std::wstring const &text) {
    std::wstring closing;
    for (wchar_t const c : text) {
        if (c == L'(' || c == L'[') {
            closing.insert(closing.begin(), c == L'(' ? L')' : L']');
        } else if (!closing.empty() && c == closing.front()) {
            closing.erase(closing.begin());
        }
    }
    return closing;
}

std::wstring Closed(Failed const &failed) {
    return failed.text + Closing(failed.text);
}

std::wstring WithoutParenthesis(Failed const &failed) {
    bool const closesNothing = failed.Here() == L')' || failed.Here() == L']';
    return closesNothing ? Replaced(failed.text, failed.place, 1, L"") : failed.text;
}

bool IsFunction(std::wstring_view word) {
    std::vector<std::string> const &names = BuiltInFunctions();
    return std::find(names.begin(), names.end(), Lower(word)) != names.end();
}

/// "sin 30" as "sin(30)", and "sin[30]" or "sin{30}" too.
std::wstring FunctionArgument(Failed const &failed) {
    for (Span const &word : Words(failed.text)) {
        std::size_t const begin = NextItem(failed.text, word.End());
        if (begin == kNowhere || !IsFunction(failed.text.substr(word.begin, word.length)))
            continue;
        wchar_t const open = failed.text[begin];
        std::size_t const close = failed.text.find(open == L'[' ? L']' : L'}', begin);
        if ((open == L'[' || open == L'{') && close != kNowhere)
            return Replaced(Replaced(failed.text, close, 1, L")"), begin, 1, L"(");
        std::size_t end = EndOfNumber(failed.text, begin);
        while (end == begin || (end < failed.text.size() && IsNameChar(failed.text[end]))) {
            if (end >= failed.text.size() || !IsNameChar(failed.text[end]))
                break;
            ++end;
        }
        if (end > begin) {
            std::wstring const argument = L"(" + failed.text.substr(begin, end - begin) + L")";
            return Replaced(failed.text, word.End(), end - word.End(), argument);
        }
    }
    return failed.text;
}

std::wstring TimesSign(Failed const &failed) {
    std::size_t const before = failed.Before();
    if (before == kNowhere)
        return failed.text;
    wchar_t const left = failed.At(before);
    wchar_t const right = failed.Here();
    bool const begins = IsLetter(right) || right == L'(' || (left == L')' && IsDigit(right));
    if (!begins || !(IsNameChar(left) || left == L'.' || left == L')'))
        return failed.text;
    return Replaced(failed.text, before + 1, failed.place - before - 1, L"*");
}

std::wstring RangeWord(Failed const &failed) {
    if (failed.Here() == L':' || failed.Here() == L'~')
        return Replaced(failed.text, failed.place, 1, L"to");
    std::size_t const dots = failed.text.find(L"..");
    std::size_t const dotsEnd = failed.text.find_first_not_of(L'.', dots == kNowhere ? 0 : dots);
    return dots == kNowhere || dotsEnd == kNowhere ? failed.text : Replaced(failed.text, dots, dotsEnd - dots, L"to");
}

std::wstring FallingRange(Failed const &failed) {
    for (TypedRange const &range : TypedRanges(failed.text)) {
        bool const falls = range.from > range.to;
        if (falls && range.step.length == 0)
            return Replaced(failed.text, range.span.End(), 0, L"by-1");
        if (falls && failed.text[range.step.begin] != L'-')
            return Replaced(failed.text, range.step.begin, 0, L"-");
    }
    return failed.text;
}

std::wstring RangeOfOne(Failed const &failed) {
    for (TypedRange const &range : TypedRanges(failed.text)) {
        if (range.from == range.to)
            return Replaced(failed.text, range.span.begin, range.span.length, std::to_wstring(range.from));
    }
    return failed.text;
}

std::wstring PolarSign(Failed const &failed) {
    bool const lacks = failed.settings.mode == EvalMode::kPosition && failed.text.find(L'<') != kNowhere &&
                       failed.text.find(L'@') == kNowhere;
    return lacks ? L"@" + failed.text : failed.text;
}

std::wstring PointBrackets(Failed const &failed) {
    if (failed.settings.mode != EvalMode::kPoints || failed.text.find(L'[') != kNowhere)
        return failed.text;
    std::wstring text = failed.text;
    if (text.find(L'(') == kNowhere)
        return L"[" + text + L"]";
    std::replace(text.begin(), text.end(), L'(', L'[');
    std::replace(text.begin(), text.end(), L')', L']');
    return text;
}

std::wstring WithoutPlus(Failed const &failed) {
    return failed.Here() == L'+' ? Replaced(failed.text, failed.place, 1, L"") : failed.text;
}

std::wstring WithoutEquals(Failed const &failed) {
    std::size_t const before = failed.Before();
    bool const atEnd = NextItem(failed.text, failed.place + 1) == kNowhere;
    bool const outside = failed.Here() == L'=' && (before == kNowhere || atEnd);
    return outside ? Replaced(failed.text, failed.place, 1, L"") : failed.text;
}

std::wstring CommaForSemicolon(Failed const &failed) {
    return failed.Here() == L';' || failed.Here() == L'|' ? Replaced(failed.text, failed.place, 1, L",") : failed.text;
}

std::wstring WithoutQuotes(Failed const &failed) {
    std::wstring text = failed.text;
    if (text.empty() || IsNameChar(text.front()) || text.front() == L'(') {
        return text; // a mark behind a number means something else
    }
    std::erase_if(text, [](wchar_t c) { return c == L'"' || c == L'\'' || c == L'`' || (c >= 0x2018 && c <= 0x201F); });
    return text;
}

std::wstring RoundBrackets(Failed const &failed) {
    std::wstring text = failed.text;
    // A comma in square brackets makes a point.
    bool const hasPoints = failed.settings.mode == EvalMode::kPoints || text.find(L',') != kNowhere;
    for (wchar_t &c : text) {
        bool const opens = c == L'{' || (c == L'[' && !hasPoints);
        bool const closes = c == L'}' || (c == L']' && !hasPoints);
        c = opens ? L'(' : closes ? L')' : c;
    }
    return text;
}

std::wstring FeetInInches(Failed const &failed) {
    if (!failed.settings.unitSystem || !KnowsUnits(failed.settings.mode))
        return failed.text;
    std::wstring const upper = Upper(failed.text);
    for (std::size_t at = upper.find(L"FT"); at != kNowhere; at = upper.find(L"FT", at + 1)) {
        std::size_t const before = ItemBefore(upper, at);
        bool const behindNumber = before != kNowhere && (IsDigit(upper[before]) || upper[before] == L'.');
        if (behindNumber && !IsNameChar(at + 2 < upper.size() ? upper[at + 2] : L' '))
            return Replaced(failed.text, before + 1, at + 2 - before - 1, L"*12in");
    }
    return failed.text;
}

/// With units a name at the end of the text is taken for a unit that has no number, and passed over.
std::wstring NameAtEnd(Failed const &failed) {
    std::vector<Span> const words = Words(failed.text);
    bool const ends = !words.empty() && NextItem(failed.text, words.back().End()) == kNowhere;
    if (!ends || !failed.settings.unitSystem || !KnowsUnits(failed.settings.mode))
        return failed.text;
    Span const &name = words.back();
    return Replaced(failed.text, name.begin, name.length, L"(" + failed.text.substr(name.begin, name.length) + L")");
}

/// 5" and 5' as people write inches and feet.
std::wstring InchMarks(Failed const &failed) {
    bool const isMark = failed.Here() == L'"' || failed.Here() == L'\'';
    if (!isMark || !failed.settings.unitSystem || !KnowsUnits(failed.settings.mode))
        return failed.text;
    return Replaced(failed.text, failed.place, 1, failed.Here() == L'"' ? L"in" : L"*12in");
}

/// A position or list without brackets around it.
std::wstring WithoutFrame(Failed const &failed) {
    std::size_t const first = NextItem(failed.text, 0);
    std::size_t const last = ItemBefore(failed.text, failed.text.size());
    bool const hasComma = failed.text.find_first_of(L", ") != kNowhere;
    if (first == kNowhere || first == last || !hasComma || ReadsOneExpression(failed.settings.mode))
        return failed.text;
    bool const round = failed.text[first] == L'(' && failed.text[last] == L')';
    bool const square = failed.text[first] == L'[' && failed.text[last] == L']';
    return (round || square) && failed.settings.mode != EvalMode::kPoints
               ? failed.text.substr(first + 1, last - first - 1)
               : failed.text;
}

std::wstring ZeroInFront(Failed const &failed) {
    bool const leads = failed.Here() == L',' && failed.Before() == kNowhere;
    return leads ? Replaced(failed.text, failed.place, 0, L"0") : failed.text;
}

struct Repair {
    std::wstring (*mend)(Failed const &failed); ///< the same text when it does not apply
    char const *why;
};

constexpr Repair kRepairs[] = {
    {PlainSigns, "only plain signs are read"},
    {Tightened, "blanks separate items"},
    {WithoutQuotes, "quotation marks are not part of the text"},
    {WithoutEquals, "the text is the expression alone, without ="},
    {WithoutPlus, "a number has no sign +"},
    {PowerSign, "a power is written ^"},
    {CommaInNumber, "a comma separates items, the decimal sign is the point"},
    {BlankInNumber, "blanks separate items, also inside a number"},
    {FeetInInches, "ft cannot be read, because T stands for TO"},
    {NameAtEnd, "with units a name cannot end the text"},
    {FunctionArgument, "a function takes its argument in parentheses"},
    {Closed, "a bracket is not closed"},
    {WithoutParenthesis, "a bracket closes nothing"},
    {PolarSign, "a polar position begins with @"},
    {PointBrackets, "each point stands in brackets"},
    {WithoutFrame, "the items stand without brackets around them"},
    {InchMarks, "inches are written in"},
    {RangeWord, "a range is written with to"},
    {FallingRange, "a range that falls needs a negative step"},
    {RangeOfOne, "a range of one number is written as the number"},
    {TimesSign, "a product needs its *"},
    {CommaForSemicolon, "a comma or a blank separates items"},
    {ZeroInFront, "an item is missing in front of the comma"},
    {RoundBrackets, "an expression is grouped by ( and )"},
};

CString Text(std::wstring const &text) {
    return CString(std::wstring_view(text));
}

/// A text that reads further than the one before.
struct Step {
    std::wstring text;
    char const *why = nullptr; ///< null: no repair leads further
    EvalOutcome outcome;
};

Step Mend(std::wstring const &text, EvalOutcome const &outcome, EvalSettings const &settings) {
    Failed const failed{text, static_cast<std::size_t>(outcome.place), settings};
    Step best;
    for (Repair const &repair : kRepairs) {
        std::wstring const mended = repair.mend(failed);
        if (mended == text)
            continue;
        EvalOutcome const after = Evaluate(Text(mended), settings);
        // What is left to read is what counts: a repair may change the length of what was read.
        auto const left = static_cast<std::ptrdiff_t>(mended.size()) - after.place;
        bool const further = left < static_cast<std::ptrdiff_t>(text.size()) - outcome.place;
        if (after.parsed || (further && !best.why))
            best = {mended, repair.why, after};
        if (after.parsed)
            break;
    }
    return best;
}

} // namespace

std::optional<RepairedText> FindRepair(std::wstring const &typed, EvalSettings const &settings) {
    RepairedText repaired{typed, "", Evaluate(Text(typed), settings)};
    for (int i = 0; i < kMostRepairs && !repaired.outcome.parsed; ++i) {
        Step const step = Mend(repaired.text, repaired.outcome, settings);
        if (!step.why)
            break;
        repaired = {step.text, repaired.why.empty() ? step.why : repaired.why, step.outcome};
    }
    return repaired.why.empty() ? std::nullopt : std::optional(repaired);
}

} // namespace zvi::app
