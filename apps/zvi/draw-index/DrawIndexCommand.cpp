#include "apps/zvi/draw-index/DrawIndexCommand.h"

#include "apps/zvi/common/ExitStatus.h"
#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/FileAccess.h"
#include "apps/zvi/common/OutputFile.h"
#include "apps/zvi/common/ReadWhole.h"
#include "apps/zvi/common/TextDecoding.h"
#include "apps/zvi/domains/input/ReadDrawing.h"
#include "apps/zvi/draw-index/CurveIndex.h"
#include "apps/zvi/draw-index/DrawIndexOptions.h"
#include "apps/zvi/draw-index/IndexPicture.h"

#include <cmath>

namespace zvi::app {

namespace {

std::string ShownName(std::string const &file) {
    return file == "-" ? "standard input" : file;
}

/// Whether the root region has finite sides, and there is one.
bool CanBeDrawn(lib::MQuadTree const &tree) {
    if (!tree.GetRoot())
        return false;
    lib::MQuadMBR2D const &region = tree.GetRoot()->GetRegion();
    return std::isfinite(region.maxX - region.minX) && std::isfinite(region.maxY - region.minY);
}

std::string TotalsText(IndexTotals const &totals) {
    std::string text;
    auto const add = [&text](char const *what, std::size_t count) { text += what + std::to_string(count) + "\n"; };
    add("curves                 ", totals.inLeaves + totals.inInner);
    add("  across mid lines     ", totals.inInner);
    add("nodes                  ", totals.nodes);
    add("  leaves               ", totals.leaves);
    add("levels below the root  ", totals.depth);
    add("most curves in a leaf  ", totals.largestLeaf);
    return text;
}

int DrawIndex(Console &console, DrawIndexOptions const &options) {
    Progress progress(console, options.progress);
    if (options.file == "-" && console.inIsTerminal)
        TellWaiting(console, "curve text", "draw-index");
    else
        progress.Step("reading " + ShownName(options.file));
    DrawingInput const input = ReadDrawing(options.file, ReadWhole(options.file, console.in), options.reading);
    if (input.curves.empty())
        throw InputError(0, "holds no curves to index; 'zvi domains' tells what was left out, and why");
    progress.Step("indexing " + std::to_string(input.curves.size()) + " curves");
    auto const tree = MakeCurveIndex(input.curves, options.capacity);
    if (!CanBeDrawn(*tree))
        throw InputError(0, "has coordinates that are too large for a picture");
    IndexTotals const totals = TotalsOf(*tree);
    progress.Step("writing");
    std::string const title = options.file == "-" ? ShownName("-") : NameOf(PathOf(options.file).filename());
    std::string const failure = WriteWholeFile(options.svgFile, IndexPicture(DecodeDxfText(title, ""), input, *tree));
    progress.Clear();
    if (!failure.empty()) {
        TellFailure(console, options.svgFile, 0, failure);
        return kExitBadInput;
    }
    std::size_t const leftOut = input.curves.size() - totals.inLeaves - totals.inInner;
    if (leftOut != 0)
        TellFailure(console, ShownName(options.file), 0,
                    std::to_string(leftOut) + " of " + std::to_string(input.curves.size()) +
                        " curves left out: their coordinates are too large for the index");
    return WriteResult(console, TotalsText(totals));
}

} // namespace

int RunDrawIndex(std::vector<std::string> const &arguments, Console &console) {
    DrawIndexOptions const options = ParseDrawIndexOptions(arguments);
    if (!options.help.empty())
        return WriteResult(console, options.help);
    try {
        return DrawIndex(console, options);
    } catch (InputError const &error) {
        TellFailure(console, ShownName(options.file), error.Line(), error.what());
        return kExitBadInput;
    }
}

} // namespace zvi::app
