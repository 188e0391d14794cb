#include "apps/zvi/profile-report/ProfileReportCommand.h"

#include "apps/zvi/common/CommandLine.h"
#include "apps/zvi/common/ExitStatus.h"
#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/NearestName.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/ReadWhole.h"
#include "apps/zvi/profile-report/ProfileRows.h"
#include "apps/zvi/profile-report/ProfileTable.h"

#include <algorithm>
#include <optional>

namespace zvi::app {

namespace {

constexpr char const *kExamples =
    "Examples:\n"
    "  zvi profile-report PROF.csv                   the names of a report, the longest own time first\n"
    "  zvi profile-report --sort calls --top 5 PROF.csv\n"
    "                                                the five that are called most\n"
    "  zvi profile-report --json PROF.csv            everything for a machine, in seconds\n";

constexpr char const *kFooter =
    "The report is what the library's profiler writes when a program ends. Own time is without the scopes inside;\n"
    "the share is own time by the largest total of a name. A bar is as long as the total, '#' for the own part and\n"
    "'.' for the scopes inside. '-' or no FILE reads standard input.\n"
    "\n"
    "Exit status: 0 done; 1 the report cannot be read; 2 wrong usage; 4 a fault of the program.\n";

struct ProfileReportOptions {
    std::string file = "-";
    std::string sort;
    std::optional<std::size_t> top;
    bool json = false;
    std::string help;
};

std::size_t TopOf(std::string const &text) {
    std::optional<long long> const top = ParseInteger(text);
    if (!top || *top < 1)
        throw UsageError("--top takes the number of rows, 1 or more, not '" + text + "'");
    return static_cast<std::size_t>(*top);
}

ProfileReportOptions Parse(std::vector<std::string> const &arguments) {
    ProfileReportOptions options;
    std::vector<std::string> const &keys = ProfileSortKeys();
    options.sort = keys.front();
    std::optional<std::string> top;
    CommandLine line("zvi profile-report",
                     "Shows a PROF.csv, the report of the library's profiler, as a sorted table with bars.");
    line.AddWord("FILE", "The report; '-' is standard input");
    line.AddOption("--sort", options.sort, "KEY", "own, total, child, calls, per-call or name (own)");
    line.AddOption("--top", top, "N", "No more than N rows");
    line.AddFlag("--json", options.json, "One JSON object");
    ParsedWords const parsed = line.Parse(arguments, {kExamples, kFooter, false});
    options.help = parsed.help;
    if (parsed.words.size() > 1)
        throw UsageError("unexpected '" + parsed.words[1] + "'; give one report");
    if (!parsed.words.empty())
        options.file = parsed.words.front();
    if (std::find(keys.begin(), keys.end(), options.sort) == keys.end())
        throw UsageError("--sort knows no '" + options.sort + "'; " +
                         DidYouMean(options.sort, keys, "it takes own, total, child, calls, per-call or name"));
    if (top)
        options.top = TopOf(*top);
    return options;
}

} // namespace

int RunProfileReport(std::vector<std::string> const &arguments, Console &console) {
    ProfileReportOptions const options = Parse(arguments);
    if (!options.help.empty())
        return WriteResult(console, options.help);
    bool const isInput = options.file == "-";
    if (isInput)
        TellWaiting(console, "a profile report", "profile-report");
    try {
        ProfileReport const report = ReadProfileReport(ReadWhole(options.file, console.in));
        std::vector<ProfileRow> rows = report.rows;
        SortProfileRows(rows, options.sort);
        rows.resize(std::min(options.top.value_or(rows.size()), rows.size()));
        return WriteResult(console, options.json ? ProfileJson(report, rows) : ProfileTable(report, rows));
    } catch (InputError const &error) {
        TellFailure(console, isInput ? "standard input" : options.file, error.Line(), error.what());
        return kExitBadInput;
    }
}

} // namespace zvi::app
