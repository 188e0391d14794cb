#pragma once

#include <string>
#include <string_view>
#include <vector>

namespace zvi::app {

/// A name of a profile report, with times in seconds.
struct ProfileRow {
    std::string name; ///< bytes as the program wrote them
    double own;       ///< without the scopes inside
    long long calls;
    double total;
    double child; ///< the scopes directly inside

    double PerCall() const { return calls > 0 ? own / static_cast<double>(calls) : 0; }
};

/// The report that `zvi::lib::Profiler` writes.
struct ProfileReport {
    double total; ///< the largest total of a name
    std::vector<ProfileRow> rows;
};

/// What rows may be sorted by, as a user writes it; the first is the order of the report itself.
std::vector<std::string> const &ProfileSortKeys();

/// Reads a report. The columns of a row are counted from the right, since names may hold commas. Throws InputError for
/// what is no report.
ProfileReport ReadProfileReport(std::string_view text);

/// Sorts by one of the keys: numbers with the largest first, names in the order of their bytes; rows that are equal
/// stay as they are.
void SortProfileRows(std::vector<ProfileRow> &rows, std::string_view key);

} // namespace zvi::app
