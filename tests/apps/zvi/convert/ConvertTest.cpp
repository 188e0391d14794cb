#include "tests/apps/zvi/Run.h"

#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/common/WideText.h"
#include "apps/zvi/common/typed/Evaluate.h"
#include "apps/zvi/convert/Conversion.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

#include <algorithm>
#include <map>
#include <sstream>
#include <tuple>

namespace zvi::app::test {

namespace {

RunOutcome Convert(std::string const &value, std::string const &from, std::string const &to) {
    return RunZvi({"convert", value, from, to});
}

} // namespace

TEST(Convert, AgreesWithPublishedRelations) {
    struct Row {
        char const *value;
        char const *from;
        char const *to;
        double result;
        char const *label;
    };
    for (Row const &row : std::initializer_list<Row>{
             {"1", "Btu/(ft^2*hr)", "W/m^2", 3.15459074506305, "W/m^2"},
             {"1", "kcal/(m^2*hr*[\u00B0C])", "W/(m^2*[\u00B0C])", 1.163, "W/(m^2*[\u00B0C])"},
             {"1", "N/mm2", "kN/m2", 1000, "kN/m2"},
             {"62.4", "pcf", "kN/m3", 62.4 / 6.36588035426416, "kN/m3"},
             {"1", "in4", "cm4", 41.62314256, "cm4"},
             {"1", "GPa", "ksi", 145.0377377, "kips/in^2"},
             {"1", "atm", "bar", 1.01325, "bar"},
             {"1", "hp", "kW", 0.745699872, "kW"},
             {"36", "\u00B0F", "K", 20, "K"},
             {"1", "Hz", "1/sec", 1, "1/sec"},
             {"180", "deg", "rad", 3.14159265, "rad"},
             {"1", "tf", "kN", 9.80665, "kN"},
             {"1", "N/mm^2/g", "kg/mm2", 1 / 9.80665, "kg/mm2"},
             {"1", "MPa", "psi", 145.0377377, "lbf/in^2"},
             {"2", "h", "min", 120, "min"},
             {"1", "m/s\u00B2", "cm / sec**2", 100, "cm/sec^2"},
             {"1", "kN\u00B7m", "N*mm", 1e6, "N*mm"},
             {"1", "kNm", "kgfcm", 1e5 / 9.80665, "kgfcm"},
             {"1", "kn/M^2", "n/m\u00B2", 1000, "N/m^2"},
             {"1", "\u03BCm", "\u00B5m", 1, "\u00B5m"},
             {"20", "\u00B0C", "[\u00B0C]", 20, "[\u00B0C]"},
             {"1", "W/(m^2*\u00B0C)", "kW/(m^2*\u00B0C)", 0.001, "kW/(m^2*[\u00B0C])"},
             {"3*-2", "m", "mm", -6000, "mm"},
             {"-40", "m", "mm", -40000, "mm"},
         }) {
        RunOutcome const run = Convert(row.value, row.from, row.to);
        std::size_t const blank = run.out.find(' ');
        ASSERT_NE(blank, std::string::npos) << row.from << run.err;
        EXPECT_NEAR(*ParseNumber(run.out.substr(0, blank)) / row.result, 1, 1e-7) << row.from;
        EXPECT_EQ(run.out.substr(blank + 1), std::string(row.label) + "\n");
    }
}

TEST(Convert, SaysWhatItDoesNotUnderstand) {
    using Row = std::tuple<std::vector<std::string>, int, char const *>; // a part of the messages
    for (auto [words, status, err] : std::initializer_list<Row>{
             {{"1", "m", "meters"}, 1, "unknown unit label 'meters'"},
             {{"1", "kN/m^2^3", "N/m"}, 1, "a label is a product such as"},
             {{"1", "kN", "N/m"}, 1, "'kN' is length*mass/time^2, and 'N/m' is mass/time^2"},
             {{"1", "kip/ft", "kN/m"}, 1, "did you mean 'kips/ft'?"},
             {{"1", "kn*mm", "kM*cm"}, 1, "'kM' is no unit; did you mean 'kN*cm'?"},
             {{"1", "Mm", "mm"}, 1, "unknown unit label 'Mm'"},
             {{"1", "lbf", "N"}, 0, "give 4.4482216152605; the library's own factors of kind 2 give 4.448223"},
             {{"1", "kJ/(m^2*hr)", "W/m^2", "--kind", "heat flux"}, 0, "of kind 78 give 3600000"},
             {{"20", "[\u00B0C]", "K"}, 0, "differences of temperature"},
             {{"1e308", "km", "mm"}, 1, "too large"},
             {{"1", "m", "mm", "--kind", "lenght"}, 2, "did you mean 'length'?"},
             {{"1", "+", "2", "mm", "in"}, 1, "write 1+2"},
             {{"1/0", "mm", "in"}, 1, "division by zero"},
             {{"5mm", "mm", "in"}, 1, "hint: VALUE is one number"},
             {{"", "mm", "in"}, 2, "VALUE is empty"},
             {{"1", "mm"}, 2, "VALUE FROM TO"},
             {{"1", "m", "mm", "--kind", "2"}, 1, "kind 2 has no labels 'm' and 'mm'"},
             {{"1", "m", "mm", "--kind", "200"}, 2, "from 1 to 128"},
             {{"1", "m", "mm", "--kind", ""}, 2, "from 1 to 128"},
             {{"1", "hr", "sec", "--kind", "83"}, 0, "give 3600; the library's own factors of kind 83 give 1"},
             {{"1", "m", "to", "mm"}, 0, ""},
         }) {
        words.insert(words.begin(), "convert");
        RunOutcome const run = RunZvi(words);
        EXPECT_EQ(run.status, status) << run.err;
        EXPECT_NE(run.err.find(err), std::string::npos) << run.err;
    }
    nlohmann::json const json = nlohmann::json::parse(RunZvi({"convert", "--json", "2", "kPa", "N/m^2"}).out);
    EXPECT_NEAR(json["result"].get<double>(), 2000, 1e-9);
    EXPECT_EQ(json["kinds"][1]["name"], "pressure");
    EXPECT_TRUE(json["notes"].empty());
}

/// A label as an expression in m, kg and sec, whose value the language of input fields works out.
std::string ExpressionOf(std::string label) {
    static std::map<std::string, std::string> const units = [] {
        std::istringstream definitions(
            "mm 0.001 cm 0.01 m 1 in 0.0254 ft 0.3048 \u00B5m 0.000001 "
            "N 1 kN 1000 kgf 9.80665 tonf 9806.65 lbf (0.45359237*9.80665) kips (453.59237*9.80665) "
            "kg 1 ton 1000 lbm 0.45359237 kip 453.59237 sec 1 min 60 hr 3600 day 86400 "
            "J 1 kJ 1000 W 1 kW 1000 cal 4.1868 kcal 4186.8 Btu 1055.05585262 "
            "g 9.80665 deg (pi/180) rev (2*pi) Gal 0.01 L 0.001");
        std::map<std::string, std::string> read;
        for (std::string unit, value; definitions >> unit >> value;)
            read[unit] = value;
        return read;
    }();
    constexpr char const *kBetween = "*/()^";
    std::erase_if(label, [](char c) { return c == '[' || c == ']'; });
    ReplaceAll(label, "ohm.", "ohm*");
    std::string expression;
    for (std::size_t at = 0; at < label.size();) {
        std::size_t const end = std::min(label.find_first_of(kBetween, at), label.size());
        std::string const word = label.substr(at, end - at);
        auto const unit = units.find(word);
        bool const isNumber = word.find_first_not_of("0123456789") == std::string::npos;
        expression.append(isNumber ? word : unit == units.end() ? "1" : unit->second).append(label, end, 1);
        at = end + 1;
    }
    return expression;
}

TEST(Convert, EveryPairOfLabelsOfAKindIsConvertedByItsUnits) {
    UnitCatalogue const catalogue;
    struct Known {
        UnitProduct units;
        double value;
    };
    std::map<int, std::vector<Known>> kinds;
    for (UnitLabel const &label : catalogue.Labels()) {
        Conversion const same = FindConversion(catalogue, label.label, label.label, label.kind);
        ASSERT_EQ(same.Apply(7), 7) << label.label;
        std::string plain = label.label;
        for (char const *time : {"sec", "min", "hr", "day"}) {
            if (label.kind == 123) // two units run together are one divisor
                ReplaceAll(plain, time, Joined(time, "/"));
        }
        EvalSettings settings;
        settings.mode = EvalMode::kGridRel;
        EvalOutcome const value = Evaluate(WideOf(ExpressionOf(plain)), settings);
        ASSERT_TRUE(value.parsed) << label.label << ": " << ExpressionOf(plain);
        kinds[label.kind].push_back({same.fromUnits, value.groups[0][0]});
    }
    EXPECT_EQ(kinds.rbegin()->first, 128);
    for (auto const &[kind, labels] : kinds) {
        for (Known const &from : labels) {
            for (Known const &to : labels)
                ASSERT_NEAR(FactorBetween(from.units, to.units) * to.value / from.value, 1, 1e-13) << "kind " << kind;
        }
    }
}

TEST(Units, ListsKindsWithLabelsAndFactors) {
    std::string const table = RunZvi({"units", "--system", "4"}).out;
    EXPECT_TRUE(table.starts_with("system 4: force kgf, length cm, mass kg, time sec, heat J\n")) << table;
    EXPECT_NE(table.find("\n  17  kgf/cm^2           0.0980665             stress\n"), std::string::npos) << table;
    EXPECT_NE(table.find("\n  39  cm^3/day "), std::string::npos) << "the day is there from the start";
    nlohmann::json const json = nlohmann::json::parse(RunZvi({"units", "--kind", "17", "--json"}).out);
    EXPECT_EQ(json["kinds"].size(), 36u);
    EXPECT_EQ(RunZvi({"units", "--kind", "7"}).status, 1);
    EXPECT_EQ(RunZvi({"units", "--system", "6"}).status, 2);
    EXPECT_EQ(RunZvi({"units", "--kind", "Stress"}).out, RunZvi({"units", "--kind", "17"}).out);
    EXPECT_NE(RunZvi({"units", "density"}).out.find("mass density\n"), std::string::npos);
    EXPECT_EQ(RunZvi({"units", "nonsense"}).status, 1);
}

} // namespace zvi::app::test
