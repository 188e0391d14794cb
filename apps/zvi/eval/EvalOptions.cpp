#include "apps/zvi/eval/EvalOptions.h"

#include "apps/zvi/common/CommandLine.h"
#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/UnitNumbers.h"
#include "apps/zvi/eval/EvalSession.h"

namespace zvi::app {

namespace {

constexpr char const *kExamples = "Examples:\n"
                                  "  zvi eval '1+2*3'                           7\n"
                                  "  zvi eval 'sqrt(4)+sin(30)'                 angles are in degrees\n"
                                  "  zvi eval --mode position '@10<45'          x y z of a polar position\n"
                                  "  zvi eval --mode nodes '1to9by2 20'         1 3 5 7 9 20\n"
                                  "  zvi eval --unit-system 1 '2m+30cm'         2.3, in metres\n"
                                  "  zvi eval --var h=3 '2*h'                   6\n"
                                  "  zvi eval                                   a prompt that keeps variables\n";

std::string Footer() {
    std::string text = "Modes:\n";
    for (EvalModeEntry const &entry : EvalModes()) {
        std::string const name = entry.name;
        text += "  " + name + std::string(10 - name.size(), ' ') + entry.summary + "\n";
    }
    return text + "\n"
                  "Blanks separate items, so '1 + 2' is three of them: write 1+2. Functions: log ln sqrt sin cos tan\n"
                  "asin acos atan exp deg rad sinh cosh abs; constant: pi. B and T stand for BY and TO.\n"
                  "'-' reads lines from standard input, as does no TEXT without a terminal; 'name=expression' sets a\n"
                  "variable there.\n"
                  "\n"
                  "Exit status: 0 done; 1 a text cannot be read; 2 wrong usage; 4 a fault of the program.\n";
}

struct RawOptions {
    std::string mode = "number";
    std::optional<std::string> unitSystem;
    std::vector<std::string> variables;
};

void Describe(CommandLine &line, EvalOptions &options, RawOptions &raw) {
    line.AddWords("TEXT", "What to read; several words are joined by blanks");
    line.AddOption("--mode", raw.mode, "MODE", "What the text is read as, see below (number)");
    line.AddOption("--unit-system", raw.unitSystem, "N",
                   "Read mm, cm, m, in, um behind numbers; the result is in the length unit of system 0 to 5");
    line.AddList("--var", raw.variables, "NAME=VALUE", "Give a variable a value; may be given again");
    line.AddFlag("--json", options.json, "One JSON object per text");
}

void AddVariable(EvalSettings &settings, std::string const &word) {
    std::string name;
    std::string text;
    if (!SplitAssignment(word, name, text))
        throw UsageError("--var needs NAME=VALUE, such as --var h=2.5, not '" + word + "'");
    std::string const why = WhyNoVariableName(name);
    if (!why.empty())
        throw UsageError("--var: " + why);
    double value = 0.0;
    std::string failure;
    if (!ReadVariable(text, settings, value, failure))
        throw UsageError("--var " + name + ": " + failure);
    if (!SetVariable(settings.variables, name, value))
        throw UsageError("--var: there are at most " + std::to_string(kMostVariables) + " variables");
}

void Interpret(EvalOptions &options, RawOptions const &raw, std::vector<std::string> const &words) {
    options.settings.mode = EvalModeNamed(raw.mode);
    if (raw.unitSystem)
        options.settings.unitSystem = UnitSystemNamed(*raw.unitSystem);
    if (options.settings.unitSystem && !KnowsUnits(options.settings.mode))
        throw UsageError("--unit-system goes with the modes number and integer, not with " + raw.mode);
    for (std::string const &word : raw.variables)
        AddVariable(options.settings, word);
    if (words.empty())
        return;
    options.text = words.front();
    for (std::size_t i = 1; i < words.size(); ++i)
        *options.text += " " + words[i];
}

} // namespace

EvalOptions ParseEvalOptions(std::vector<std::string> const &arguments) {
    EvalOptions options;
    RawOptions raw;
    CommandLine line(
        "zvi eval",
        "Reads what a user types into an input field - expressions, positions, grids, lists - and prints the\n"
        "numbers, one group per line.");
    Describe(line, options, raw);
    ParsedWords const parsed = line.Parse(arguments, {kExamples, Footer()});
    options.help = parsed.help;
    if (!options.help.empty())
        return options;
    Interpret(options, raw, parsed.words);
    return options;
}

} // namespace zvi::app
