#include "apps/zvi/eval/Diagnose.h"

#include "apps/zvi/common/Text.h"
#include "apps/zvi/common/WideText.h"
#include "apps/zvi/eval/FailedText.h"
#include "apps/zvi/eval/Mistakes.h"
#include "apps/zvi/eval/Repairs.h"

#include <algorithm>

namespace zvi::app {

namespace {

/// The message that follows every other one.
constexpr std::string_view kGeneralMessage = "Syntax Error";

/// Texts that name more numbers than this are not read again in search of a mistake, which could take seconds.
constexpr long long kMostToReadAgain = 100'000;

/// Longest corrected text that a hint shows, in characters.
constexpr std::size_t kLongestShown = 100;

/// The messages in their order, each once; the general one alone where there is no other.
std::string Told(std::vector<std::string> const &messages) {
    std::string joined;
    for (std::string const &message : messages) {
        bool const general = SameNoCase(message, kGeneralMessage);
        if (!general || joined.empty())
            joined += (joined.empty() ? "" : "; ") + message;
    }
    return joined.empty() ? "there is no number in the text" : joined;
}

std::optional<Mistake> FirstOf(FailedText const &failed,
                               std::initializer_list<std::optional<Mistake> (*)(FailedText const &)> searches) {
    for (auto const search : searches) {
        if (std::optional<Mistake> mistake = search(failed))
            return mistake;
    }
    return std::nullopt;
}

/// A slip that is mended; if another mistake is left then, that one is told too.
std::optional<Mistake> FindSlip(FailedText const &failed) {
    std::optional<RepairedText> const repaired = FindRepair(failed.typed, failed.settings);
    if (!repaired)
        return std::nullopt;
    Mistake slip{{failed.Place(), 1}, repaired->why};
    if (!repaired->outcome.parsed) {
        EvalOutcome const &outcome = repaired->outcome;
        FailedText const left{repaired->text, outcome.line.GetString(), failed.settings, outcome};
        std::optional<Mistake> const other = FirstOf(left, {FindZeroDivisor, FindExponent});
        slip.hint += other ? "; " + other->hint : "";
        return other ? std::optional(slip) : std::nullopt;
    }
    if (repaired->text.size() <= kLongestShown)
        slip.hint += "; write " + Utf8Of(repaired->text);
    return slip;
}

Mistake FindMistake(FailedText const &failed) {
    std::optional<Mistake> found =
        FirstOf(failed, {FindTooMuch, FindAssignment, FindUnit, FindUnknownName, FindFunctionDomain});
    if (!found && failed.NamedNumbers() <= kMostToReadAgain)
        found = FirstOf(failed, {FindZeroDivisor, FindExponent, FindSlip, FindItem, FindOtherMode});
    return found ? *found : DescribePlace(failed);
}

} // namespace

Diagnosis Diagnose(CString const &typed, EvalSettings const &settings, EvalOutcome const &outcome) {
    FailedText const failed{typed.GetString(), outcome.line.GetString(), settings, outcome};
    Mistake const mistake = FindMistake(failed);
    return {mistake.where, Told(outcome.messages), mistake.hint};
}

} // namespace zvi::app
