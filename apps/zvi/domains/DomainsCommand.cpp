#include "apps/zvi/domains/DomainsCommand.h"

#include "apps/zvi/common/ExitStatus.h"
#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/FileAccess.h"
#include "apps/zvi/common/OutputFile.h"
#include "apps/zvi/common/ReadWhole.h"
#include "apps/zvi/common/Terminal.h"
#include "apps/zvi/common/TextDecoding.h"
#include "apps/zvi/domains/DomainsOptions.h"
#include "apps/zvi/domains/input/ReadDrawing.h"
#include "apps/zvi/domains/output/DomainJson.h"
#include "apps/zvi/domains/output/DxfDrawing.h"
#include "apps/zvi/domains/output/LayerList.h"
#include "apps/zvi/domains/output/Report.h"
#include "apps/zvi/domains/output/SvgPicture.h"

#include "zvi/drawing/MakeDrawingDomains.h"

namespace zvi::app {

namespace {

std::string ShownName(std::string const &file) {
    return file == "-" ? "standard input" : file;
}

/// Writes one output file; false, with a message, when it cannot be written.
bool WriteOutput(Console &console, std::string const &file, std::string const &content) {
    std::string const failure = WriteWholeFile(file, content);
    if (!failure.empty())
        TellFailure(console, file, 0, failure);
    return failure.empty();
}

bool WriteFiles(Console &console, DomainsOptions const &options, DrawingInput const &input,
                lib::DrawingResult const &result) {
    std::string const title = options.file == "-" ? ShownName("-") : NameOf(PathOf(options.file).filename());
    std::string const readable = DecodeDxfText(title, "");
    bool const drawn =
        options.svgFile.empty() || WriteOutput(console, options.svgFile, SvgPicture(readable, input, result));
    return drawn && (options.dxfFile.empty() ||
                     WriteOutput(console, options.dxfFile, DxfDrawing(input, result, options.dxfForm)));
}

/// What stands in front of the lines below the name of the file.
constexpr char const *kUnderName = "     ";

int Report(Console &console, DomainsOptions const &options, DrawingInput const &input, lib::DrawingResult const &result,
           double joinTolerance) {
    // The name stands in front of the first line alone.
    std::string before = "zvi: " + ShownName(options.file) + ": ";
    for (std::string const &line : Summary(input, result, joinTolerance, options.allLeftovers)) {
        console.err << before << line << "\n";
        before = kUnderName;
    }
    console.err.flush();
    bool const color = WantsColor(options.color, console.outIsTerminal);
    int const written =
        WriteResult(console, options.json ? DomainJson(input, result, joinTolerance) : DomainTable(result, color));
    bool const leftOver = options.strict && HasLeftovers(input, result);
    return written == kExitDone && leftOver ? int(kExitLeftOver) : written;
}

/// False, with a message, when an output file could not be written: better now than after the work.
bool CanWrite(Console &console, std::string const &file) {
    std::string const failure = file.empty() ? "" : WhyNotWritable(file);
    if (!failure.empty())
        TellFailure(console, file, 0, failure);
    return failure.empty();
}

int FindDomains(Console &console, DomainsOptions const &options) {
    if (!CanWrite(console, options.svgFile) || !CanWrite(console, options.dxfFile))
        return kExitBadInput;
    Progress progress(console, options.progress);
    if (options.file == "-" && console.inIsTerminal)
        TellWaiting(console, "curve text", "domains");
    else
        progress.Step("reading " + ShownName(options.file));
    DrawingInput const input = ReadDrawing(options.file, ReadWhole(options.file, console.in), options.reading);
    if (options.listLayers) {
        progress.Clear();
        bool const color = WantsColor(options.color, console.outIsTerminal);
        return WriteResult(console, options.json ? LayerJson(input) : LayerTable(input, color));
    }
    auto const found = [&](double done) {
        progress.Step("finding the domains of " + std::to_string(input.curves.size()) + " curves, " +
                      std::to_string(static_cast<int>(100.0 * done)) + " %");
    };
    found(0.0);
    lib::DrawingOptions drawing = options.drawing;
    drawing.joinTolerance = options.reading.join.value_or(SuggestedJoin(input));
    lib::DrawingResult const result = lib::MakeDrawingDomains(input.curves, drawing, found);
    progress.Step("writing");
    bool const written = WriteFiles(console, options, input, result);
    progress.Clear();
    return written ? Report(console, options, input, result, drawing.joinTolerance) : int(kExitBadInput);
}

} // namespace

int RunDomains(std::vector<std::string> const &arguments, Console &console) {
    DomainsOptions const options = ParseDomainsOptions(arguments);
    if (!options.help.empty())
        return WriteResult(console, options.help);
    try {
        return FindDomains(console, options);
    } catch (InputError const &error) {
        TellFailure(console, ShownName(options.file), error.Line(), error.what());
        return kExitBadInput;
    }
}

} // namespace zvi::app
