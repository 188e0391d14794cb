// Usual slips as a table: the rule of the language that was broken, how the slip is seen, and what to write instead.

#include "apps/zvi/eval/hints/Mistakes.h"

#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/WideText.h"
#include "apps/zvi/common/typed/PlainSigns.h"

#include <algorithm>
#include <regex>
#include <unordered_map>

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
constexpr auto kInExpressions = [](Failed const &failed) { return ReadsOneExpression(failed.Mode()); };
constexpr auto kInPoints = [](Failed const &failed) { return failed.Mode() == EvalMode::kPoints; };
constexpr auto kOutsidePoints = [](Failed const &failed) { return !kInPoints(failed); };
constexpr auto kInPositions = [](Failed const &failed) { return failed.Mode() == EvalMode::kPosition; };
constexpr auto kInLists = [](Failed const &failed) { return !kInExpressions(failed) && !kInPoints(failed); };
constexpr auto kWithUnits = [](Failed const &failed) { return failed.HasUnits(); };
constexpr auto kWithBadStep = [](Failed const &failed) { return failed.Fault() == ParseFaultKind::kRangeStep; };

constexpr char kBlanks[] = "blanks separate items";
constexpr char kDecimalSign[] = "a comma separates items, the decimal sign is the point";
constexpr char kQuotes[] = "quotation marks are not part of the text";
constexpr char kInches[] = "inches are written in";
constexpr char kStep[] = "a range that does not rise needs a negative step";
constexpr char kGroups[] = "an expression is grouped by ( and )";

struct Repair {
    char const *why;      ///< the rule that was broken
    wchar_t const *needs; ///< characters one of which stands in every text with the slip; empty: any text may have it
    wchar_t const *slip;  ///< a pattern; FUNCTION in it is any function
    wchar_t const *by;    ///< what it is replaced by
    bool (*when)(Failed const &) = nullptr;
    std::wstring (*mend)(std::wstring const &) = nullptr; ///< in place of the pattern
};

constexpr Repair kRepairs[] = {
    {"only plain signs are read", L"", nullptr, nullptr, nullptr, PlainSigns},
    {kBlanks, L" ", L" *([-+*/^@<]) *|(\\() +| +(\\))|([A-Za-z]) +(?=\\()", L"$1$2$3$4", kInExpressions},
    // In a list a minus with a blank in front and none behind is the sign of the next item.
    {kBlanks, L" ", L" *([+*/^@<]|-(?= |$)) *|([-(]) +| +(\\))|([A-Za-z]) +(?=\\()", L"$1$2$3$4"},
    {kQuotes, L"", L"^[ \"'`\u2018-\u201F]+([^\"'`\u2018-\u201F]*)[\"'`\u2018-\u201F]*$", L"$1"},
    {"the text is the expression alone, without =", L"=", L"^ *=|= *$", L""},
    {"a number has no sign +", L"+", L"\\v\\+", L""},
    {"a power is written ^", L"*", L"\\*\\*", L"^"},
    {kDecimalSign, L",", L"^([^,]*\\d),(\\d{3}(?!\\d)[^,]*)$", L"$1$2", kInExpressions},
    {kDecimalSign, L",", L"^([^,]*\\d),(\\d[^,]*)$", L"$1.$2", kInExpressions},
    {"blanks separate items, also inside a number", L" ", L"(\\d) +(\\d{3})(?!\\d)", L"$1$2", kInExpressions},
    {"ft cannot be read, because T stands for TO", L"fF", L"([\\d.]) *[fF][tT](?!\\w)", L"$1*12in", kWithUnits},
    {"with units a name cannot end the text", L"", L"([A-Za-z]\\w*) *$", L"($1)", kWithUnits},
    {"a function takes its argument in parentheses", L" ", L"(^|[^A-Za-z_])(FUNCTION) +([\\w.]+)", L"$1$2($3)"},
    {"a bracket is not closed", L"([", nullptr, nullptr, nullptr, Closed},
    {"a bracket closes nothing", L")]", L"\\v[)\\]]", L""},
    {"a polar position begins with @", L"<", L"^([^@]*<[^@]*)$", L"@$1", kInPositions},
    {"each point stands in brackets", L"", L"^([^\\[(]+)$", L"[$1]", kInPoints},
    {"each point stands in brackets", L"(", L"\\(([^()]*)(\\)|$)", L"[$1]", kInPoints},
    {"the items stand without brackets around them", L"([", L"^ *[(\\[](.*[, ].*)[)\\]] *$", L"$1", kInLists},
    {kInches, L"\"", L"(\\d) *\"", L"$1in", kWithUnits},
    {kInches, L"'", L"(\\d) *'", L"$1*12in", kWithUnits},
    {"a range is written with to", L":~.", L"[:~]|\\.\\.+", L"to"},
    {kStep, L"", L"(\\d *[bB][yY]? *)(?=\\d+ *\\v)", L"$1-", kWithBadStep},
    {kStep, L"", L"(\\d)(?= *\\v)", L"$1by-1", kWithBadStep},
    {"a product needs its *", L"", L"([\\w.)]) *\\v(?=[A-Za-z(])|(\\)) *\\v(?=\\d)", L"$1$2*"},
    {"a comma or a blank separates items", L";|", L"\\v[;|]", L","},
    {"an item is missing in front of the comma", L",", L"^ *,", L"0,", kInLists},
    {kGroups, L"{[", L"[{[]([^{}\\[\\],]*)[}\\]]", L"($1)", kOutsidePoints},
    {kGroups, L"{[", L"[{[](?=[^,]*$)", L"(", kOutsidePoints},
    {kGroups, L"}]", L"[}\\]](?=[^,]*$)", L")", kOutsidePoints},
};

