// Mistakes as a table: the fault that they lead to, how they are seen, and what is said of them.

#include "apps/zvi/eval/hints/Diagnose.h"

#include "apps/zvi/common/Characters.h"
#include "apps/zvi/common/WideText.h"
#include "apps/zvi/eval/hints/Mistakes.h"

#include <regex>

namespace zvi::app {

namespace {

using lib::ParseFaultKind;

/// Whether a range or a repeat may name so many numbers that the text is not read again in search of a mistake.
bool MayNameMany(std::wstring const &typed) {
    static std::wregex const manyDigits(L"\\d{6}");
    return typed.find_first_of(L"Tt@") != kNowhere && std::regex_search(typed, manyDigits);
}

/// `name=expression`, which is no expression.
std::optional<Mistake> FindAssignment(FailedText const &failed) {
    std::size_t const equals = failed.typed.find(L'=');
    std::size_t const first = NextItem(failed.typed, 0);
    if (equals == kNowhere || first >= equals || !IsLetter(failed.typed[first]))
        return std::nullopt;
    return Mistake{{equals, 1}, "a variable is set apart from the text, by --var " + Utf8Of(failed.typed)};
}

/// A kind of mistake. The first row that fits a failed text and finds its mistake tells the hint.
struct MistakeRow {
    ParseFaultKind fault;                                     ///< what it makes the parser fail with; kNone: anything
    std::optional<Mistake> (*find)(FailedText const &failed); ///< null: it is where the fault is
    char const *hint = nullptr;
    bool readsAgain = false; ///< it reads parts of the text again
};

constexpr MistakeRow kMistakes[] = {
    {ParseFaultKind::kTooLong, nullptr,
     "the text is too long; a line holds about 2,000 characters, and a B or T that stands for BY or TO counts as 12"},
    {ParseFaultKind::kTooManyNumbers, nullptr,
     "a line holds at most 1,000 numbers; write runs as ranges, or two lines"},
    {ParseFaultKind::kTooManyArguments, nullptr, "a list holds at most 10,000,000 numbers"},
    {ParseFaultKind::kNone, FindAssignment},
    {ParseFaultKind::kNone, FindUnknownWord},
    {ParseFaultKind::kRightAngleTangent, nullptr, "angles are in degrees, and the tangent of 90 has no value"},
    {ParseFaultKind::kIntegerOverflow, nullptr,
     "integers go from -2147483648 to 2147483647; numbers with a point go further"},
    {ParseFaultKind::kNotFinite, nullptr, "this has no value, or one beyond the largest number of 1.8e308"},
    {ParseFaultKind::kInverseSine, nullptr, "asin and acos take a number from -1 to 1"},
    {ParseFaultKind::kZeroDivisor, FindZeroDivisor},
    {ParseFaultKind::kExponent, FindExponent, nullptr, true},
    {ParseFaultKind::kNone, FindSlip, nullptr, true},
    {ParseFaultKind::kNone, FindItem, nullptr, true},
    {ParseFaultKind::kNone, FindOtherMode, nullptr, true},
    {ParseFaultKind::kNone, DescribePlace},
};

/// The parser's words for what it refuses, and ours for what only the program does.
std::string FaultName(ParseFaultKind kind) {
    if (kind == ParseFaultKind::kIntegerOverflow || kind == ParseFaultKind::kNotFinite)
        return "the number is out of range";
    std::string const text = lib::ParseFaultText(kind);
    return text.empty() ? "there is no number in the text" : text;
}

Mistake FindMistake(FailedText const &failed) {
    bool const isLong = MayNameMany(failed.typed);
    for (MistakeRow const &row : kMistakes) {
        bool const fits = row.fault == ParseFaultKind::kNone || row.fault == failed.Fault();
        if (!fits || (row.readsAgain && isLong))
            continue;
        if (!row.find)
            return {failed.CulpritSpan(), row.hint};
        if (std::optional<Mistake> const mistake = row.find(failed))
            return *mistake;
    }
    return {{failed.Place(), 1}, ""};
}

} // namespace

Diagnosis Diagnose(CString const &typed, EvalSettings const &settings, EvalOutcome const &outcome) {
    Mistake const mistake = FindMistake({typed.GetString(), settings, outcome});
    return {mistake.where, FaultName(outcome.fault.kind), mistake.hint};
}

} // namespace zvi::app
