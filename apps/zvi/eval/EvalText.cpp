#include "apps/zvi/eval/EvalText.h"

#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/WideText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <charconv>
#include <cmath>

namespace zvi::app {

namespace {

/// Most characters of a text that are shown around a caret, and how many of them before it.
constexpr std::size_t kMostShown = 70;
constexpr std::size_t kShownBefore = 50;

/// Sizes between which a number is written without exponent.
constexpr double kLeastPlain = 1e-5;
constexpr double kLeastWithExponent = 1e16;

constexpr char const *kCut = "...";

using Json = nlohmann::ordered_json;

Json ValueOf(double value) {
    if (!std::isfinite(value))
        return nullptr;
    bool const whole = value == std::trunc(value) && std::fabs(value) < kLeastWithExponent;
    return whole ? Json(static_cast<long long>(value)) : Json(value);
}

Json Head(EvalSettings const &settings) {
    return {{"schema", 1}, {"mode", EntryOf(settings.mode).name}};
}

} // namespace

std::string PlainNumber(double value) {
    if (std::isnan(value))
        return "nan";
    double const size = std::fabs(value);
    if (std::isinf(value) || (size != 0.0 && size < kLeastPlain) || size >= kLeastWithExponent)
        return ExactNumber(value);
    char buffer[32];
    double const shown = value == 0.0 ? 0.0 : value;
    auto const result = std::to_chars(buffer, buffer + sizeof buffer, shown, std::chars_format::fixed);
    return std::string(buffer, result.ptr);
}

std::string OutcomeText(EvalOutcome const &outcome) {
    std::string text;
    for (std::vector<double> const &group : outcome.groups) {
        for (std::size_t i = 0; i < group.size(); ++i) {
            text += i == 0 ? "" : " ";
            text += PlainNumber(group[i]);
        }
        text += "\n";
    }
    return text;
}

std::string CaretText(CString const &typed, Span const &where) {
    std::wstring const shown = Printable(View(typed));
    std::size_t const at = std::min(where.begin, shown.size());
    std::size_t const begin = shown.size() > kMostShown && at > kShownBefore ? at - kShownBefore : 0;
    std::size_t const end = std::min(shown.size(), begin + kMostShown);
    std::string const lead = begin > 0 ? kCut : "";
    std::string text = "  " + lead + Utf8Of(shown.substr(begin, end - begin)) + (end < shown.size() ? kCut : "") + "\n";
    text += std::string(2 + lead.size() + Columns(shown.substr(begin, at - begin)), ' ') + "^";
    std::size_t const marked = std::min(where.length, end - std::min(end, at));
    std::size_t const columns = Columns(shown.substr(at, marked));
    return text + std::string(columns > 1 ? columns - 1 : 0, '~') + "\n";
}

std::string DiagnosisText(CString const &typed, Diagnosis const &diagnosis) {
    std::string text = diagnosis.what + "\n" + CaretText(typed, diagnosis.where);
    if (diagnosis.hint.empty()) {
        text.pop_back();
        return text;
    }
    return text + "  hint: " + diagnosis.hint;
}

std::string OutcomeJson(EvalSettings const &settings, EvalOutcome const &outcome) {
    Json json = Head(settings);
    if (settings.mode == EvalMode::kPosition)
        json["op"] = outcome.opCode;
    Json groups = Json::array();
    for (std::vector<double> const &group : outcome.groups) {
        Json numbers = Json::array();
        for (double const value : group)
            numbers.push_back(ValueOf(value));
        groups.push_back(std::move(numbers));
    }
    json["groups"] = std::move(groups);
    return json.dump() + "\n";
}

std::string DiagnosisJson(EvalSettings const &settings, CString const &typed, Diagnosis const &diagnosis) {
    Json json = Head(settings);
    std::wstring_view const before = View(typed).substr(0, diagnosis.where.begin);
    auto const halves =
        std::count_if(before.begin(), before.end(), [](wchar_t c) { return c >= 0xDC00 && c < 0xE000; });
    json["error"] = {{"message", diagnosis.what},
                     {"column", diagnosis.where.begin + 1 - static_cast<std::size_t>(halves)},
                     {"hint", diagnosis.hint}};
    return json.dump() + "\n";
}

} // namespace zvi::app