/// The pattern of a repair, made when it is first asked for.
std::wregex const &PatternOf(Repair const &repair) {
    static std::unordered_map<Repair const *, std::wregex> patterns;
    auto const [entry, isNew] = patterns.try_emplace(&repair);
    if (isNew) {
        CString functions;
        for (std::string const &name : BuiltInFunctions())
            functions += L"|" + WideOf(name);
        CString pattern = repair.slip;
        pattern.Replace(L"FUNCTION", functions.Mid(1));
        entry->second.assign(pattern.GetString(), std::regex::ECMAScript | std::regex::optimize);
    }
    return entry->second;
}

/// The text with one slip mended wherever it is seen; as it is when it is not.
std::wstring Mended(Failed const &failed, Repair const &repair) {
    bool const may = *repair.needs == 0 || failed.typed.find_first_of(repair.needs) != kNowhere;
    if (!may || (repair.when && !repair.when(failed)))
        return failed.typed;
    if (repair.mend)
        return repair.mend(failed.typed);
    std::wstring text = failed.typed;
    if (std::wstring_view(repair.slip).find(L"\\v") != kNowhere)
        text.insert(std::min(failed.Place(), text.size()), 1, kPlaceMark);
    text = std::regex_replace(text, PatternOf(repair), repair.by);
    std::erase(text, kPlaceMark);
    return text;
}

/// A text with a slip mended, and the rule of the language that was broken.
struct MendedText {
    Failed text;
    char const *why;
};

/// The text with the first slip mended that lets all of it be read, or else that lets more of it be read.
std::optional<MendedText> Mend(Failed const &from) {
    // What is left to read counts: a repair may change the length of what was read.
    auto const left = [](Failed const &text) { return std::ssize(text.typed) - text.outcome.place; };
    std::optional<MendedText> best;
    for (Repair const &repair : kRepairs) {
        std::wstring const text = Mended(from, repair);
        if (text == from.typed)
            continue;
        Failed const next{text, from.settings, Evaluate(CString(std::wstring_view(text)), from.settings)};
        if (next.outcome.parsed)
            return MendedText{next, repair.why};
        if (!best && left(next) < left(from))
            best.emplace(MendedText{next, repair.why});
    }
    return best;
}

/// What is said of a text in which slips were mended, the first of them against the rule `why`, once at most `repairs`
/// more are; empty if they do not help.
std::string Advice(Failed const &text, std::string const &why, int repairs) {
    std::optional<MendedText> const next = text.outcome.parsed || repairs == 0 ? std::nullopt : Mend(text);
    if (next)
        return Advice(next->text, why.empty() ? next->why : why, repairs - 1);
    if (text.outcome.parsed)
        return text.typed.size() > kLongestShown ? why : Joined(why, "; write ", Utf8Of(text.typed));
    bool const isWrong = text.Fault() == ParseFaultKind::kZeroDivisor || text.Fault() == ParseFaultKind::kExponent;
    std::string const wrong = isWrong ? FirstSeen(kWrongValue.rows, *CulpritOf(text)) : "";
    return wrong.empty() || why.empty() ? "" : Joined(why, "; ", wrong);
}

constexpr MistakeRow kSlips[] = {
    {kAnyFault, [](auto &s) { return s.failed.typed.size() > kLongestSearched || s.failed.MayNameMany(); }, ""},
    {kAnyFault, nullptr, "$", [](auto &s) { return Advice(s.failed, "", kMostRepairs); }},
};

} // namespace

constinit Search const kSlip{[](Failed const &f) { return std::optional(Subject{f, {f.Place(), 1}}); }, kSlips};

} // namespace zvi::app
