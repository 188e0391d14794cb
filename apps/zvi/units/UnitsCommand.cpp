#include "apps/zvi/units/UnitsCommand.h"

#include "apps/zvi/common/CommandLine.h"
#include "apps/zvi/common/ExitStatus.h"
#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/common/UnitNumbers.h"
#include "apps/zvi/common/WideText.h"
#include "apps/zvi/units/UnitCatalogue.h"

#include "zvi/units/MUnitCtrl.h"
#include "zvi/units/UnitKinds.h"

#include <nlohmann/json.hpp>

#include <algorithm>

namespace zvi::app {

namespace {

constexpr char const *kExamples =
    "Examples:\n"
    "  zvi units                                  the kinds of quantity, in N mm kg sec J\n"
    "  zvi units --system 4                       in kgf cm kg sec J\n"
    "  zvi units heat                             those whose name or label holds a word\n"
    "  zvi units --kind stress                    every label of one kind, by name or number\n"
    "  zvi units --kind 17 --system 1 --json      as JSON\n";

constexpr char const *kFooter =
    "Systems: 0: N mm kg sec J; 1: N m kg sec J; 2: N mm ton sec J; 3: lbf ft lbm sec Btu; 4: kgf cm kg sec J;\n"
    "5: lbf in lbm sec Btu. A factor says how much one unit is in N, mm, kg, sec and J.\n"
    "\n"
    "Exit status: 0 done; 1 the kind has no label; 2 wrong usage; 4 a fault of the program.\n";

struct UnitsOptions {
    std::optional<int> system;
    std::optional<int> kind;
    std::string word; ///< in the name or label
    bool json = false;
    std::string help;
};

UnitsOptions Parse(std::vector<std::string> const &arguments) {
    UnitsOptions options;
    std::optional<std::string> system;
    std::optional<std::string> kind;
    CommandLine line("zvi units", "Lists the kinds of quantity with their unit labels and factors.");
    line.AddOption("--system", system, "N", "Unit system, 0 to 5 (0)");
    line.AddOption("--kind", kind, "K",
                   "This kind alone, by name or number; without --system in every choice of units");
    line.AddWords("WORD", "Only kinds whose name or label holds this");
    line.AddFlag("--json", options.json, "One JSON object");
    ParsedWords const parsed = line.Parse(arguments, {kExamples, kFooter, false});
    options.help = parsed.help;
    if (!options.help.empty())
        return options;
    for (std::string const &word : parsed.words)
        options.word += (options.word.empty() ? "" : " ") + word;
    options.system = system ? std::optional(UnitSystemNamed(*system)) : std::nullopt;
    options.kind = kind ? std::optional(UnitKindNamed(*kind)) : std::nullopt;
    return options;
}

struct Row {
    int kind;
    std::string label; ///< empty: the kind has none
    double factor;
};

/// A unit system that has been changed once, as any program's has: labels that refer to one another are complete.
lib::MUnitCtrl SystemOf(int type) {
    lib::MUnitCtrl units(nullptr);
    units.Initialize(type);
    lib::T_UNIT_INDEX index;
    units.GetUnitIndexCurrent(index);
    units.SetUnitIndexCurrent(index, 0);
    return units;
}

/// Kinds with neither label nor formula mean nothing and are left out.
std::vector<Row> RowsOfSystem(lib::MUnitCtrl &units, std::optional<int> kind) {
    std::vector<Row> rows;
    for (int k = 1; k < lib::kUnitKindCount; ++k) {
        CString label;
        bool const hasLabel = units.GetUnitSystem(k, label) != 0;
        // In these units no formula but that of a number without unit gives 1.
        constexpr int kKips = 5, kFoot = 4, kBtu = 3, kHour = 2;
        bool const hasFormula = units.GetConvertFactorTgtUnit(kKips, kFoot, kKips, kBtu, kHour, k) != 1.0;
        if (k == kind.value_or(k) && (hasLabel || hasFormula || kind))
            rows.push_back({k, Utf8Of(label), units.GetConvertFactorCurrent(k)});
    }
    return rows;
}

std::vector<Row> RowsOfKind(int kind) {
    std::vector<Row> rows;
    UnitCatalogue const catalogue;
    for (UnitLabel const &label : catalogue.Labels()) {
        if (label.kind == kind)
            rows.push_back({kind, label.label, label.factor});
    }
    return rows;
}

/// Whether the word stands in the name of the kind, in any case of letters, or in the label; an empty one does.
bool Holds(Row const &row, std::string const &word) {
    std::string const name = lib::GetUnitKindName(row.kind);
    return name.find(Lowered(word)) != std::string::npos || row.label.find(word) != std::string::npos;
}

/// The base units as pairs of base and name.
std::vector<std::pair<char const *, std::string>> BaseUnits(lib::MUnitCtrl const &units) {
    lib::T_UNIT_NAMEFACT names;
    lib::T_UNIT_INDEX index;
    units.GetUnitNameCurrent(names);
    units.GetUnitIndexCurrent(index);
    return {{"force", Utf8Of(names.forceName[index.force])},
            {"length", Utf8Of(names.lengthName[index.length])},
            {"mass", Utf8Of(names.massName[index.mass])},
            {"time", Utf8Of(names.timeName[index.time])},
            {"heat", Utf8Of(names.heatName[index.heat])}};
}

/// Columns of a factor of 15 digits, its sign, point and exponent, and a gap.
constexpr std::size_t kFactorColumns = 22;

std::string Table(std::vector<Row> const &rows) {
    std::size_t widest = std::string_view("label").size();
    for (Row const &row : rows)
        widest = std::max(widest, Columns(row.label));
    std::string text = Joined("kind  label", std::string(widest - 5 + 2, ' '), "factor                name\n");
    for (Row const &row : rows) {
        std::string const kind = std::to_string(row.kind);
        std::string const label = row.label.empty() ? "-" : row.label;
        std::string const factor = ShortNumber(row.factor, 15);
        text +=
            Joined(std::string(4 - kind.size(), ' '), kind, "  ", label, std::string(widest - Columns(label) + 2, ' '),
                   factor, std::string(kFactorColumns - factor.size(), ' '), lib::GetUnitKindName(row.kind), "\n");
    }
    return text;
}

nlohmann::ordered_json JsonRows(std::vector<Row> const &rows) {
    nlohmann::ordered_json json = nlohmann::ordered_json::array();
    for (Row const &row : rows) {
        nlohmann::ordered_json entry = {{"kind", row.kind}, {"name", lib::GetUnitKindName(row.kind)}};
        entry["label"] = row.label.empty() ? nlohmann::ordered_json() : nlohmann::ordered_json(row.label);
        entry["factor"] = row.factor;
        json.push_back(std::move(entry));
    }
    return json;
}

std::string SystemText(UnitsOptions const &options) {
    int const system = options.system.value_or(0);
    lib::MUnitCtrl units = SystemOf(system);
    std::vector<Row> rows = RowsOfSystem(units, options.kind);
    std::erase_if(rows, [&options](Row const &row) { return !Holds(row, options.word); });
    if (rows.empty())
        throw InputError(0, "no kind has '" + options.word + "' in its name or label; 'zvi units' lists all");
    if (options.json) {
        nlohmann::ordered_json json = {{"schema", 1}, {"system", system}};
        for (auto const &[base, name] : BaseUnits(units))
            json["base"][base] = name;
        json["kinds"] = JsonRows(rows);
        return json.dump() + "\n";
    }
    std::string head = "system " + std::to_string(system) + ":";
    for (auto const &[base, name] : BaseUnits(units))
        head += Joined(" ", base, " ", name, std::string_view(base) == "heat" ? "\n\n" : ",");
    return head + Table(rows);
}

} // namespace

int RunUnits(std::vector<std::string> const &arguments, Console &console) {
    UnitsOptions const options = Parse(arguments);
    if (!options.help.empty())
        return WriteResult(console, options.help);
    if (options.system || !options.kind)
        return WriteResult(console, SystemText(options));
    std::vector<Row> const rows = RowsOfKind(*options.kind);
    if (rows.empty())
        throw InputError(0, "kind " + std::to_string(*options.kind) + " has no label; 'zvi units' lists those that do");
    nlohmann::ordered_json const json = {{"schema", 1}, {"kinds", JsonRows(rows)}};
    return WriteResult(console, options.json ? json.dump() + "\n" : Table(rows));
}

} // namespace zvi::app
