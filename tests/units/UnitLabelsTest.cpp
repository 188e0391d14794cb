#include "zvi/units/MUnitCtrl.h"
#include "zvi/units/UnitTables.h"

#include <gtest/gtest.h>

#include <numeric>
#include <sstream>
#include <string>

namespace zvi::lib::test {

namespace {

/// Each row is a kind and its label, where "none" is a kind without one and "empty" an empty one.
void ExpectLabels(MUnitCtrl const &units, wchar_t const *rows) {
    std::wistringstream cells(rows);
    std::wstring expected;
    for (int kind = 0; cells >> kind >> expected;) {
        CString label;
        if (units.GetUnitSystem(kind, label) == 0)
            label = L"none";
        EXPECT_EQ(label.IsEmpty() ? L"empty" : label.GetString(), expected) << kind;
    }
    EXPECT_TRUE(cells.eof());
}

} // namespace

TEST(UnitLabels, FollowTheUnits) {
    MUnitCtrl units(nullptr);
    ExpectLabels(units, L"17 empty");
    units.Initialize(1);
    ExpectLabels(units, L"14 N/m  17 N/m^2  41 W/(m*[\u00B0C])  38 J/(kg*[\u00B0C])  123 kg/secm^2  113 A/(V*m^2)"
                        L"  92 N/(m*sec)/g  22 m/sec^2  85 N*m/(m^3*[t])  109 L/m^3  82 W  34 m^6  126 N*sec^2/m^4"
                        L"  7 none  8 none  65 none  -1 none  129 none");
    // The mass of a label goes with the force unit, whatever the mass index is.
    units.SetUnitIndexCurrent({3, 1, 4, 2, 4}, 0); // kN, cm, lbm, hr, kJ
    ExpectLabels(units, L"24 ton  49 ton/cm^3  3 cm/hr^2  32 cm/sec^2/hr");
    CString names[4];
    units.GetUnitSystemForce(names[0]);
    units.GetUnitSystemLength(names[1]);
    units.GetUnitSystemTime(names[2]);
    units.GetUnitSystemHeat(names[3]);
    EXPECT_EQ(names[0] + L' ' + names[1] + L' ' + names[2] + L' ' + names[3], L"kN cm hr kJ");
}

TEST(UnitLabels, TheFirstRebuildFindsNoDayAndNoHourBeforeTheyAreAssigned) {
    MUnitCtrl units(nullptr);
    units.Initialize(0);
    ExpectLabels(units, L"39 mm^3/  59 empty  56 1/  76 J//mm^2  57 N*/mm  67 N*day/mm^2  88 mm^2/day^2  69 mm^3/hr"
                        L"  75 J/hr  35 hr  36 day");
    units.SetUnitSystemType(1, 0);
    ExpectLabels(units, L"39 m^3/day  59 day  56 1/day  76 J/hr/m^2  57 N*day/m  53 m^3/day/m");
}

TEST(UnitLabels, PowerIsInWattsOrSpelledOut) {
    struct {
        int heat, time;
        wchar_t const *labels;
    } const rows[] = {{2, 0, L"40 W/(mm^2*[\u00B0C])  42 W/mm^3  77 W/[\u00B0C]  80 W/(mm^2*[\u00B0C]^4)  108 W"},
                      {4, 0, L"40 kW/(mm^2*[\u00B0C])  42 kW/mm^3  78 kW/mm^2  100 kW/mm^2  82 kW"},
                      {2, 2, L"40 J/(mm^2*hr*[\u00B0C])  42 J/(mm^3*hr)  77 J/hr*[\u00B0C]  79 J/(mm^3*hr)"},
                      {1, 0, L"84 kcal/(mm^2*sec*[\u00B0C])  94 kcal/(mm^2*sec*[\u00B0C])  82 kcal/sec"}};
    for (auto const &row : rows) {
        MUnitCtrl units(nullptr);
        units.Initialize(0, 2, row.time, row.heat);
        ExpectLabels(units, row.labels);
    }
}

TEST(UnitLabels, LegendsAreFreshAndEqualTheSettledLabels) {
    MUnitCtrl units(nullptr);
    units.Initialize(0);
    CString legend, label;
    EXPECT_EQ(units.GetUnitSystem4Legend(39, legend), 1);
    EXPECT_EQ(legend, L"mm^3/day");
    for (int type = 1; type <= 5; ++type) {
        units.SetUnitSystemType(type, 0);
        for (int kind = 0; kind <= 128; ++kind) {
            int const found = units.GetUnitSystem(kind, label);
            EXPECT_EQ(units.GetUnitSystem4Legend(kind, legend), found) << kind;
            EXPECT_EQ(legend, found ? label : CString(L"None")) << kind;
        }
    }
}

TEST(UnitLabels, AListOfKindsSharesItsLabels) {
    MUnitCtrl units(nullptr);
    units.Initialize(0);
    T_UNIT_SYSTEM system;
    int const kinds[] = {17, 1, 7, 18, 128, 1};
    units.GetUnitSystemCtrl(6, kinds, system);
    EXPECT_EQ(system.indices, (MArray<std::int32_t>{0, 1, -1, 0, 2, 1}));
    EXPECT_EQ(system.labels[2], L"J/kg");

    int all[129];
    std::iota(std::begin(all), std::end(all), 0);
    units.GetUnitSystemCtrl(129, all, system);
    ASSERT_EQ(system.indices.Size(), 129U);
    EXPECT_EQ(system.indices[1], 0);
    EXPECT_EQ(system.indices[128], system.capacity);
    EXPECT_FALSE(system.labels[29].IsEmpty());
    units.GetUnitSystemCtrl(0, nullptr, system);
    EXPECT_TRUE(system.indices.Empty());
    EXPECT_TRUE(system.labels[0].IsEmpty());
}

TEST(UnitTables, ListEachLabelOnceWithUnitsThatReadSo) {
    MUnitCtrl units(nullptr);
    units.Initialize(0);
    int counts[kUnitKindCount] = {};
    for (UnitLabel const &entry : ListUnitLabels()) {
        ++counts[entry.kind];
        CString label;
        units.SetUnitIndexCurrent(entry.index, 0);
        EXPECT_EQ(units.GetUnitSystem(entry.kind, label), 1);
        EXPECT_EQ(label, entry.label);
        EXPECT_EQ(entry.index.mass, entry.index.force);
    }
    // mm to micrometres; 6 forces by 6 lengths; kg, ton, lbm, kip; with the day; none.
    for (auto const &[kind, count] : {std::pair{1, 6}, {17, 36}, {24, 4}, {21, 4}, {60, 1}, {7, 0}}) {
        EXPECT_EQ(counts[kind], count) << kind;
        EXPECT_EQ(HasUnitLabel(kind), count != 0) << kind;
    }
    EXPECT_EQ(GetBaseUnits(2).lengthFactor[0], 0.001);
    EXPECT_EQ(GetUnitSystemIndex(3).length, 4);
}

} // namespace zvi::lib::test
