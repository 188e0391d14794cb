// Words that the language does not know: units, and names that are neither functions nor variables.

#include "apps/zvi/eval/hints/Mistakes.h"

#include "apps/zvi/common/Characters.h"
#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/NearestName.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/common/WideText.h"

#include "zvi/command/MParser.h"
#include "zvi/command/NormalizeCommandText.h"
#include "zvi/command/SymbolTable.h"

#include <algorithm>
#include <utility>

namespace zvi::app {

namespace {

/// Names that other languages use, and what to write here.
constexpr std::pair<std::string_view, std::string_view> kOtherNames[] = {
    {"log10", "log(x)"},
    {"arcsin", "asin(x)"},
    {"arccos", "acos(x)"},
    {"arctan", "atan(x)"},
    {"root", "sqrt(x)"},
    {"fabs", "abs(x)"},
    {"degrees", "deg(x)"},
    {"radians", "rad(x)"},
    {"e", "exp(1)"},
    {"atan2", "atan(y/x)"},
    {"pow", "x^2"},
    {"power", "x^2"},
    {"cot", "1/tan(x)"},
    {"through", "to, as in 1to5"},
    {"thru", "to, as in 1to5"},
    {"tanh", "sinh(x)/cosh(x)"},
};

/// The length unit that no text can spell, because its T stands for TO.
constexpr std::string_view kUnreadUnit = "ft";

bool IsLengthUnit(std::string const &word) {
    auto const units = lib::MParser::LengthUnits();
    return std::any_of(units.begin(), units.end(),
                       [&word](wchar_t const *unit) { return Utf8Of(std::wstring_view(unit)) == word; });
}

/// Whether a number stands in front of `at`, blanks and commas between them passed over.
bool FollowsNumber(std::wstring const &typed, std::size_t at) {
    std::size_t const before = at == 0 ? kNowhere : typed.find_last_not_of(L" \t,", at - 1);
    return before != kNowhere && (IsDigit(typed[before]) || typed[before] == L'.');
}

/// The words that the parser may use: functions, constants, variables.
std::vector<std::string> KnownNames(EvalSettings const &settings) {
    std::vector<std::string> names = BuiltInFunctions();
    names.insert(names.end(), BuiltInConstants().begin(), BuiltInConstants().end());
    for (EvalVariable const &variable : settings.variables)
        names.push_back(Lowered(variable.name));
    return names;
}

/// The whole typed word around `at`: without digits in front, and without a BY or TO between them and it.
Span WordAround(std::wstring const &typed, std::size_t at) {
    std::size_t begin = at;
    while (begin > 0 && IsNameChar(typed[begin - 1]))
        --begin;
    std::size_t const end = EndOfName(typed, at);
    std::wstring const upper = Upper(typed);
    while (begin < at && IsDigit(typed[begin])) {
        begin = std::min(at, EndOfDigits(typed, begin));
        if (begin < at && (upper[begin] == L'T' || upper[begin] == L'B'))
            begin += begin + 1 < at && upper[begin + 1] == (upper[begin] == L'T' ? L'O' : L'Y') ? 2 : 1;
    }
    return {begin, end - begin};
}

/// The first typed word that means nothing to the parser, as it would read the text without units.
std::optional<Span> FirstUnknownWord(FailedText const &failed) {
    std::vector<int> sources;
    std::wstring const line = lib::NormalizeCommandText(CString(std::wstring_view(failed.typed)), sources).GetString();
    std::vector<std::string> const names = KnownNames(failed.settings);
    lib::SymbolTable const table;
    for (Span const &word : Words(line)) {
        std::wstring_view const text = Part(line, word);
        if (table.FindReservedWord(Utf8Of(text)) || std::find(names.begin(), names.end(), Lower(text)) != names.end())
            continue;
        auto const at = static_cast<std::size_t>(sources[word.begin]);
        Span const whole = WordAround(failed.typed, at);
        std::string const typed = Lower(Part(failed.typed, whole));
        bool const isUnit = failed.HasUnits() && typed != kUnreadUnit && IsLengthUnit(typed);
        if (!isUnit || !FollowsNumber(failed.typed, at))
            return whole;
    }
    return std::nullopt;
}

/// A function with its argument run into its name, such as sin30.
std::string RunTogether(std::string const &word) {
    for (std::string const &name : BuiltInFunctions()) {
        std::string const rest = word.starts_with(name) ? word.substr(name.size()) : "";
        if (!rest.empty() && std::all_of(rest.begin(), rest.end(), [](char c) { return IsDigit(c); }))
            return Joined("a function takes its argument in parentheses; write ", name, "(", rest, ")");
    }
    return {};
}

/// What to say of an unknown name that other languages, or other keys, make of a known one; empty when nothing.
std::string KnownFormHint(FailedText const &failed, std::string const &typed, bool behindNumber) {
    std::string const word = Lowered(typed);
    if (word == "e" && behindNumber)
        return "an exponent follows its number without blanks, as in 1e3";
    if (word[0] == 'x' && behindNumber && word.find_first_not_of("0123456789", 1) == std::string::npos)
        return Joined("unknown name '", typed, "'; if it is a product, write * for x");
    for (auto const &[other, ours] : kOtherNames) {
        if (word == other)
            return Joined("unknown name '", typed, "'; write ", ours);
    }
    std::string const together = RunTogether(word);
    std::string const nearest = word.size() == 1 ? "" : NearestName(word, KnownNames(failed.settings));
    return together.empty() && !nearest.empty() ? Joined("unknown name '", typed, "'; did you mean ", nearest, "?")
                                                : together;
}

std::string NameHint(FailedText const &failed, Span const &where, bool behindNumber) {
    std::string const typed = failed.Typed(where);
    std::string known = KnownFormHint(failed, typed, behindNumber);
    if (!known.empty())
        return known;
    if (failed.At(where.End()) == L'(') {
        std::string list;
        for (std::string const &name : BuiltInFunctions())
            list += " " + name;
        return Joined("unknown function '", typed, "'; there are", list);
    }
    std::string const why = WhyNoVariableName(typed);
    return why.empty() ? Joined("unknown name '", typed, "'; give it a value with --var ", typed, "=...") : why;
}

} // namespace

std::optional<Mistake> FindUnknownWord(FailedText const &failed) {
    std::optional<Span> const word = FirstUnknownWord(failed);
    if (!word)
        return std::nullopt;
    std::string const typed = failed.Typed(*word);
    bool const behindNumber = FollowsNumber(failed.typed, word->begin);
    bool const isUnit = IsLengthUnit(Lowered(typed));
    if (behindNumber && failed.HasUnits() && !isUnit)
        return Mistake{*word, Joined("unknown unit '", typed, "'; the units of a number are mm, cm, m, in and um")};
    if (behindNumber && isUnit && !KnowsUnits(failed.settings.mode))
        return Mistake{*word, "only the modes number and integer read length units"};
    if (behindNumber && isUnit && !failed.HasUnits())
        return Mistake{*word,
                       "a length unit needs a unit system for the result: add --unit-system 0 (mm), 1 (m), 3 (ft), "
                       "4 (cm) or 5 (in)"};
    if (typed.empty() || SameNoCase(typed, kUnreadUnit))
        return std::nullopt;
    return Mistake{*word, NameHint(failed, *word, behindNumber)};
}

} // namespace zvi::app
