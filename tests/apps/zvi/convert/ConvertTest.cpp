#include "tests/apps/zvi/Run.h"

#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/units/UnitCatalogue.h"

#include <gtest/gtest.h>
#include <nlohmann/json.hpp>

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
             {"1", "ft", "in", 12, "in"},
             {"12.5", "kN/m^2", "kgf/cm^2", 12.5e3 / 98066.5, "kgf/cm^2"},
             {"1", "MPa", "psi", 145.03768, "lbf/in^2"},
             {"1", "day", "hr", 24, "hr"},
             {"2", "h", "min", 120, "min"},
             {"1", "m/s\u00B2", "cm / sec**2", 100, "cm/sec^2"},
             {"1", "kN\u00B7m", "N*mm", 1e6, "N*mm"},
             {"1", "kNm", "kgfcm", 1e5 / 9.80665, "kgf*cm"},
             {"1", "kn/M^2", "n/m\u00B2", 1000, "N/m^2"},
             {"1", "um", "mm", 0.001, "mm"},
             {"1", "\u03BCm", "\u00B5m", 1, "\u00B5m"},
             {"20", "\u00B0C", "[\u00B0C]", 20, "[\u00B0C]"},
             {"1", "kg", "lbm", 2.2046226, "lbm"},
             {"1", "W/(m^2*\u00B0C)", "kW/(m^2*\u00B0C)", 0.001, "kW/(m^2*[\u00B0C])"},
             {"1", "Btu/hr", "kcal/hr", 1055.0 / 4186, "kcal/hr"},
             {"5", "m^3/day", "cm^3/day", 5e6, "cm^3/day"},
             {"3*-2", "m", "mm", -6000, "mm"},
             {"-40", "m", "mm", -40000, "mm"},
         }) {
        RunOutcome const run = Convert(row.value, row.from, row.to);
        std::size_t const blank = run.out.find(' ');
        ASSERT_NE(blank, std::string::npos) << row.from << run.err;
        EXPECT_NEAR(*ParseNumber(run.out.substr(0, blank)) / row.result, 1, 1e-7) << row.from;
        EXPECT_EQ(run.out.substr(blank + 1), std::string(row.label) + "\n");
        EXPECT_EQ(run.err, "");
    }
}

TEST(Convert, SaysWhatItDoesNotUnderstand) {
    struct Row {
        std::vector<std::string> words;
        int status;
        char const *err; ///< a part of it
    };
    for (Row const &row : std::initializer_list<Row>{
             {{"1", "kN/m^5", "N/m"}, 1, "did you mean 'kN/m^2'?"},
             {{"1", "m", "meters"}, 1, "unknown unit label 'meters'"},
             {{"1", "kN", "N/m"}, 1, "(kind 2) and 'N/m' (kind 14) are labels of different kinds"},
             {{"1", "+", "2", "mm", "in"}, 1, "write 1+2"},
             {{"1/0", "mm", "in"}, 1, "division by zero"},
             {{"5mm", "mm", "in"}, 1, "hint: VALUE is one number"},
             {{"", "mm", "in"}, 2, "VALUE is empty"},
             {{"1", "mm"}, 2, "VALUE FROM TO"},
             {{"1", "m", "mm", "--kind", "2"}, 1, "kind 2 has no labels 'm' and 'mm'"},
             {{"1", "m", "mm", "--kind", "200"}, 2, "from 1 to 128"},
             {{"1", "m", "mm", "--kind", ""}, 2, "from 1 to 128"},
             {{"1", "hr", "sec", "--kind", "83"}, 0, "note: the factor of kind 83 does not follow the unit of time"},
             {{"1", "m", "to", "mm"}, 0, ""},
         }) {
        std::vector<std::string> words = row.words;
        words.insert(words.begin(), "convert");
        RunOutcome const run = RunZvi(words);
        EXPECT_EQ(run.status, row.status) << run.err;
        EXPECT_NE(run.err.find(row.err), std::string::npos) << run.err;
    }
    nlohmann::json const json = nlohmann::json::parse(RunZvi({"convert", "--json", "2", "kPa", "N/m^2"}).out);
    EXPECT_NEAR(json["result"].get<double>(), 2000, 1e-9);
    EXPECT_EQ(json["kinds"], (std::vector<int>{17, 18}));
}

TEST(Convert, EveryLabelIsFoundAndConvertsToItself) {
    UnitCatalogue const catalogue;
    int kind = 0;
    for (UnitLabel const &label : catalogue.Labels()) {
        if (label.kind == kind)
            continue; // the first label of each kind stands for all of them
        kind = label.kind;
        std::vector<UnitConversion> const same = FindConversions(catalogue, 7, label.label, label.label, kind);
        ASSERT_EQ(same.size(), 1u) << label.label;
        EXPECT_EQ(same[0].value, 7) << label.label;
    }
    EXPECT_EQ(kind, 128);
}

TEST(Units, ListsKindsWithLabelsAndFactors) {
    std::string const table = RunZvi({"units", "--system", "4"}).out;
    EXPECT_TRUE(table.starts_with("system 4: force kgf, length cm, mass kg, time sec, heat J\n")) << table;
    EXPECT_NE(table.find("\n  17  kgf/cm^2           0.0980665\n"), std::string::npos) << table;
    EXPECT_NE(table.find("\n  39  cm^3/day "), std::string::npos) << "the day is there from the start";
    nlohmann::json const json = nlohmann::json::parse(RunZvi({"units", "--kind", "17", "--json"}).out);
    EXPECT_EQ(json["kinds"].size(), 36u);
    EXPECT_EQ(RunZvi({"units", "--kind", "7"}).status, 1);
    EXPECT_EQ(RunZvi({"units", "--system", "6"}).status, 2);
    EXPECT_EQ(RunZvi({"units", "17"}).status, 2);
}

} // namespace zvi::app::test
