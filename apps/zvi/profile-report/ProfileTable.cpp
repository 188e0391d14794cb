#include "apps/zvi/profile-report/ProfileTable.h"

#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/WideText.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <array>
#include <cmath>

namespace zvi::app {

namespace {

/// Characters of a bar that stands for the report's total.
constexpr double kBarWidth = 30;

/// From here on four digits round to the next unit.
constexpr double kRoundsUp = 0.99995;

/// Numbers, the bar, the name.
using Cells = std::array<std::string, 7>;
constexpr std::size_t kBar = 5;

double ShareOf(double seconds, double total) {
    return total > 0 ? seconds / total : 0;
}

/// Three or four digits and a unit that fits.
std::string Duration(double seconds) {
    struct Unit {
        double seconds;
        char const *name;
    };
    constexpr Unit kUnits[] = {{1, " s "}, {1e-3, " ms"}, {1e-6, " us"}};
    for (Unit const &unit : kUnits)
        if (std::abs(seconds) >= unit.seconds * kRoundsUp)
            return ShortNumber(seconds / unit.seconds, 4) + unit.name;
    return ShortNumber(seconds / 1e-9, 4) + " ns";
}

std::string Percent(double share) {
    return ShortNumber(std::round(share * 1000) / 10) + "%";
}

std::string Bar(ProfileRow const &row, double total) {
    auto const length = [total](double seconds) {
        return static_cast<std::size_t>(std::lround(kBarWidth * std::clamp(ShareOf(seconds, total), 0.0, 1.0)));
    };
    std::size_t const own = length(row.own);
    return std::string(own, '#') + std::string(std::max(length(row.total), own) - own, '.');
}

Cells CellsOf(ProfileRow const &row, double total) {
    return {Percent(ShareOf(row.own, total)),
            Duration(row.own),
            Duration(row.total),
            std::to_string(row.calls),
            Duration(row.PerCall()),
            Bar(row, total),
            Utf8Of(Printable(View(WideOf(row.name))))};
}

/// The numbers to the right, the bar to the left.
std::string Line(Cells const &cells, std::array<std::size_t, kBar + 1> const &widths) {
    std::string text;
    for (std::size_t i = 0; i <= kBar; ++i) {
        std::string const fill(widths[i] - cells[i].size(), ' ');
        text += i == kBar ? cells[i] + fill : fill + cells[i];
        text += "  ";
    }
    text += cells.back();
    return text.substr(0, text.find_last_not_of(' ') + 1) + "\n";
}

} // namespace

std::string ProfileTable(ProfileReport const &report, std::vector<ProfileRow> const &rows) {
    std::vector<Cells> lines{{"share", "own", "total", "calls", "own/call", "own # inside .", "name"}};
    for (ProfileRow const &row : rows)
        lines.push_back(CellsOf(row, report.total));
    std::array<std::size_t, kBar + 1> widths{};
    for (Cells const &cells : lines)
        for (std::size_t i = 0; i <= kBar; ++i)
            widths[i] = std::max(widths[i], cells[i].size());
    std::string text;
    for (Cells const &cells : lines)
        text += Line(cells, widths);
    std::size_t const left = report.rows.size() - rows.size();
    if (left > 0)
        text += "and " + std::to_string(left) + (left == 1 ? " name more\n" : " names more\n");
    return text;
}

std::string ProfileJson(ProfileReport const &report, std::vector<ProfileRow> const &rows) {
    nlohmann::ordered_json json = {{"schema", 1}, {"total_seconds", report.total}, {"names", report.rows.size()}};
    json["rows"] = nlohmann::ordered_json::array();
    for (ProfileRow const &row : rows)
        json["rows"].push_back({{"name", Utf8Of(WideOf(row.name))},
                                {"share", ShareOf(row.own, report.total)},
                                {"own_seconds", row.own},
                                {"total_seconds", row.total},
                                {"child_seconds", row.child},
                                {"calls", row.calls},
                                {"own_seconds_per_call", row.PerCall()}});
    return json.dump() + "\n";
}

} // namespace zvi::app
