// Usual slips as a table: the rule of the language that was broken, how the slip is seen, and what to write instead.

#include "apps/zvi/eval/hints/Mistakes.h"

#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/WideText.h"

#include <algorithm>
#include <regex>

namespace zvi::app {

namespace {

using Failed = FailedText;
using lib::ParseFaultKind;

/// Most slips that are mended in one text.
constexpr int kMostRepairs = 8;
/// Longest text that is searched for slips, and longest corrected one that a hint shows, in characters.
constexpr std::size_t kLongestSearched = 1000;
constexpr std::size_t kLongestShown = 100;
/// Stands in a text at the place where the reading stopped: "\v" in a pattern.
constexpr wchar_t kPlaceMark = L'\v';

/// A mistyped text with slips mended.
struct RepairedText {
    std::wstring text;
    std::string why; ///< the rule of the language that was broken first, for people
    EvalOutcome outcome;
};

/// Signs as books, word processors and other keyboards write them.
constexpr std::pair<wchar_t, wchar_t const *> kSignForms[] = {
    {0x00D7, L"*"},  {0x00B7, L"*"},  {0x22C5, L"*"},  {0x2217, L"*"},    {0x00F7, L"/"},  {0x2215, L"/"},
    {0x2212, L"-"},  {0x2013, L"-"},  {0x2014, L"-"},  {0x2010, L"-"},    {0x2011, L"-"},  {0x00B2, L"^2"},
    {0x00B3, L"^3"}, {0x2074, L"^4"}, {0x03C0, L"pi"}, {0x2220, L"<"},    {0x00B0, L""},   {0x3000, L" "},
    {0x00A0, L" "},  {0x202F, L" "},  {0x2009, L" "},  {0x221A, L"sqrt"}, {0x2026, L"to"}, {0x3001, L","},
};

/// The full-width forms of ASCII stand in its order behind this character.
constexpr wchar_t kFullWidth = 0xFF00;
constexpr wchar_t kLastFullWidth = 0xFF5E;

std::wstring PlainSigns(std::wstring const &text) {
    std::wstring plain;
    for (wchar_t const c : text) {
        auto const form = std::find_if(std::begin(kSignForms), std::end(kSignForms),
                                       [c](auto const &entry) { return entry.first == c; });
        if (form != std::end(kSignForms))
            plain += form->second;
        else
            plain += c > kFullWidth && c <= kLastFullWidth ? static_cast<wchar_t>(c - kFullWidth + L' ') : c;
    }
    return plain;
}

/// The text with the brackets closed that are open at its end.
std::wstring Closed(std::wstring const &text) {
    std::wstring closing;
    for (wchar_t const c : text) {
        if (c == L'(' || c == L'[')
            closing.insert(closing.begin(), c == L'(' ? L')' : L']');
        else if (!closing.empty() && c == closing.front())
            closing.erase(closing.begin());
    }
    return text + closing;
}

// When a slip is looked for.
bool InExpressions(Failed const &failed) {
    return ReadsOneExpression(failed.settings.mode);
}
bool InPoints(Failed const &failed) {
    return failed.settings.mode == EvalMode::kPoints;
}
bool OutsidePoints(Failed const &failed) {
    return !InPoints(failed);
}
bool InPositions(Failed const &failed) {
    return failed.settings.mode == EvalMode::kPosition;
}
bool InLists(Failed const &failed) {
    return !InExpressions(failed) && !InPoints(failed);
}
bool WithUnits(Failed const &failed) {
    return failed.HasUnits();
}
bool WithBadStep(Failed const &failed) {
    return failed.Fault() == ParseFaultKind::kRangeStep;
}

constexpr char kBlanks[] = "blanks separate items";
constexpr char kDecimalSign[] = "a comma separates items, the decimal sign is the point";
constexpr char kQuotes[] = "quotation marks are not part of the text";
constexpr char kInches[] = "inches are written in";
constexpr char kStep[] = "a range that does not rise needs a negative step";
constexpr char kGroups[] = "an expression is grouped by ( and )";

struct Repair {
    char const *why;     ///< the rule that was broken
    wchar_t const *slip; ///< a pattern; FUNCTION in it is any function
    wchar_t const *by;   ///< what it is replaced by
    bool (*when)(Failed const &) = nullptr;
    std::wstring (*mend)(std::wstring const &) = nullptr; ///< in place of the pattern
};

constexpr Repair kRepairs[] = {
    {"only plain signs are read", nullptr, nullptr, nullptr, PlainSigns},
    {kBlanks, L" *([-+*/^@<]) *|(\\() +| +(\\))|([A-Za-z]) +(?=\\()", L"$1$2$3$4", InExpressions},
    // In a list a minus with a blank in front and none behind is the sign of the next item.
    {kBlanks, L" *([+*/^@<]|-(?= |$)) *|([-(]) +| +(\\))|([A-Za-z]) +(?=\\()", L"$1$2$3$4"},
    {kQuotes, L"^[ \"'`\u2018-\u201F]+([^\"'`\u2018-\u201F]*)[\"'`\u2018-\u201F]*$", L"$1"},
    {"the text is the expression alone, without =", L"^ *=|= *$", L""},
    {"a number has no sign +", L"\\v\\+", L""},
    {"a power is written ^", L"\\*\\*", L"^"},
    {kDecimalSign, L"^([^,]*\\d),(\\d{3}(?!\\d)[^,]*)$", L"$1$2", InExpressions},
    {kDecimalSign, L"^([^,]*\\d),(\\d[^,]*)$", L"$1.$2", InExpressions},
    {"blanks separate items, also inside a number", L"(\\d) +(\\d{3})(?!\\d)", L"$1$2", InExpressions},
    {"ft cannot be read, because T stands for TO", L"([\\d.]) *[fF][tT](?!\\w)", L"$1*12in", WithUnits},
    {"with units a name cannot end the text", L"([A-Za-z]\\w*) *$", L"($1)", WithUnits},
    {"a function takes its argument in parentheses", L"(^|[^A-Za-z_])(FUNCTION) +([\\w.]+)", L"$1$2($3)"},
    {"a bracket is not closed", nullptr, nullptr, nullptr, Closed},
    {"a bracket closes nothing", L"\\v[)\\]]", L""},
    {"a polar position begins with @", L"^([^@]*<[^@]*)$", L"@$1", InPositions},
    {"each point stands in brackets", L"^([^\\[(]+)$", L"[$1]", InPoints},
    {"each point stands in brackets", L"\\(([^()]*)(\\)|$)", L"[$1]", InPoints},
    {"the items stand without brackets around them", L"^ *[(\\[](.*[, ].*)[)\\]] *$", L"$1", InLists},
    {kInches, L"(\\d) *\"", L"$1in", WithUnits},
    {kInches, L"(\\d) *'", L"$1*12in", WithUnits},
    {"a range is written with to", L"[:~]|\\.\\.+", L"to"},
    {kStep, L"(\\d *[bB][yY]? *)(?=\\d+ *\\v)", L"$1-", WithBadStep},
    {kStep, L"(\\d)(?= *\\v)", L"$1by-1", WithBadStep},
    {"a product needs its *", L"([\\w.)]) *\\v(?=[A-Za-z(])|(\\)) *\\v(?=\\d)", L"$1$2*"},
    {"a comma or a blank separates items", L"\\v[;|]", L","},
    {"an item is missing in front of the comma", L"^ *,", L"0,", InLists},
    {kGroups, L"[{[]([^{}\\[\\],]*)[}\\]]", L"($1)", OutsidePoints},
    {kGroups, L"[{[](?=[^,]*$)", L"(", OutsidePoints},
    {kGroups, L"[}\\]](?=[^,]*$)", L")", OutsidePoints},
};

std::wregex SlipPattern(std::wstring pattern) {
    constexpr std::wstring_view kFunction = L"FUNCTION";
    std::string functions;
    for (std::string const &name : BuiltInFunctions())
        functions += (functions.empty() ? "" : "|") + name;
    if (std::size_t const at = pattern.find(kFunction); at != kNowhere)
        pattern.replace(at, kFunction.size(), WideOf(functions).GetString());
    return std::wregex(pattern, std::regex::ECMAScript | std::regex::optimize);
}

/// The patterns of the table in its order.
std::vector<std::wregex> const &SlipPatterns() {
    static std::vector<std::wregex> const patterns = [] {
        std::vector<std::wregex> made;
        for (Repair const &repair : kRepairs)
            made.push_back(SlipPattern(repair.slip ? repair.slip : L""));
        return made;
    }();
    return patterns;
}

/// The text with one slip mended wherever it is seen; as it is when it is not.
std::wstring Mended(Failed const &failed, Repair const &repair, std::wregex const &pattern) {
    if (repair.when && !repair.when(failed))
        return failed.typed;
    if (repair.mend)
        return repair.mend(failed.typed);
    std::wstring text = failed.typed;
    if (std::wstring_view(repair.slip).find(L"\\v") != kNowhere)
        text.insert(std::min(failed.Place(), text.size()), 1, kPlaceMark);
    text = std::regex_replace(text, pattern, repair.by);
    std::erase(text, kPlaceMark);
    return text;
}

/// The text with the first slip mended that lets all of it be read, or else that lets more of it be read.
std::optional<RepairedText> Mend(Failed const &failed) {
    // What is left to read is what counts: a repair may change the length of what was read.
    auto const left = [](std::wstring const &text, EvalOutcome const &outcome) {
        return static_cast<std::ptrdiff_t>(text.size()) - outcome.place;
    };
    std::optional<RepairedText> best;
    for (std::size_t i = 0; i < std::size(kRepairs); ++i) {
        std::wstring mended = Mended(failed, kRepairs[i], SlipPatterns()[i]);
        if (mended == failed.typed)
            continue;
        EvalOutcome outcome = Evaluate(CString(std::wstring_view(mended)), failed.settings);
        bool const all = outcome.parsed;
        if (all || (!best && left(mended, outcome) < left(failed.typed, failed.outcome)))
            best = {std::move(mended), kRepairs[i].why, std::move(outcome)};
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
    if (failed.typed.size() > kLongestSearched)
        return std::nullopt;
    std::optional<RepairedText> const repaired = FindRepair(failed);
    if (!repaired)
        return std::nullopt;
    Span const where{failed.Place(), 1};
    if (repaired->outcome.parsed)
        return Mistake{where, repaired->text.size() > kLongestShown
                                  ? repaired->why
                                  : Joined(repaired->why, "; write ", Utf8Of(repaired->text))};
    FailedText const left{repaired->text, failed.settings, repaired->outcome};
    if (left.Fault() != ParseFaultKind::kZeroDivisor && left.Fault() != ParseFaultKind::kExponent)
        return std::nullopt;
    bool const isExponent = left.Fault() == ParseFaultKind::kExponent;
    return Mistake{where, Joined(repaired->why, "; ", (isExponent ? FindExponent(left) : FindZeroDivisor(left))->hint)};
}

} // namespace zvi::app
