#include "apps/zvi/numbers/NumbersCommand.h"

#include "apps/zvi/common/CommandLine.h"
#include "apps/zvi/common/ExitStatus.h"
#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/NearestName.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/numbers/NumberRuns.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>

namespace zvi::app {

namespace {

constexpr char const *kExamples =
    "Examples:\n"
    "  zvi numbers compress 1 3 5 7 9 20          1to9by2 20\n"
    "  zvi numbers expand '1to9by2 20'            1 3 5 7 9 20\n"
    "  zvi numbers select --from 1to100 '95to200by2'\n"
    "                                             the numbers of the list that the text names\n"
    "  seq 1 1000 | zvi numbers compress          numbers from standard input\n";

constexpr char const *kFooter =
    "Jobs: compress turns numbers into runs, each number once and in ascending order; expand lists the numbers of\n"
    "runs; select lists those of LIST, ascending and each once. A run is FIRSTtoLAST or FIRSTtoLASTbySTEP, T and B\n"
    "for short; one that falls walks down by itself, and its numbers may have a sign. 'zvi eval --mode nodes' reads "
    "what\n"
    "a user types into an input field, where a number is an expression: there a range has plain ends, and one that "
    "does\n"
    "not rise asks for a negative step. '-' or no TEXT reads standard input.\n"
    "\n"
    "Exit status: 0 done; 1 the text cannot be read; 2 wrong usage; 4 a fault of the program.\n";

struct NumbersOptions {
    std::string job;
    std::string from;
    bool keepOrder = false;
    bool json = false;
    std::vector<std::string> text;
    std::string help;
};

void CheckJob(NumbersOptions const &options, bool hasList) {
    std::vector<std::string> const jobs = {"compress", "expand", "select"};
    if (std::find(jobs.begin(), jobs.end(), options.job) == jobs.end())
        throw UsageError(options.job.empty()
                             ? "numbers needs a job: compress, expand or select"
                             : "unknown job '" + options.job + "'; " +
                                   DidYouMean(options.job, jobs, "the jobs are compress, expand and select"));
    bool const selects = options.job == "select";
    if (selects != hasList)
        throw UsageError(selects ? "select needs --from LIST, the numbers to select from, such as --from 1to100"
                                 : "--from goes with select, not with " + options.job);
    if (options.keepOrder && !selects)
        throw UsageError("--keep-order goes with select, not with " + options.job);
}

NumbersOptions Parse(std::vector<std::string> const &arguments) {
    NumbersOptions options;
    CommandLine line("zvi numbers", "Number lists as compact text, and back.");
    line.AddWord("JOB", "compress, expand or select");
    line.AddWords("TEXT", "Numbers or runs; several words are joined by blanks");
    std::optional<std::string> from;
    line.AddOption("--from", from, "LIST", "The numbers to select from, as runs");
    line.AddFlag("--keep-order", options.keepOrder, "Select in the order of the text");
    line.AddFlag("--json", options.json, "One JSON object");
    ParsedWords const parsed = line.Parse(arguments, {kExamples, kFooter});
    options.help = parsed.help;
    if (!options.help.empty())
        return options;
    if (!parsed.words.empty()) {
        options.job = parsed.words.front();
        options.text.assign(parsed.words.begin() + 1, parsed.words.end());
    }
    CheckJob(options, from.has_value());
    options.from = from.value_or("");
    return options;
}

bool ReadsInput(NumbersOptions const &options) {
    return options.text.empty() || (options.text.size() == 1 && options.text[0] == "-");
}

std::string TextOf(NumbersOptions const &options, Console &console) {
    if (ReadsInput(options)) {
        TellWaiting(console, "numbers", "numbers");
        return std::string(WithoutUtf8Mark(AllOf(console.in)));
    }
    std::string text;
    for (std::string const &word : options.text)
        text += (text.empty() ? "" : " ") + word;
    return text;
}

/// The numbers to select from.
std::vector<long> ListOf(NumbersOptions const &options) {
    try {
        return ExpandRuns(options.from);
    } catch (InputError const &error) {
        throw UsageError(std::string("--from: ") + error.what());
    }
}

std::string NumbersText(std::vector<long> const &numbers, bool json) {
    if (json)
        return nlohmann::ordered_json{{"schema", 1}, {"numbers", numbers}}.dump() + "\n";
    std::string text;
    for (long const number : numbers) {
        text += text.empty() ? "" : " ";
        text += std::to_string(number);
    }
    return text + "\n";
}

std::string Answer(NumbersOptions const &options, Console &console) {
    if (options.job == "compress") {
        std::string const runs = CompressNumbers(ListedNumbers(TextOf(options, console)));
        return options.json ? nlohmann::ordered_json{{"schema", 1}, {"text", runs}}.dump() + "\n" : runs + "\n";
    }
    if (options.job == "expand")
        return NumbersText(ExpandRuns(TextOf(options, console)), options.json);
    std::vector<long> const list = ListOf(options);
    return NumbersText(SelectNumbers(list, TextOf(options, console), options.keepOrder), options.json);
}

} // namespace

int RunNumbers(std::vector<std::string> const &arguments, Console &console) {
    NumbersOptions const options = Parse(arguments);
    if (!options.help.empty())
        return WriteResult(console, options.help);
    try {
        return WriteResult(console, Answer(options, console));
    } catch (InputError const &error) {
        bool const hasLines = ReadsInput(options);
        TellFailure(console, hasLines ? "standard input" : "", hasLines ? error.Line() : 0, error.what());
        return kExitBadInput;
    }
}

} // namespace zvi::app
