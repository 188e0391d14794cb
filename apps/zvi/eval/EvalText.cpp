#include "apps/zvi/eval/EvalText.h"

#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/WideText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace zvi::app {

namespace {

/// From this size on a whole number is written as a decimal.
constexpr double kLeastDecimal = 1e16;

using Json = nlohmann::ordered_json;

Json ValueOf(double value) {
    if (!std::isfinite(value))
        return nullptr;
    bool const whole = value == std::trunc(value) && std::fabs(value) < kLeastDecimal;
    return whole ? Json(static_cast<long long>(value)) : Json(value);
}

Json Head(EvalSettings const &settings) {
    return {{"schema", 1}, {"mode", EntryOf(settings.mode).name}};
}

} // namespace

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
