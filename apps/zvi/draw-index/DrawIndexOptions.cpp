#include "apps/zvi/draw-index/DrawIndexOptions.h"

#include "apps/zvi/common/CommandLine.h"
#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/FileAccess.h"
#include "apps/zvi/common/NumberText.h"

#include <cmath>
#include <filesystem>
#include <optional>
#include <system_error>

namespace zvi::app {

namespace {

namespace fs = std::filesystem;

constexpr char const *kExamples =
    "Examples:\n"
    "  zvi draw-index plan.dxf --svg index.svg                 the quadtree of all curves\n"
    "  zvi draw-index plan.dxf --svg index.svg --capacity 128  with leaves as large as by default in the library\n"
    "  zvi draw-index --layer WALLS plan.dxf --svg index.svg   of the curves of one layer\n";

constexpr char const *kFooter =
    "FILE is an ASCII DXF drawing (.dxf) or curve text (.curves, see 'zvi domains -h'); '-' or no FILE reads either "
    "from\n"
    "standard input. The picture shows the regions of the leaves, the darker the more curves they hold, and the "
    "curves:\n"
    "those that cross a mid line, and so stay in an inner node, in a colour of their own.\n"
    "\n"
    "Exit status: 0 done; 1 the input cannot be read or used; 2 wrong usage; 4 a fault of the program.\n";

/// Largest capacity: a leaf that never splits.
constexpr double kLargestCapacity = 1e9;

int Capacity(std::string const &word) {
    std::optional<double> const value = ParseNumber(word);
    if (!value || *value < 1.0 || *value > kLargestCapacity || *value != std::floor(*value))
        throw UsageError("--capacity needs a whole number from 1 to 1000000000, not '" + word + "'");
    return static_cast<int>(*value);
}

void CheckOutput(DrawIndexOptions const &options) {
    if (options.svgFile.empty() || options.svgFile == "-")
        throw UsageError("name the file of the picture: --svg FILE");
    std::error_code error;
    if (options.file != "-" && fs::equivalent(PathOf(options.svgFile), PathOf(options.file), error))
        throw UsageError("'" + options.svgFile + "' is the drawing itself; name another file to write");
}

} // namespace

DrawIndexOptions ParseDrawIndexOptions(std::vector<std::string> const &arguments) {
    DrawIndexOptions options;
    std::optional<std::string> capacity;
    bool noProgress = false;
    CommandLine line("zvi draw-index",
                     "Draws the quadtree that indexes the curves of a drawing by their bounding rectangles.");
    line.AddWord("FILE", "The drawing; '-' or none: standard input");
    line.AddOption("--svg", options.svgFile, "FILE", "Draw to this file");
    line.AddOption("--capacity", capacity, "N", "Curves that a leaf holds before it splits (8)");
    line.AddList("--layer", options.reading.layers, "NAME",
                 "Take this layer alone, also when it is off or frozen; may be given again");
    line.AddFlag("--no-progress", noProgress, "Do not show on a terminal what goes on");
    ParsedWords const parsed = line.Parse(arguments, {kExamples, kFooter, false});
    options.help = parsed.help;
    if (!options.help.empty())
        return options;
    options.file = DrawingNamed(parsed.words);
    if (capacity)
        options.capacity = Capacity(*capacity);
    options.progress = !noProgress;
    CheckOutput(options);
    return options;
}

} // namespace zvi::app
