#include "apps/zvi/domains/DomainsOptions.h"

#include "apps/zvi/common/CommandLine.h"
#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/FileAccess.h"
#include "apps/zvi/common/NumberText.h"

#include <filesystem>
#include <optional>
#include <system_error>

namespace zvi::app {

namespace {

namespace fs = std::filesystem;

constexpr char const *kExamples =
    "Examples:\n"
    "  zvi domains plan.dxf                       table of the closed domains\n"
    "  zvi domains --svg plan.svg plan.dxf        and a picture of them\n"
    "  zvi domains --layers plan.dxf              its layers, and how much is on each\n"
    "  zvi domains --layer 'WALL*' --layer DOORS --strict plan.dxf\n"
    "                                             some layers; exit status 3 if anything is left over\n"
    "  zvi domains --join 0.5 --json plan.dxf     close gaps up to half a unit; everything as JSON\n"
    "  printf 'circle 1 0 0 5\\ncircle 2 0 0 2\\n' | zvi domains\n"
    "                                             curve text from standard input\n";

constexpr char const *kFooter =
    "FILE is an ASCII DXF drawing (.dxf) or curve text (.curves); '-' or no FILE reads curve text, or DXF, from\n"
    "standard input. Curve text has one curve per line, and '#' starts a comment:\n"
    "  line ID x1 y1 x2 y2\n"
    "  arc ID cx cy r startDeg endDeg             counter-clockwise\n"
    "  arc3 ID x1 y1 xm ym x2 y2                  through the middle point\n"
    "  circle ID cx cy r\n"
    "\n"
    "Exit status: 0 done; 1 the input cannot be read or used; 2 wrong usage; 3 done, but --strict found something\n"
    "left over; 4 a fault of the program.\n";

/// The words of the command line before they are given a meaning.
struct RawOptions {
    std::vector<std::string> layers;
    std::optional<std::string> join;
    std::optional<std::string> chordError;
    std::optional<std::string> svg;
    std::optional<std::string> dxf;
    std::optional<std::string> threads;
    bool noSplit = false;
    bool noProgress = false;
};

void Describe(CommandLine &line, DomainsOptions &options, RawOptions &raw) {
    line.AddWord("FILE", "The drawing; '-' or none: standard input");
    line.AddList(
        "--layer", raw.layers, "NAME",
        "Take this layer alone, also when it is off or frozen; '*' and '?' in it stand for any characters and for "
        "one, capitals do not count; may be given again");
    line.AddFlag("--layers", options.listLayers, "List the layers with what is on them, and do no more");
    line.AddOption("--join", raw.join, "T",
                   "Join ends nearer than this, in drawing units (a millionth of the drawing's size); 0: as written");
    line.AddOption(
        "--chord-error", raw.chordError, "E",
        "Largest distance of a flattened curve from its chords, in drawing units (a quarter of --join or of its "
        "default, whichever is less, and at most 1e-4 of the curve's size)");
    line.AddFlag("--no-split", raw.noSplit, "Do not cut curves where they meet");
    line.AddFlag("--keep-duplicates", options.drawing.keepDuplicates, "Keep curves that lie on one another");
    line.AddFlag("--strict", options.strict, "Exit status 3 when something was left over");
    line.AddFlag("--leftovers", options.allLeftovers, "List everything that is left over, not only the first ten");
    line.AddFlag("--json", options.json, "One JSON object instead of the table");
    line.AddOption("--svg", raw.svg, "FILE", "Draw the domains to this file");
    line.AddOption("--dxf", raw.dxf, "FILE",
                   "Write the domains to this file as closed polylines, on the layers of their borders");
    line.AddFlag("--dxf-cut", options.dxfForm.cut, "There the cut pieces of the borders instead, each once");
    line.AddFlag("--dxf-leftovers", options.dxfForm.leftovers,
                 std::string("There what is left over as well, on the layer ") + kLeftoverLayer);
    line.AddOption("--threads", raw.threads, "N",
                   "Let so many threads work on a large drawing; 0: as many as there are (1)");
    line.AddFlag("--no-progress", raw.noProgress, "Do not show on a terminal what goes on");
    line.AddOption("--color", options.color, "WHEN", "Colour: auto, always, never (auto)");
}

double Distance(std::string const &option, std::string const &word, bool zeroAllowed) {
    std::optional<double> const value = ParseNumber(word);
    if (!value || *value < 0.0 || (*value == 0.0 && !zeroAllowed))
        throw UsageError(option + " needs a distance in drawing units" + (zeroAllowed ? ", 0 or more" : " above 0") +
                         ", not '" + word + "'");
    return *value;
}

int Threads(std::string const &word) {
    constexpr long long kMost = 256;
    std::optional<long long> const count = ParseInteger(word);
    if (!count || *count < 0 || *count > kMost)
        throw UsageError("--threads needs a number from 0 to " + std::to_string(kMost) + ", not '" + word + "'");
    return static_cast<int>(*count);
}

void Interpret(DomainsOptions &options, RawOptions const &raw) {
    if (raw.join)
        options.reading.join = Distance("--join", *raw.join, true);
    if (raw.chordError)
        options.reading.chordError.absolute = Distance("--chord-error", *raw.chordError, false);
    options.drawing.split = !raw.noSplit;
    if (raw.threads)
        options.drawing.threads = Threads(*raw.threads);
    options.progress = !raw.noProgress;
    options.reading.layers = raw.layers;
    if (options.listLayers && raw.layers.empty())
        options.reading.layers = {"*"};
    options.svgFile = raw.svg.value_or("");
    options.dxfFile = raw.dxf.value_or("");
    if (options.color != "auto" && options.color != "always" && options.color != "never")
        throw UsageError("--color is auto, always or never, not '" + options.color + "'");
}

/// Whether two names are those of one file, which need not be there yet. An empty name is none.
bool SameFile(fs::path const &a, fs::path const &b) {
    if (a.empty() || b.empty())
        return false;
    std::error_code error;
    auto const whole = [&error](fs::path const &name) {
        return fs::weakly_canonical(fs::absolute(name, error), error);
    };
    return fs::equivalent(a, b, error) || whole(a) == whole(b);
}

void CheckOutputs(DomainsOptions const &options, RawOptions const &raw) {
    for (std::optional<std::string> const &given : {raw.svg, raw.dxf}) {
        if (given && (given->empty() || *given == "-"))
            throw UsageError("--svg and --dxf need the name of a file; standard output is for the table");
    }
    for (std::string const &output : {options.svgFile, options.dxfFile}) {
        std::error_code error;
        bool const regular = fs::is_regular_file(PathOf(output), error);
        if (options.file != "-" && regular && SameFile(PathOf(output), PathOf(options.file)))
            throw UsageError("'" + output + "' is the drawing itself; name another file to write");
    }
    if (options.listLayers && (raw.svg || raw.dxf))
        throw UsageError("--layers lists the layers and does no more; leave out --svg and --dxf");
    if (!raw.dxf && (options.dxfForm.cut || options.dxfForm.leftovers))
        throw UsageError("--dxf-cut and --dxf-leftovers say what --dxf writes; add --dxf FILE");
    if (SameFile(PathOf(options.svgFile), PathOf(options.dxfFile)))
        throw UsageError("--svg and --dxf name the same file; give each its own");
}

} // namespace

DomainsOptions ParseDomainsOptions(std::vector<std::string> const &arguments) {
    DomainsOptions options;
    RawOptions raw;
    CommandLine line(
        "zvi domains",
        "Finds the closed domains of a drawing: ends that nearly meet are joined, curves are cut where they\n"
        "cross, duplicates are dropped, and what bounds nothing is told with its reason.");
    Describe(line, options, raw);
    ParsedWords const parsed = line.Parse(arguments, {kExamples, kFooter, false});
    options.help = parsed.help;
    if (!options.help.empty())
        return options;
    options.file = DrawingNamed(parsed.words);
    Interpret(options, raw);
    CheckOutputs(options, raw);
    return options;
}

} // namespace zvi::app
