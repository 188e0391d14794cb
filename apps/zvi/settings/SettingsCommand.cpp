#include "apps/zvi/settings/SettingsCommand.h"

#include "apps/zvi/common/CommandLine.h"
#include "apps/zvi/common/ExitStatus.h"
#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/FileAccess.h"
#include "apps/zvi/common/NearestName.h"
#include "apps/zvi/common/ReadWhole.h"
#include "apps/zvi/common/WideText.h"
#include "apps/zvi/settings/EditSettings.h"
#include "apps/zvi/settings/SettingsInForce.h"

#include "zvi/core/MOptionRWImplFile.h"
#include "zvi/host/Files.h"
#include "zvi/host/Paths.h"
#include "zvi/host/ReplaceContent.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <filesystem>

namespace zvi::app {

namespace {

using lib::SettingsEnd;

constexpr char const *kExamples =
    "Examples:\n"
    "  zvi settings list                                       what is in force, and where it comes from\n"
    "  zvi settings get OPT_GEN_TOLERENCE RegardAsZero         one value\n"
    "  zvi settings set OPT_GEN_TOLERENCE RegardAsZero 1e-6    changes it in the file\n"
    "  zvi settings --file s.cfg set MYAPP Language ko         in another file\n";

constexpr char const *kFooter =
    "Without --file it is TEKOSetting.cfg in the folder Zorvi/Ormeline of your documents. 'list' and 'get' change and\n"
    "make nothing; 'set' makes the file when it is absent, and changes no other line of it. Behind '--' a value may\n"
    "begin with two minus signs.\n"
    "\n"
    "Exit status: 0 done; 1 the file cannot be read or written, or has no such setting; 2 wrong usage; 4 a fault of "
    "the\n"
    "program.\n";

struct SettingsOptions {
    std::vector<std::string> words;
    std::string file; ///< as the user names it
    bool isDefault = false;
    bool json = false;
    std::string help;
};

/// Checks what to do and the number of words behind it.
void CheckWords(std::vector<std::string> const &words) {
    static std::vector<std::string> const kJobs = {"list", "get", "set"};
    std::string const job = words.empty() ? "" : words.front();
    if (job == "list" && words.size() != 1)
        throw UsageError("'list' takes nothing behind it");
    if (job == "get" && words.size() != 3)
        throw UsageError("'get' takes a category and a keyword; quote one that holds blanks");
    if (job == "set" && words.size() != 4)
        throw UsageError("'set' takes a category, a keyword and a value; quote one that holds blanks");
    if (job.empty())
        throw UsageError("say what to do: list, get or set; 'zvi settings -h' shows examples");
    if (std::find(kJobs.begin(), kJobs.end(), job) == kJobs.end())
        throw UsageError("unknown job '" + job + "'; " + DidYouMean(job, kJobs, "it is list, get or set"));
}

SettingsOptions Parse(std::vector<std::string> const &arguments) {
    SettingsOptions options;
    CommandLine line("zvi settings", "Shows and changes settings.");
    line.AddWords("list|get CATEGORY KEYWORD|set CATEGORY KEYWORD VALUE", "What to do");
    line.AddOption("--file", options.file, "F", "The settings file");
    line.AddFlag("--json", options.json, "'list' as one JSON object");
    ParsedWords parsed = line.Parse(arguments, {kExamples, kFooter, true});
    options.help = parsed.help;
    options.words = std::move(parsed.words);
    if (!options.help.empty())
        return options;
    CheckWords(options.words);
    options.isDefault = options.file.empty();
    if (options.isDefault)
        options.file = NameOf(host::NativePath(View(lib::MOptionRWImplFile::DefaultPath())));
    return options;
}

std::wstring PathInLibrary(SettingsOptions const &options) {
    return host::LibraryPath(PathOf(options.file));
}

/// Reads the file; a default one may be absent. Says what does not count.
SettingsInForce Read(SettingsOptions const &options, Console &console) {
    SettingsInForce read = ReadSettingsInForce(PathInLibrary(options));
    if (read.end == SettingsEnd::kNoFile && !options.isDefault)
        throw InputError(0, "there is no such file; check the name, or make it with 'set'");
    if (read.end == SettingsEnd::kUnread)
        throw InputError(0, "cannot be read; check that it is a file that you may read");
    if (read.end == SettingsEnd::kLongLine)
        TellFailure(console, options.file, static_cast<std::size_t>(read.lastLine),
                    "warning: the line is over " + std::to_string(lib::kLongestSettingsLine) +
                        " bytes, so neither it nor anything behind it counts; shorten it");
    return read;
}

std::string Cell(std::string const &text) {
    return Utf8Of(Printable(View(WideOf(text))));
}

std::string Padded(std::string const &text, std::size_t columns) {
    return text + std::string(columns - std::min(columns, Columns(text)), ' ');
}

std::string Table(SettingsOptions const &options, SettingsInForce const &read) {
    std::vector<std::vector<std::string>> rows = {{"category", "keyword", "from", "value"}};
    for (SettingInForce const &row : read.settings)
        rows.push_back({Cell(Utf8Of(row.category)), Cell(Utf8Of(row.keyword)),
                        row.line == 0 ? "default" : "line " + std::to_string(row.line),
                        Cell(row.value) + (row.written.empty() ? "" : "  (written: " + Cell(row.written) + ")")});
    std::vector<std::size_t> widths(rows.front().size());
    for (std::vector<std::string> const &row : rows)
        for (std::size_t i = 0; i < widths.size(); ++i)
            widths[i] = std::max(widths[i], Columns(row[i]) + 2);
    std::string text = options.file + (read.end == SettingsEnd::kNoFile ? " (absent)\n" : "\n");
    for (std::vector<std::string> const &row : rows) {
        for (std::size_t i = 0; i + 1 < row.size(); ++i)
            text += Padded(row[i], widths[i]);
        text += row.back() + "\n";
    }
    return text;
}

std::string Json(SettingsOptions const &options, SettingsInForce const &read) {
    nlohmann::ordered_json settings = nlohmann::ordered_json::array();
    for (SettingInForce const &row : read.settings) {
        nlohmann::ordered_json entry = {{"category", Utf8Of(row.category)},
                                        {"keyword", Utf8Of(row.keyword)},
                                        {"value", row.value},
                                        {"from", row.line == 0 ? "default" : "file"}};
        if (row.line != 0)
            entry["line"] = row.line;
        if (!row.written.empty())
            entry["written"] = row.written;
        entry["known"] = row.isKnown;
        settings.push_back(std::move(entry));
    }
    nlohmann::ordered_json const all = {{"schema", 1},
                                        {"file", Utf8Of(WideOf(options.file))},
                                        {"exists", read.end != SettingsEnd::kNoFile},
                                        {"complete", read.end != SettingsEnd::kLongLine},
                                        {"settings", std::move(settings)}};
    return all.dump(2) + "\n";
}

int List(SettingsOptions const &options, Console &console) {
    SettingsInForce const read = Read(options, console);
    return WriteResult(console, options.json ? Json(options, read) : Table(options, read));
}

int Get(SettingsOptions const &options, Console &console) {
    CString const category = KeptText(options.words[1]);
    CString const keyword = KeptText(options.words[2]);
    std::vector<std::string> categories;
    std::vector<std::string> keywords;
    for (SettingInForce const &row : Read(options, console).settings) {
        if (row.category == category && row.keyword == keyword)
            return WriteResult(console, row.value + "\n");
        if (row.category == category)
            keywords.push_back(Utf8Of(row.keyword));
        categories.push_back(Utf8Of(row.category));
    }
    if (keywords.empty())
        throw InputError(0, "no category '" + options.words[1] + "'; " +
                                DidYouMean(options.words[1], categories, "'zvi settings list' shows all"));
    throw InputError(0, "no keyword '" + options.words[2] + "' in the category '" + options.words[1] + "'; " +
                            DidYouMean(options.words[2], keywords, "'zvi settings list' shows all"));
}

/// The bytes of the file; none when it is absent.
std::string OldContent(SettingsOptions const &options, Console &console) {
    if (IsDevice(PathOf(options.file)))
        throw InputError(0, "is a device or a pipe; name a file");
    return host::Exists(PathInLibrary(options)) ? ReadWhole(options.file, console.in) : std::string();
}

int Set(SettingsOptions const &options, Console &console) {
    CString const category = KeptText(options.words[1]);
    CString const keyword = KeptText(options.words[2]);
    CString const value = KeptText(options.words[3]);
    std::string const why = WhyNotHeld(category, keyword, value);
    if (!why.empty())
        throw UsageError("a settings file cannot hold this: " + why);
    std::string const wrong = WrongValue(category, keyword, value);
    if (!wrong.empty())
        throw UsageError("the value '" + options.words[3] + "' of " + options.words[2] + " " + wrong);
    std::string const content = EditedSettings(OldContent(options, console), category, keyword, value);
    if (options.isDefault) {
        std::error_code ignored; // then the file cannot be written
        host::DocumentsFolder();
        std::filesystem::create_directories(PathOf(options.file).parent_path(), ignored);
    }
    std::error_code const failure = host::ReplaceContent(PathInLibrary(options), content);
    if (failure)
        throw InputError(0, "cannot be written (" + failure.default_error_condition().message() +
                                "); check that the folder exists, may be written to and has room");
    return kExitDone;
}

} // namespace

int RunSettings(std::vector<std::string> const &arguments, Console &console) {
    SettingsOptions const options = Parse(arguments);
    if (!options.help.empty())
        return WriteResult(console, options.help);
    std::string const &job = options.words.front();
    try {
        return job == "list" ? List(options, console) : job == "get" ? Get(options, console) : Set(options, console);
    } catch (InputError const &error) {
        TellFailure(console, options.file, error.Line(), error.what());
        return kExitBadInput;
    }
}

} // namespace zvi::app
