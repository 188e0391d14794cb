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
#include <regex>

namespace zvi::app {

namespace {

/// Names that other languages use, and what to write here.
constexpr std::pair<std::string_view, char const *> kOtherNames[] = {
    {"log10", "log(x)"}, {"arcsin", "asin(x)"}, {"root", "sqrt(x)"},   {"atan2", "atan(y/x)"},
    {"fabs", "abs(x)"},  {"arccos", "acos(x)"}, {"degrees", "deg(x)"}, {"tanh", "sinh(x)/cosh(x)"},
    {"e", "exp(1)"},     {"arctan", "atan(x)"}, {"radians", "rad(x)"}, {"thru", "to, as in 1to5"},
    {"pow", "x^2"},      {"power", "x^2"},      {"cot", "1/tan(x)"},   {"through", "to, as in 1to5"},
};

/// The length unit that no text can spell, because its T stands for TO.
constexpr std::string_view kUnreadUnit = "ft";
constexpr char kDigits[] = "0123456789";

bool IsUnit(Subject const &word) {
    return std::ranges::any_of(lib::MParser::LengthUnits(),
                               [&word](std::wstring_view unit) { return Utf8Of(unit) == Lowered(word.typed); });
}

/// Whether a number stands in front of the word, blanks and commas between them passed over.
bool IsBehindNumber(Subject const &word) {
    wchar_t const before = word.failed.Before(word.where.begin, L" \t,");
    return IsDigit(before) || before == L'.';
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
    static std::wregex const numbers(L"^(?:\\d+(?:[tT][oO]?|[bB][yY]?)?)*");
    auto const isNoName = [](wchar_t c) { return !IsNameChar(c); };
    auto const here = typed.begin() + static_cast<std::ptrdiff_t>(at);
    auto const begin = std::find_if(std::make_reverse_iterator(here), typed.rend(), isNoName).base();
    std::wsmatch inFront;
    std::regex_search(begin, here, inFront, numbers);
    auto const word = begin + inFront.length();
    return {std::size_t(word - typed.begin()), std::size_t(std::find_if(here, typed.end(), isNoName) - word)};
}

/// The first typed word that means nothing to the parser, as it would read the text without units.
std::optional<Subject> FirstUnknownWord(FailedText const &failed) {
    static std::wregex const numberOrName(
        L"(?:[0-9]+\\.?[0-9]*|\\.[0-9]+)(?:[eE][-+]?[0-9]+)?|([A-Za-z_][A-Za-z0-9_]*)");
    std::vector<int> sources;
    std::wstring const line = lib::NormalizeCommandText(CString(std::wstring_view(failed.typed)), sources).GetString();
    std::vector<std::string> const names = KnownNames(failed.settings);
    lib::SymbolTable const table;
    for (std::wsregex_iterator at(line.begin(), line.end(), numberOrName), end; at != end; ++at) {
        std::string const name = Utf8Of(std::wstring_view(at->str(1)));
        if (name.empty() || table.FindReservedWord(name) || std::ranges::count(names, Lowered(name)) > 0)
            continue;
        auto const source = static_cast<std::size_t>(sources[static_cast<std::size_t>(at->position())]);
        Subject const word{failed, WordAround(failed.typed, source)};
        bool const isUnit = failed.HasUnits() && IsUnit(word) && Lowered(word.typed) != kUnreadUnit;
        if (!isUnit || !IsBehindNumber(word))
            return word;
    }
    return std::nullopt;
}

std::string HereWritten(Subject const &word) {
    for (auto const &[name, here] : kOtherNames)
        if (name == Lowered(word.typed))
            return here;
    return "";
}

/// The call for a function with its argument run into its name, such as sin30.
std::string CallOf(Subject const &word) {
    std::string const lower = Lowered(word.typed);
    std::size_t const digits = lower.find_last_not_of(kDigits) + 1;
    bool const isCall = digits < lower.size() && std::ranges::count(BuiltInFunctions(), lower.substr(0, digits)) > 0;
    return isCall ? Joined(lower.substr(0, digits), "(", lower.substr(digits), ")") : "";
}

/// The functions there are, for a word that stands as one.
std::string Functions(Subject const &word) {
    std::string list;
    for (std::string const &name : BuiltInFunctions())
        list += " " + name;
    return word.failed.At(word.where.End()) == L'(' ? list : "";
}

constexpr MistakeRow kWords[] = {
    {kAnyFault, [](auto &w) { return IsBehindNumber(w) && !IsUnit(w) && w.failed.HasUnits(); },
     "unknown unit '%'; the units of a number are mm, cm, m, in and um"},
    {kAnyFault, [](auto &w) { return IsBehindNumber(w) && IsUnit(w) && !KnowsUnits(w.failed.Mode()); },
     "only the modes number and integer read length units"},
    {kAnyFault, [](auto &w) { return IsBehindNumber(w) && IsUnit(w) && !w.failed.HasUnits(); },
     "a length unit needs a unit system for the result: add --unit-system 0 (mm), 1 (m), 3 (ft), 4 (cm) or 5 (in)"},
    {kAnyFault, [](auto &w) { return w.typed.empty() || Lowered(w.typed) == kUnreadUnit; }, ""},
    {kAnyFault, [](auto &w) { return IsBehindNumber(w) && Lowered(w.typed) == "e"; },
     "an exponent follows its number without blanks, as in 1e3"},
    {kAnyFault,
     [](auto &w) {
         return IsBehindNumber(w) && Lowered(w.typed)[0] == 'x' && w.typed.find_first_not_of(kDigits, 1) == kNowhere;
     },
     "unknown name '%'; if it is a product, write * for x"},
    {kAnyFault, nullptr, "unknown name '%'; write $", HereWritten},
    {kAnyFault, nullptr, "a function takes its argument in parentheses; write $", CallOf},
    {kAnyFault, [](auto &w) { return w.typed.size() > 1; }, "unknown name '%'; did you mean $?",
     [](auto &w) { return NearestName(Lowered(w.typed), KnownNames(w.failed.settings)); }},
    {kAnyFault, nullptr, "unknown function '%'; there are$", Functions},
    {kAnyFault, nullptr, "$", [](auto &w) { return WhyNoVariableName(w.typed); }},
    {kAnyFault, nullptr, "unknown name '%'; give it a value with --var %=..."},
};

} // namespace

constinit Search const kUnknownWord{FirstUnknownWord, kWords};

} // namespace zvi::app
