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
constexpr char kDigits[] = "0123456789";

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

/// A typed word that means nothing to the parser.
struct UnknownWord {
    FailedText const &failed;
    Span where;
    std::string typed = failed.Typed(where);
    std::string lower = Lowered(typed);
    bool behindNumber = FollowsNumber(failed.typed, where.begin);
    bool isUnit = IsLengthUnit(lower);
};

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
    std::size_t begin = at;
    while (begin > 0 && IsNameChar(typed[begin - 1]))
        --begin;
    std::size_t end = at;
    while (end < typed.size() && IsNameChar(typed[end]))
        ++end;
    std::wstring const front = typed.substr(begin, at - begin);
    std::wsmatch inFront;
    std::regex_search(front, inFront, numbers);
    begin += static_cast<std::size_t>(inFront.length());
    return {begin, end - begin};
}

/// The first typed word that means nothing to the parser, as it would read the text without units.
std::optional<UnknownWord> FirstUnknownWord(FailedText const &failed) {
    std::vector<int> sources;
    std::wstring const line = lib::NormalizeCommandText(CString(std::wstring_view(failed.typed)), sources).GetString();
    std::vector<std::string> const names = KnownNames(failed.settings);
    lib::SymbolTable const table;
    for (Span const &word : Words(line)) {
        std::string const text = Utf8Of(Part(line, word));
        if (table.FindReservedWord(text) || std::find(names.begin(), names.end(), Lowered(text)) != names.end())
            continue;
        auto const at = static_cast<std::size_t>(sources[word.begin]);
        UnknownWord const whole{failed, WordAround(failed.typed, at)};
        bool const isUnit = failed.HasUnits() && whole.isUnit && whole.lower != kUnreadUnit;
        if (!isUnit || !FollowsNumber(failed.typed, at))
            return whole;
    }
    return std::nullopt;
}

std::string OtherName(UnknownWord const &word) {
    auto const *const entry = std::find_if(std::begin(kOtherNames), std::end(kOtherNames),
                                           [&word](auto const &name) { return name.first == word.lower; });
    return entry == std::end(kOtherNames) ? "" : std::string(entry->second);
}

/// The call for a function with its argument run into its name, such as sin30.
std::string CallOf(UnknownWord const &word) {
    for (std::string const &name : BuiltInFunctions()) {
        std::string const rest = word.lower.starts_with(name) ? word.lower.substr(name.size()) : "";
        if (!rest.empty() && rest.find_first_not_of(kDigits) == std::string::npos)
            return Joined(name, "(", rest, ")");
    }
    return {};
}

std::string Nearest(UnknownWord const &word) {
    return word.lower.size() == 1 ? "" : NearestName(word.lower, KnownNames(word.failed.settings));
}

/// The functions there are, for a word that stands as one.
std::string Functions(UnknownWord const &word) {
    std::string list;
    if (word.failed.At(word.where.End()) == L'(') {
        for (std::string const &name : BuiltInFunctions())
            list += " " + name;
    }
    return list;
}

std::string NoVariable(UnknownWord const &word) {
    return WhyNoVariableName(word.typed);
}

/// What to say of an unknown word; the first row that is seen, or finds something, counts. In the hint % is the word
/// and $ what was found.
struct WordRow {
    bool (*seen)(UnknownWord const &);
    std::string (*find)(UnknownWord const &);
    std::string_view hint; ///< empty: nothing here
};

constexpr WordRow kWords[] = {
    {[](UnknownWord const &w) { return w.behindNumber && w.failed.HasUnits() && !w.isUnit; }, nullptr,
     "unknown unit '%'; the units of a number are mm, cm, m, in and um"},
    {[](UnknownWord const &w) { return w.behindNumber && w.isUnit && !KnowsUnits(w.failed.settings.mode); }, nullptr,
     "only the modes number and integer read length units"},
    {[](UnknownWord const &w) { return w.behindNumber && w.isUnit && !w.failed.HasUnits(); }, nullptr,
     "a length unit needs a unit system for the result: add --unit-system 0 (mm), 1 (m), 3 (ft), 4 (cm) or 5 (in)"},
    {[](UnknownWord const &w) { return w.typed.empty() || w.lower == kUnreadUnit; }, nullptr, ""},
    {[](UnknownWord const &w) { return w.behindNumber && w.lower == "e"; }, nullptr,
     "an exponent follows its number without blanks, as in 1e3"},
    {[](UnknownWord const &w) {
         return w.behindNumber && w.lower[0] == 'x' && w.lower.find_first_not_of(kDigits, 1) == std::string::npos;
     },
     nullptr, "unknown name '%'; if it is a product, write * for x"},
    {nullptr, OtherName, "unknown name '%'; write $"},
    {nullptr, CallOf, "a function takes its argument in parentheses; write $"},
    {nullptr, Nearest, "unknown name '%'; did you mean $?"},
    {nullptr, Functions, "unknown function '%'; there are$"},
    {nullptr, NoVariable, "$"},
    {[](UnknownWord const &) { return true; }, nullptr, "unknown name '%'; give it a value with --var %=..."},
};

std::string Filled(std::string_view hint, std::string const &word, std::string const &found) {
    std::string text;
    for (char const c : hint)
        text += c == '%' ? word : c == '$' ? found : std::string(1, c);
    return text;
}

} // namespace

std::optional<Mistake> FindUnknownWord(FailedText const &failed) {
    std::optional<UnknownWord> const word = FirstUnknownWord(failed);
    for (WordRow const &row : kWords) {
        std::string const found = word && row.find ? row.find(*word) : "";
        if (!word || (row.seen ? !row.seen(*word) : found.empty()))
            continue;
        return row.hint.empty() ? std::nullopt
                                : std::optional(Mistake{word->where, Filled(row.hint, word->typed, found)});
    }
    return std::nullopt;
}

} // namespace zvi::app
