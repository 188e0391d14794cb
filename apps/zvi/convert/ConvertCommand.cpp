#include "apps/zvi/convert/ConvertCommand.h"

#include "apps/zvi/common/CommandLine.h"
#include "apps/zvi/common/ExitStatus.h"
#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/common/UnitNumbers.h"
#include "apps/zvi/common/WideText.h"
#include "apps/zvi/common/typed/Evaluate.h"
#include "apps/zvi/eval/hints/Diagnose.h"
#include "apps/zvi/units/UnitCatalogue.h"

#include <nlohmann/json.hpp>

#include <algorithm>
#include <cmath>

namespace zvi::app {

namespace {

constexpr char const *kExamples = "Examples:\n"
                                  "  zvi convert 12.5 kN/m^2 kgf/cm^2           0.127464526622241 kgf/cm^2\n"
                                  "  zvi convert '3*25' mm in                   VALUE is an expression\n"
                                  "  zvi convert 1 kN·m kgf*cm                  raised dots and digits are read, too\n"
                                  "  zvi convert --json 20 MPa kips/in^2        everything as JSON\n";

constexpr char const *kFooter =
    "FROM and TO are labels as 'zvi units' lists them, with any of the base units: kgf tonf N kN lbf kips;\n"
    "mm cm m in ft um; sec min hr day; cal kcal J Btu kJ. Also Pa kPa MPa psi ksi, s and h.\n"
    "\n"
    "Exit status: 0 done; 1 a label or the value cannot be read; 2 wrong usage; 4 a fault of the program.\n";

/// Digits of a result for people: the factors bear no more.
constexpr int kShownDigits = 15;

struct ConvertOptions {
    std::string value;
    std::string from;
    std::string to;
    std::optional<int> kind;
    bool json = false;
    std::string help;
};

ConvertOptions Parse(std::vector<std::string> const &arguments) {
    ConvertOptions options;
    std::optional<std::string> kind;
    std::vector<std::string> shown;
    CLI::App app("Converts a value from one unit label to another.");
    app.name("zvi convert");
    app.set_help_flag("-h,--help", "This text");
    app.add_option("VALUE", shown, "A number or an expression")->type_name("")->expected(1);
    app.add_option("FROM", shown, "The unit label of the value")->type_name("")->expected(1);
    app.add_option("TO", shown, "The unit label to convert to")->type_name("")->expected(1);
    app.add_option("--kind", kind, "The kind of quantity, where the labels belong to several")->type_name("K");
    app.add_flag("--json", options.json, "One JSON object");
    ParsedWords parsed = ParseCommandLine(app, arguments, {kExamples, kFooter});
    options.help = parsed.help;
    if (!options.help.empty())
        return options;
    std::vector<std::string> &words = parsed.words;
    if (words.size() > 3 && SameNoCase(words[words.size() - 2], "to"))
        words.erase(words.end() - 2);
    if (words.size() < 3)
        throw UsageError("convert needs VALUE FROM TO, such as 12.5 kN/m^2 kgf/cm^2");
    options.to = words.back();
    options.from = words[words.size() - 2];
    for (std::size_t i = 0; i + 2 < words.size(); ++i)
        options.value += (i == 0 ? "" : " ") + words[i];
    if (Trimmed(options.value).empty())
        throw UsageError("VALUE is empty; convert needs VALUE FROM TO, such as 12.5 kN/m^2 kgf/cm^2");
    options.kind = kind ? std::optional(UnitKindNamed(*kind)) : std::nullopt;
    return options;
}

double ReadValue(std::string const &text) {
    CString const typed = WideOf(text);
    EvalOutcome const outcome = Evaluate(typed, {});
    if (!outcome.parsed) {
        Diagnosis diagnosis = Diagnose(typed, {}, outcome);
        // Hints that name an option mean those of `zvi eval`.
        if (diagnosis.hint.find("--") != std::string::npos)
            diagnosis.hint = "VALUE is one number or expression, such as 3*25";
        throw InputError(0, DiagnosisText(typed, diagnosis));
    }
    return outcome.groups[0][0];
}

bool Agree(double a, double b) {
    // The same factor by another order of operations.
    constexpr double kRelative = 1e-14;
    return a == b || std::fabs(a - b) <= kRelative * std::max(std::fabs(a), std::fabs(b));
}

[[noreturn]] void RefuseAmbiguity(std::vector<UnitConversion> const &conversions) {
    std::string text = "the labels belong to several kinds of quantity that differ; choose one with --kind:";
    for (UnitConversion const &conversion : conversions)
        text += Joined("\n  --kind ", std::to_string(conversion.from.kind), ": ",
                       ShortNumber(conversion.value, kShownDigits), " ", conversion.to.label);
    throw InputError(0, text);
}

std::string ConversionJson(double value, std::vector<UnitConversion> const &conversions) {
    UnitConversion const &first = conversions.front();
    nlohmann::ordered_json kinds = nlohmann::ordered_json::array();
    for (UnitConversion const &conversion : conversions)
        kinds.push_back(conversion.from.kind);
    nlohmann::ordered_json json = {{"schema", 1},
                                   {"value", value},
                                   {"from", first.from.label},
                                   {"to", first.to.label},
                                   {"result", first.value},
                                   {"fromFactor", first.from.factor},
                                   {"toFactor", first.to.factor},
                                   {"kinds", kinds}};
    json["ignoredBase"] =
        first.ignoredBase.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(first.ignoredBase);
    return json.dump() + "\n";
}

} // namespace

int RunConvert(std::vector<std::string> const &arguments, Console &console) {
    ConvertOptions const options = Parse(arguments);
    if (!options.help.empty())
        return WriteResult(console, options.help);
    double const value = ReadValue(options.value);
    UnitCatalogue const catalogue;
    std::vector<UnitConversion> const conversions =
        FindConversions(catalogue, value, options.from, options.to, options.kind);
    UnitConversion const &first = conversions.front();
    if (!std::all_of(conversions.begin(), conversions.end(),
                     [&first](UnitConversion const &other) { return Agree(first.value, other.value); }))
        RefuseAmbiguity(conversions);
    if (!first.ignoredBase.empty())
        console.err << "zvi: note: the factor of kind " << first.from.kind << " does not follow the unit of "
                    << first.ignoredBase << "\n";
    return WriteResult(console, options.json
                                    ? ConversionJson(value, conversions)
                                    : Joined(ShortNumber(first.value, kShownDigits), " ", first.to.label, "\n"));
}

} // namespace zvi::app
