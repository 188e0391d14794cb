#include "apps/zvi/messages/MessagesCommand.h"

#include "apps/zvi/common/CommandLine.h"
#include "apps/zvi/common/ExitStatus.h"
#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/NearestName.h"
#include "apps/zvi/common/WideText.h"
#include "apps/zvi/messages/Catalogue.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>

namespace zvi::app {

namespace {

constexpr char const *kExamples =
    "Examples:\n"
    "  zvi messages ko.msg                        every text with its key\n"
    "  zvi messages base.msg ko.msg --key HELLO   the text of one key, as a program shows it\n"
    "  zvi messages --strict ko.msg >check.txt    status 3 when something in the file is amiss\n"
    "  zvi messages --json ko.msg                 texts and remarks as JSON\n";

constexpr char const *kFooter =
    "A catalogue is a UTF-16 file with lines such as KEY = \"text\". Of a key that is defined twice the first text "
    "holds,\n"
    "also when it stands in an earlier file; what is passed over, and what ends a file early, is told with its line. "
    "In\n"
    "the list \\n, \\t and \\r stand for line ends and tabs. '-' or no FILE reads standard input.\n"
    "\n"
    "Exit status: 0 done; 1 a file cannot be read, or the key is in none; 2 wrong usage; 3 done, but --strict found\n"
    "something to remark; 4 a fault of the program.\n";

struct MessagesOptions {
    std::vector<std::string> files;
    std::optional<std::string> key;
    bool isStrict = false;
    bool json = false;
    std::string help;
};

MessagesOptions Parse(std::vector<std::string> const &arguments) {
    MessagesOptions options;
    CommandLine line("zvi messages", "The texts of message catalogues.");
    line.AddWords("FILE", "Catalogue files, in the order in which a program reads them");
    line.AddOption("--key", options.key, "KEY", "Show the text of this key alone");
    line.AddFlag("--strict", options.isStrict, "Status 3 when there is anything to remark");
    line.AddFlag("--json", options.json, "One JSON object");
    ParsedWords const parsed = line.Parse(arguments, {kExamples, kFooter, false});
    options.help = parsed.help;
    options.files = parsed.words;
    if (options.files.empty())
        options.files = {"-"};
    if (std::count(options.files.begin(), options.files.end(), "-") > 1)
        throw UsageError("standard input can be read once; give '-' once");
    return options;
}

/// A text on one line.
std::string OneLine(CString text) {
    text.Replace(L"\n", L"\\n");
    text.Replace(L"\t", L"\\t");
    text.Replace(L"\r", L"\\r");
    return Utf8Of(Printable(View(text)));
}

/// A text as it is; on a terminal without what would move its cursor.
std::string AsShown(CString const &text, bool onTerminal) {
    std::wstring shown(View(text));
    for (wchar_t &unit : shown)
        if (onTerminal && (unit < 0x20 || (unit >= 0x7F && unit < 0xA0)) && unit != L'\n' && unit != L'\t')
            unit = L'?';
    return Utf8Of(shown) + "\n";
}

std::string ListText(Catalogue const &catalogue) {
    std::string text;
    for (auto const &[key, message] : catalogue.messages)
        text += OneLine(key) + " = " + OneLine(message.text) + "\n";
    return text;
}

nlohmann::ordered_json PlaceJson(MessagePlace const &place) {
    return {{"file", place.file}, {"line", place.line}};
}

std::string JsonText(Catalogue const &catalogue, MessagesOptions const &options) {
    nlohmann::ordered_json messages = nlohmann::ordered_json::array();
    for (auto const &[key, message] : catalogue.messages)
        if (!options.key || WideOf(*options.key) == key)
            messages.push_back(
                {{"key", Utf8Of(key)}, {"text", Utf8Of(message.text)}, {"place", PlaceJson(message.place)}});
    nlohmann::ordered_json remarks = nlohmann::ordered_json::array();
    for (CatalogueRemark const &remark : catalogue.remarks) {
        nlohmann::ordered_json entry{{"place", PlaceJson(remark.place)}, {"remark", RemarkText(remark)}};
        if (remark.kind == CatalogueRemark::Kind::kAgain) {
            entry["key"] = Utf8Of(remark.key);
            entry["first"] = PlaceJson(remark.other);
        }
        remarks.push_back(entry);
    }
    return nlohmann::ordered_json{{"schema", 1}, {"messages", messages}, {"remarks", remarks}}.dump() + "\n";
}

/// The text of the key; throws InputError when it is in no file.
Message const &Find(Catalogue const &catalogue, std::string const &key) {
    auto const found = catalogue.messages.find(WideOf(key));
    if (found != catalogue.messages.end())
        return found->second;
    std::vector<std::string> known;
    for (auto const &[name, message] : catalogue.messages)
        known.push_back(Utf8Of(name));
    throw InputError(0, "no key '" + key + "'; " + DidYouMean(key, known, "without --key all are listed"));
}

void TellRemarks(Catalogue const &catalogue, MessagesOptions const &options, Console &console) {
    for (CatalogueRemark const &remark : catalogue.remarks) {
        bool const isOther =
            remark.kind == CatalogueRemark::Kind::kAgain && options.key && WideOf(*options.key) != remark.key;
        if (!isOther)
            TellFailure(console, remark.place.file, remark.place.line, RemarkText(remark));
    }
}

} // namespace

int RunMessages(std::vector<std::string> const &arguments, Console &console) {
    MessagesOptions const options = Parse(arguments);
    if (!options.help.empty())
        return WriteResult(console, options.help);
    if (options.files.front() == "-")
        TellWaiting(console, "a catalogue", "messages");
    Catalogue const catalogue = ReadCatalogue(options.files, console.in);
    TellRemarks(catalogue, options, console);
    std::string shown;
    if (options.key)
        shown = AsShown(Find(catalogue, *options.key).text, console.outIsTerminal);
    int const status = WriteResult(console, options.json  ? JsonText(catalogue, options)
                                            : options.key ? shown
                                                          : ListText(catalogue));
    return status == kExitDone && options.isStrict && !catalogue.remarks.empty() ? kExitLeftOver : status;
}

} // namespace zvi::app
