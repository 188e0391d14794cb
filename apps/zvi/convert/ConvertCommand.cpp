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
#include "apps/zvi/convert/Conversion.h"
#include "apps/zvi/eval/hints/Diagnose.h"

#include "zvi/units/UnitKinds.h"

#include <nlohmann/json.hpp>

#include <cmath>

namespace zvi::app {

namespace {

constexpr char const *kExamples = "Examples:\n"
                                  "  zvi convert 12.5 kN/m^2 kgf/cm^2           0.127464526622241 kgf/cm^2\n"
                                  "  zvi convert '3*25' mm in                   VALUE is an expression\n"
                                  "  zvi convert 1 kN·m kgf*cm                  raised dots and digits are read, too\n"
                                  "  zvi convert --json 20 MPa kips/in^2        everything as JSON\n";

constexpr char const *kFooter =
    "FROM and TO are products of units: km m cm mm um in ft yd mile; t ton kg g lbm lb slug; N kN MN kgf tonf tf lbf\n"
    "kips; Pa hPa kPa MPa GPa bar mbar atm psi ksi psf ksf pcf; J kJ MJ kWh cal kcal Btu W kW MW hp; sec ms min hr "
    "day\n"
    "Hz kHz rpm Gal; [\u00B0C] K \u00B0F (differences); rad deg rev; L mol A V ohm. s and h are read too, and powers "
    "as in mm2.\n"
    "The factor is that of the units' definitions: lbf 4.4482216152605 N, Btu 1055.05585262 J, cal 4.1868 J. Where "
    "the\n"
    "library's own factor of the kind of quantity gives another number, a note tells it.\n"
    "\n"
    "Exit status: 0 done; 1 a label or the value cannot be read; 2 wrong usage; 4 a fault of the program.\n";

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
    CommandLine line("zvi convert", "Converts a value from one unit label to another.");
    line.AddWord("VALUE", "A number or an expression");
    line.AddWord("FROM", "The unit label of the value");
    line.AddWord("TO", "The unit label to convert to");
    line.AddOption("--kind", kind, "K", "A kind of quantity that must have both labels: its number or name");
    line.AddFlag("--json", options.json, "One JSON object");
    ParsedWords parsed = line.Parse(arguments, {kExamples, kFooter});
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

std::string ConversionJson(double value, Conversion const &conversion, std::vector<std::string> const &notes) {
    nlohmann::ordered_json kinds = nlohmann::ordered_json::array();
    for (KindFactor const &kind : conversion.kinds)
        kinds.push_back({{"kind", kind.kind}, {"name", lib::GetUnitKindName(kind.kind)}, {"factor", kind.factor}});
    nlohmann::ordered_json const json = {{"schema", 2},
                                         {"value", value},
                                         {"from", conversion.from},
                                         {"to", conversion.to},
                                         {"result", conversion.Apply(value)},
                                         {"factor", conversion.Apply(1.0)},
                                         {"kinds", kinds},
                                         {"notes", notes}};
    return json.dump() + "\n";
}

} // namespace

int RunConvert(std::vector<std::string> const &arguments, Console &console) {
    ConvertOptions const options = Parse(arguments);
    if (!options.help.empty())
        return WriteResult(console, options.help);
    double const value = ReadValue(options.value);
    Conversion const conversion = FindConversion(UnitCatalogue(), options.from, options.to, options.kind);
    double const result = conversion.Apply(value);
    if (!std::isfinite(result))
        throw InputError(0, Joined("the result is too large for a number: ", options.value, " ", conversion.from));
    std::vector<std::string> const notes = conversion.Notes(value);
    for (std::string const &note : notes)
        console.err << "zvi: note: " << note << "\n";
    return WriteResult(console, options.json ? ConversionJson(value, conversion, notes)
                                             : Joined(ShortNumber(result, kShownDigits), " ", conversion.to, "\n"));
}

} // namespace zvi::app
