#include "apps/zvi/contacts/ContactsOptions.h"

#include "apps/zvi/common/CommandLine.h"
#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/FileAccess.h"
#include "apps/zvi/common/NumberText.h"

#include <algorithm>
#include <filesystem>
#include <optional>

namespace zvi::app {

namespace {

constexpr char const *kExamples =
    "Examples:\n"
    "  zvi contacts a.stl b.stl --tolerance 0.01  where two bodies are within 0.01 of each other\n"
    "  zvi contacts parts/*.stl --tolerance 0     where any two of them touch\n"
    "  zvi contacts a.stl b.stl --tolerance 0.01 --obj contact.obj\n"
    "                                             and the patches of contact, to look at\n"
    "  zvi contacts --json assembly.stl --tolerance 0.1\n"
    "                                             the solids of one file; everything as JSON\n";

constexpr char const *kFooter =
    "FILE is an STL file, ASCII or binary; each solid in it is a body; '-' or no FILE reads one from standard input.\n"
    "Two triangles of different bodies are in contact when they are not farther apart than T, in the unit of the\n"
    "files, as their binary numbers have it: sides at 1 and 1.1 are a little more than 0.1 apart, so give T room.\n"
    "The smallest gap of two bodies is that of their pairs in contact; bodies without such a pair are not listed,\n"
    "however near they are beyond T. A patch is a set of triangles that hang together.\n"
    "\n"
    "Exit status: 0 done; 1 the input cannot be read or used; 2 wrong usage; 4 a fault of the program.\n";

double ToleranceOf(std::optional<std::string> const &word) {
    if (!word)
        throw UsageError("contacts needs --tolerance T, the distance up to which bodies are in contact");
    std::optional<double> const value = ParseNumber(*word);
    if (!value || *value < 0.0)
        throw UsageError("--tolerance needs a number of 0 or more, not '" + *word + "'");
    return *value;
}

void CheckFiles(ContactsOptions const &options, bool isObjGiven) {
    if (std::count(options.files.begin(), options.files.end(), "-") > 1)
        throw UsageError("standard input can be read once; give '-' once");
    if (!isObjGiven)
        return;
    if (options.objFile.empty() || options.objFile == "-")
        throw UsageError("--obj needs the name of a file; standard output is for the table");
    for (std::string const &file : options.files) {
        std::error_code error;
        if (file != "-" && std::filesystem::equivalent(PathOf(file), PathOf(options.objFile), error))
            throw UsageError("'" + options.objFile + "' is one of the bodies; name another file to write");
    }
}

} // namespace

ContactsOptions ParseContactsOptions(std::vector<std::string> const &arguments) {
    ContactsOptions options;
    std::optional<std::string> tolerance;
    std::optional<std::string> obj;
    bool noProgress = false;
    CommandLine line(
        "zvi contacts",
        "Finds where bodies touch or nearly touch: pairs of triangles, the smallest gap, patches of contact.");
    line.AddWords("FILE", "STL files; '-' or none: standard input");
    line.AddOption("--tolerance", tolerance, "T", "Largest distance of triangles in contact; needed");
    line.AddFlag("--json", options.json, "One JSON object instead of the table");
    line.AddOption("--obj", obj, "FILE", "Write the patches to this file as Wavefront OBJ");
    line.AddFlag("--no-progress", noProgress, "Do not show on a terminal what goes on");
    ParsedWords parsed = line.Parse(arguments, {kExamples, kFooter, false});
    options.help = parsed.help;
    if (!options.help.empty())
        return options;
    options.files = parsed.words.empty() ? std::vector<std::string>{"-"} : std::move(parsed.words);
    options.tolerance = ToleranceOf(tolerance);
    options.objFile = obj.value_or("");
    options.progress = !noProgress;
    CheckFiles(options, obj.has_value());
    return options;
}

} // namespace zvi::app
