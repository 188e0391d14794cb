#include "apps/zvi/text/TextCommand.h"

#include "apps/zvi/common/CodePage.h"
#include "apps/zvi/common/CommandLine.h"
#include "apps/zvi/common/ExitStatus.h"
#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/NearestName.h"
#include "apps/zvi/common/OutputFile.h"
#include "apps/zvi/common/ReadWhole.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/text/Encoding.h"
#include "apps/zvi/text/TextLines.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <optional>
#include <string_view>
#include <utility>

namespace zvi::app {

namespace {

constexpr char const *kExamples =
    "Examples:\n"
    "  zvi text notes.txt                         its encoding, its lines, and the text itself\n"
    "  zvi text --to utf-16 --out ko.msg ko.txt   a catalogue written in an editor of UTF-8\n"
    "  zvi text --to utf-8 ko.msg | grep HELLO    the other way round\n"
    "  zvi text --from CP949 old.txt              a file of another code page\n"
    "  zvi text --json notes.txt                  encoding and lines as JSON\n";

constexpr char const *kFooter =
    "Encodings: ASCII, UTF-8, UTF-16 and UTF-32 in either order of bytes, by the mark at the start or by what the\n"
    "file holds; anything else by its --from. UTF-16 is written with a mark and the lower byte first, UTF-8 without a\n"
    "mark; line ends stay as they are. Without --to the text is shown: control characters by their pictures.\n"
    "'-' or no FILE reads standard input.\n"
    "\n"
    "Exit status: 0 done; 1 the file cannot be read, or not converted without loss; 2 wrong usage; 4 a fault of the\n"
    "program.\n";

struct TextOptions {
    std::string file = "-";
    std::string to;
    std::string from;
    std::string out;
    bool isLossy = false;
    bool json = false;
    std::string help;
};

void Check(TextOptions const &options) {
    std::vector<std::string> const targets = {"utf-8", "utf-16"};
    if (!options.to.empty() && std::find(targets.begin(), targets.end(), options.to) == targets.end())
        throw UsageError("unknown encoding '" + options.to + "'; " +
                         DidYouMean(options.to, targets, "--to takes utf-8 and utf-16"));
    if (options.to.empty() && (options.isLossy || !options.out.empty()))
        throw UsageError(std::string(options.isLossy ? "--lossy" : "--out") +
                         " goes with --to; add --to utf-8 or --to utf-16");
    if (!options.to.empty() && options.json)
        throw UsageError("--json tells what the file is, --to converts it; give one of them");
}

TextOptions Parse(std::vector<std::string> const &arguments) {
    TextOptions options;
    CommandLine line("zvi text", "The encoding of a text file, its lines, and its text in another encoding.");
    line.AddWord("FILE", "The text file");
    line.AddOption("--to", options.to, "ENCODING", "Convert to utf-8 or utf-16");
    line.AddOption("--out", options.out, "FILE", "Write to a file instead of standard output");
    line.AddOption("--from", options.from, "PAGE", "The code page of the file, such as CP949");
    line.AddFlag("--lossy", options.isLossy, "Put U+FFFD in place of what is no character");
    line.AddFlag("--json", options.json, "One JSON object with what the file is, without the text");
    ParsedWords const parsed = line.Parse(arguments, {kExamples, kFooter, false});
    options.help = parsed.help;
    if (!options.help.empty())
        return options;
    if (parsed.words.size() > 1)
        throw UsageError("text takes one FILE");
    if (!parsed.words.empty())
        options.file = parsed.words.front();
    options.to = Lowered(options.to);
    Check(options);
    return options;
}

/// A text with what is known of its file.
struct ReadText {
    std::string encoding;
    bool hasMark = false;
    bool isUnknown = false;
    DecodedText decoded;
};

/// A text that a converter gave, which has put U+FFFD where it found no character.
DecodedText Converted(std::string text) {
    constexpr std::string_view kReplacement = "\xEF\xBF\xBD";
    DecodedText decoded{std::move(text)};
    for (std::size_t at = 0; (at = decoded.text.find(kReplacement, at)) != std::string::npos; at += kReplacement.size())
        if (decoded.broken++ == 0)
            decoded.firstBrokenLine =
                1 + static_cast<std::size_t>(
                        std::count(decoded.text.begin(), decoded.text.begin() + static_cast<std::ptrdiff_t>(at), '\n'));
    return decoded;
}

ReadText Read(std::string const &bytes, TextOptions const &options) {
    if (!options.from.empty()) {
        std::optional<std::string> utf8 = FromCodePage(bytes, options.from);
        if (!utf8)
            throw UsageError("--from: no code page '" + options.from + "' here; write its number as CP949");
        return {options.from, false, false, Converted(std::move(*utf8))};
    }
    FoundEncoding const found = FindEncoding(bytes);
    return {EncodingName(found.encoding), found.hasMark, found.encoding == Encoding::kUnknown, Decode(bytes, found)};
}

std::string Summary(ReadText const &read) {
    std::string const mark = read.hasMark ? ", with its mark" : "";
    return read.encoding + mark + "; " + FactsText(FactsOf(read.decoded.text));
}

/// What is wrong with a broken text, and what to try.
std::string BrokenText(ReadText const &read) {
    std::string const places =
        read.decoded.broken == 1 ? "1 place is" : std::to_string(read.decoded.broken) + " places are";
    return places + " no character, the first one here" +
           (read.isUnknown ? "; name the file's code page with --from, such as --from CP949" : "");
}

std::string JsonText(ReadText const &read) {
    LineFacts const facts = FactsOf(read.decoded.text);
    return nlohmann::ordered_json{{"schema", 1},
                                  {"encoding", read.encoding},
                                  {"mark", read.hasMark},
                                  {"lines", facts.lines},
                                  {"lf", facts.lineFeeds},
                                  {"crlf", facts.carriageReturnLineFeeds},
                                  {"cr", facts.carriageReturns},
                                  {"lastLineEnded", facts.lastIsEnded},
                                  {"broken", read.decoded.broken},
                                  {"firstBrokenLine", read.decoded.firstBrokenLine}}
               .dump() +
           "\n";
}

int Convert(ReadText const &read, TextOptions const &options, Console &console) {
    if (read.decoded.broken > 0 && !options.isLossy)
        throw InputError(read.decoded.firstBrokenLine,
                         BrokenText(read) + (read.isUnknown ? "" : "; --lossy puts U+FFFD in their place"));
    std::string const &text = read.decoded.text;
    std::string const converted = options.to == "utf-16" ? Utf16Bytes(text) : text;
    if (options.out.empty())
        return WriteResult(console, converted);
    std::string const failure = WriteWholeFile(options.out, converted);
    if (failure.empty())
        return kExitDone;
    TellFailure(console, options.out, 0, failure);
    return kExitBadInput;
}

int Show(ReadText const &read, std::string const &name, Console &console) {
    console.err << "zvi: " << name << ": " << Summary(read) << "\n";
    if (read.decoded.broken > 0)
        TellFailure(console, name, read.decoded.firstBrokenLine, BrokenText(read));
    return WriteResult(console, Shown(read.decoded.text));
}

} // namespace

int RunText(std::vector<std::string> const &arguments, Console &console) {
    TextOptions const options = Parse(arguments);
    if (!options.help.empty())
        return WriteResult(console, options.help);
    std::string const name = options.file == "-" ? "standard input" : options.file;
    if (options.file == "-")
        TellWaiting(console, "text", "text");
    try {
        ReadText const read = Read(ReadWhole(options.file, console.in), options);
        if (!options.to.empty())
            return Convert(read, options, console);
        return options.json ? WriteResult(console, JsonText(read)) : Show(read, name, console);
    } catch (InputError const &error) {
        TellFailure(console, name, error.Line(), error.what());
        return kExitBadInput;
    }
}

} // namespace zvi::app
