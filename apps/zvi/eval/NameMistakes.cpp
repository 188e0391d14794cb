// Words that the language does not know: units, and names that are neither functions nor variables.

#include "apps/zvi/common/NearestName.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/common/WideText.h"
#include "apps/zvi/eval/Mistakes.h"

#include "zvi/command/NormalizeCommandText.h"
#include "zvi/command/SymbolTable.h"

#include <algorithm>
#include <utility>

namespace zvi::app {

namespace {

constexpr std::string_view kLengthUnits[] = {"mm", "cm", "m", "in", "um", "ft"};

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

bool IsLengthUnit(std::string const &word) {
    return std::find(std::begin(kLengthUnits), std::end(kLengthUnits), word) != std::end(kLengthUnits);
}

/// Whether a number stands in front of `at`, blanks and commas between them passed over.
bool FollowsNumber(std::wstring const &typed, std::size_t at) {
    std::size_t const before = at == 0 ? std::wstring::npos : typed.find_last_not_of(L" \t,", at - 1);
    return before != std::wstring::npos && (IsDigit(typed[before]) || typed[before] == L'.');
}

/// The words that the parser may use: functions, constants, variables.
std::vector<std::string> KnownNames(EvalSettings const &settings) {
    std::vector<std::string> names = BuiltInFunctions();
    names.insert(names.end(), BuiltInConstants().begin(), BuiltInConstants().end());
    for (EvalVariable const &variable : settings.variables)
        names.push_back(Lowered(variable.name));
    return names;
}

bool IsKnown(std::vector<std::string> const &names, std::wstring_view word) {
    return std::find(names.begin(), names.end(), Lower(word)) != names.end();
}

/// The whole typed word around `at`: without digits in front, and without a BY or TO between them and it.
Span WordAround(std::wstring const &typed, std::size_t at) {
    std::size_t begin = at;
    while (begin > 0 && IsNameChar(typed[begin - 1]))
        --begin;
    std::size_t end = at;
    while (end < typed.size() && IsNameChar(typed[end]))
        ++end;
    std::wstring const upper = Upper(typed);
    while (begin < at && IsDigit(typed[begin])) {
        while (begin < at && IsDigit(typed[begin]))
            ++begin;
        if (begin < at && (upper[begin] == L'T' || upper[begin] == L'B')) {
            wchar_t const second = upper[begin] == L'T' ? L'O' : L'Y';
            begin += begin + 1 < at && upper[begin + 1] == second ? 2 : 1;
        }
    }
    return {begin, end - begin};
}

/// The typed words that mean nothing to the parser, as it would read them without units.
std::optional<Span> FirstUnknownWord(FailedText const &failed, bool skipsUnits) {
    std::vector<int> sources;
    std::wstring const line = lib::NormalizeCommandText(CString(std::wstring_view(failed.typed)), sources).GetString();
    std::vector<std::string> const names = KnownNames(failed.settings);
    lib::SymbolTable const table;
    for (Span const &word : Words(line)) {
        std::wstring_view const text = std::wstring_view(line).substr(word.begin, word.length);
        if (table.FindReservedWord(Utf8Of(text)) || IsKnown(names, text))
            continue;
        std::size_t const at = static_cast<std::size_t>(sources[word.begin]);
        Span const whole = WordAround(failed.typed, at);
        std::string const typed = Lower(failed.typed.substr(whole.begin, whole.length));
        bool const isUnit = skipsUnits && typed != "ft" && IsLengthUnit(typed) && FollowsNumber(failed.typed, at);
        if (!isUnit)
            return whole;
    }
    return std::nullopt;
}

bool HasUnits(FailedText const &failed) {
    return failed.settings.unitSystem && KnowsUnits(failed.settings.mode);
}

std::string UnitHint(FailedText const &failed) {
    if (!KnowsUnits(failed.settings.mode))
        return "only the modes number and integer read length units";
    return "a length unit needs a unit system for the result: add --unit-system 0 (mm), 1 (m), 3 (ft), 4 (cm) or 5 "
           "(in)";
}

/// A function with its argument run into its name, such as sin30.
std::string RunTogether(std::string const &word) {
    for (std::string const &name : BuiltInFunctions()) {
        std::string const rest = word.starts_with(name) ? word.substr(name.size()) : "";
        if (!rest.empty() && std::all_of(rest.begin(), rest.end(), [](char c) { return c >= '0' && c <= '9'; }))
            return "a function takes its argument in parentheses; write " + name + "(" + rest + ")";
    }
    return {};
}

std::string NameHint(FailedText const &failed, Span const &where) {
    std::string const typed = failed.Typed(where);
    std::string const word = Lowered(typed);
    bool const behindNumber = FollowsNumber(failed.typed, where.begin);
    if (word == "e" && behindNumber)
        return "an exponent follows its number without blanks, as in 1e3";
    if (word[0] == 'x' && behindNumber && word.find_first_not_of("0123456789", 1) == std::string::npos)
        return "unknown name '" + typed + "'; if it is a product, write * for x";
    for (auto const &[other, ours] : kOtherNames) {
        if (word == other)
            return "unknown name '" + typed + "'; write " + std::string(ours);
    }
    std::string const together = RunTogether(word);
    if (!together.empty())
        return together;
    std::string const nearest = word.size() == 1 ? "" : NearestName(word, KnownNames(failed.settings));
    if (!nearest.empty())
        return "unknown name '" + typed + "'; did you mean " + nearest + "?";
    if (where.End() < failed.typed.size() && failed.typed[where.End()] == L'(') {
        std::string list;
        for (std::string const &name : BuiltInFunctions())
            list += " " + name;
        return "unknown function '" + typed + "'; there are" + list;
    }
    std::string const why = WhyNoVariableName(typed);
    return why.empty() ? "unknown name '" + typed + "'; give it a value with --var " + typed + "=..." : why;
}

} // namespace

std::optional<Mistake> FindUnit(FailedText const &failed) {
    std::optional<Span> const word = FirstUnknownWord(failed, HasUnits(failed));
    if (!word || !FollowsNumber(failed.typed, word->begin))
        return std::nullopt;
    std::string const typed = failed.Typed(*word);
    bool const isUnit = IsLengthUnit(Lower(failed.typed.substr(word->begin, word->length)));
    if (!HasUnits(failed))
        return isUnit ? std::optional(Mistake{*word, UnitHint(failed)}) : std::nullopt;
    if (isUnit)
        return std::nullopt;
    return Mistake{*word, "unknown unit '" + typed + "'; the units of a number are mm, cm, m, in and um"};
}

std::optional<Mistake> FindUnknownName(FailedText const &failed) {
    std::optional<Span> const word = FirstUnknownWord(failed, HasUnits(failed));
    std::string const typed = word ? failed.Typed(*word) : std::string();
    if (typed.empty() || SameNoCase(typed, "ft"))
        return std::nullopt;
    return Mistake{*word, NameHint(failed, *word)};
}

} // namespace zvi::app
