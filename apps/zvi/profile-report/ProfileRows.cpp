#include "apps/zvi/profile-report/ProfileRows.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/Text.h"

#include <algorithm>
#include <array>
#include <cassert>
#include <optional>

namespace zvi::app {

namespace {

constexpr std::string_view kFirstLine = "Total Work Time :";

/// Names are filled up with blanks in front to this width.
constexpr std::size_t kNameWidth = 12;

/// Columns behind the name: share, own time, own time of a call, calls, total, child.
constexpr std::size_t kNumbers = 6;

[[noreturn]] void RefuseLine(std::size_t line) {
    throw InputError(line, "is no line of a profile report; give the PROF.csv that a program wrote at its end");
}

/// Takes the first line off the text, without its line end.
std::string_view TakeLine(std::string_view &text) {
    std::size_t const end = std::min(text.find('\n'), text.size());
    std::string_view line = text.substr(0, end);
    text.remove_prefix(std::min(end + 1, text.size()));
    if (line.ends_with('\r'))
        line.remove_suffix(1);
    return line;
}

std::string_view NameOfColumn(std::string_view column) {
    if (column.size() > kNameWidth)
        return column;
    return column.substr(std::min(column.find_first_not_of(' '), column.size()));
}

double Number(std::string_view text, std::size_t line) {
    std::optional<double> const number = ParseNumber(text);
    if (!number)
        RefuseLine(line);
    return *number;
}

ProfileRow RowOf(std::string_view text, std::size_t line) {
    std::array<std::string_view, kNumbers> columns;
    std::string_view name = text;
    for (std::size_t i = kNumbers; i-- > 0;) {
        std::size_t const comma = name.rfind(", ");
        if (comma == std::string_view::npos)
            RefuseLine(line);
        columns[i] = name.substr(comma + 2);
        name = name.substr(0, comma);
    }
    // The share and the own time of a call follow from the others, which have more digits.
    auto const &[share, own, ownPerCall, calls, total, child] = columns;
    std::optional<long long> const count = ParseInteger(calls);
    if (!count)
        RefuseLine(line);
    return {std::string(NameOfColumn(name)), Number(own, line), *count, Number(total, line), Number(child, line)};
}

struct SortKey {
    char const *name;
    double (*number)(ProfileRow const &);
};

constexpr SortKey kSortKeys[] = {
    {"own", [](ProfileRow const &row) { return row.own; }},
    {"total", [](ProfileRow const &row) { return row.total; }},
    {"child", [](ProfileRow const &row) { return row.child; }},
    {"calls", [](ProfileRow const &row) { return static_cast<double>(row.calls); }},
    {"per-call", [](ProfileRow const &row) { return row.PerCall(); }},
    {"name", nullptr},
};

} // namespace

std::vector<std::string> const &ProfileSortKeys() {
    static std::vector<std::string> const kNames = [] {
        std::vector<std::string> names;
        for (SortKey const &key : kSortKeys)
            names.emplace_back(key.name);
        return names;
    }();
    return kNames;
}

ProfileReport ReadProfileReport(std::string_view text) {
    text = WithoutUtf8Mark(text);
    std::string_view const first = TakeLine(text);
    if (!first.starts_with(kFirstLine))
        RefuseLine(1);
    ProfileReport report{Number(first.substr(kFirstLine.size()), 1), {}};
    if (!Trimmed(TakeLine(text)).starts_with("Function Name,"))
        RefuseLine(2);
    for (std::size_t line = 3; !text.empty(); ++line)
        if (std::string_view const row = TakeLine(text); !row.empty())
            report.rows.push_back(RowOf(row, line));
    return report;
}

void SortProfileRows(std::vector<ProfileRow> &rows, std::string_view key) {
    auto const *const found = std::find_if(std::begin(kSortKeys), std::end(kSortKeys),
                                           [key](SortKey const &candidate) { return candidate.name == key; });
    assert(found != std::end(kSortKeys));
    std::stable_sort(rows.begin(), rows.end(), [found](ProfileRow const &left, ProfileRow const &right) {
        return found->number ? found->number(left) > found->number(right) : left.name < right.name;
    });
}

} // namespace zvi::app
