#include "zvi/units/MUnitCtrl.h"

#include <gtest/gtest.h>

#include <string>

using zvi::lib::MUnitCtrl;

namespace {

std::wstring Label(MUnitCtrl const &units, int kind) {
    CString label;
    return units.GetUnitSystem(kind, label) == 0 ? L"(none)" : label.GetString();
}

struct Row {
    int kind;
    wchar_t const *label;
};

void ExpectLabels(MUnitCtrl const &units, std::initializer_list<Row> rows) {
    for (Row const &row : rows)
        EXPECT_EQ(Label(units, row.kind), row.label) << row.kind;
}

} // namespace

TEST(UnitLabels, FollowTheUnits) {
    MUnitCtrl units(nullptr);
    EXPECT_EQ(Label(units, 17), L"");
    units.Initialize(1);
    ExpectLabels(units, {{14, L"N/m"},
                         {17, L"N/m^2"},
                         {41, L"W/(m*[\u00B0C])"},
                         {38, L"J/(kg*[\u00B0C])"},
                         {123, L"kg/secm^2"},
                         {113, L"A/(V*m^2)"},
                         {92, L"N/(m*sec)/g"},
                         {22, L"m/sec^2"},
                         {85, L"N*m/(m^3*[t])"},
                         {109, L"L/m^3"},
                         {82, L"W"},
                         {7, L"(none)"},
                         {8, L"(none)"},
                         {65, L"(none)"},
                         {-1, L"(none)"},
                         {129, L"(none)"},
                         {34, L"m^6"},
                         {126, L"N*sec^2/m^4"}});
    // The mass of a label goes with the force unit, whatever the mass index is.
    units.SetUnitIndexCurrent({3, 1, 4, 2, 4}, 0); // kN, cm, lbm, hr, kJ
    ExpectLabels(units, {{24, L"ton"}, {49, L"ton/cm^3"}, {3, L"cm/hr^2"}, {32, L"cm/sec^2/hr"}});
}

TEST(UnitLabels, TheFirstRebuildFindsNoDayAndNoHourBeforeTheyAreAssigned) {
    MUnitCtrl units(nullptr);
    units.Initialize(0);
    ExpectLabels(units, {{39, L"mm^3/"},
                         {59, L""},
                         {56, L"1/"},
                         {76, L"J//mm^2"},
                         {57, L"N*/mm"},
                         {67, L"N*day/mm^2"},
                         {88, L"mm^2/day^2"},
                         {69, L"mm^3/hr"},
                         {75, L"J/hr"},
                         {35, L"hr"},
                         {36, L"day"}});
    units.SetUnitSystemType(1, 0);
    ExpectLabels(
        units,
        {{39, L"m^3/day"}, {59, L"day"}, {56, L"1/day"}, {76, L"J/hr/m^2"}, {57, L"N*day/m"}, {53, L"m^3/day/m"}});
}

TEST(UnitLabels, PowerIsInWattsOrSpelledOut) {
    struct Case {
        int heat;
        int time;
        std::initializer_list<Row> rows;
    };
    Case const cases[] = {
        {2,
         0,
         {{40, L"W/(mm^2*[\u00B0C])"},
          {42, L"W/mm^3"},
          {77, L"W/[\u00B0C]"},
          {80, L"W/(mm^2*[\u00B0C]^4)"},
          {108, L"W"}}},
        {4, 0, {{40, L"kW/(mm^2*[\u00B0C])"}, {42, L"kW/mm^3"}, {78, L"kW/mm^2"}, {100, L"kW/mm^2"}, {82, L"kW"}}},
        {2, 2, {{40, L"J/(mm^2*hr*[\u00B0C])"}, {42, L"J/(mm^3*hr)"}, {77, L"J/hr*[\u00B0C]"}, {79, L"J/(mm^3*hr)"}}},
        {1, 0, {{84, L"kcal/(mm^2*sec*[\u00B0C])"}, {94, L"kcal/(mm^2*sec*[\u00B0C])"}, {82, L"kcal/sec"}}},
    };
    for (Case const &c : cases) {
        MUnitCtrl units(nullptr);
        units.Initialize(0, 2, c.time, c.heat);
        ExpectLabels(units, c.rows);
    }
}

TEST(UnitLabels, LegendsAreFreshAndEqualTheSettledLabels) {
    MUnitCtrl units(nullptr);
    units.Initialize(0);
    CString legend;
    EXPECT_EQ(units.GetUnitSystem4Legend(39, legend), 1);
    EXPECT_TRUE(legend == L"mm^3/day");
    EXPECT_EQ(units.GetUnitSystem4Legend(7, legend), 0);
    EXPECT_TRUE(legend == L"None");
    for (int type = 1; type <= 5; ++type) {
        units.SetUnitSystemType(type, 0);
        for (int kind = 0; kind <= 128; ++kind) {
            CString label;
            if (units.GetUnitSystem(kind, label) == 1) {
                EXPECT_EQ(units.GetUnitSystem4Legend(kind, legend), 1);
                EXPECT_TRUE(legend == label) << kind;
            }
        }
    }
}

TEST(UnitLabels, AListOfKindsSharesItsLabels) {
    MUnitCtrl units(nullptr);
    units.Initialize(0);
    zvi::lib::T_UNIT_SYSTEM system;
    int const kinds[] = {17, 1, 7, 18, 128, 1};
    units.GetUnitSystemCtrl(6, kinds, system);
    EXPECT_EQ(system.indices, (zvi::MArray<std::int32_t>{0, 1, -1, 0, 2, 1}));
    EXPECT_TRUE(system.labels[2] == L"J/kg");

    int all[129];
    for (int kind = 0; kind <= 128; ++kind)
        all[kind] = kind;
    units.GetUnitSystemCtrl(129, all, system);
    ASSERT_EQ(system.indices.Size(), 129U);
    EXPECT_EQ(system.indices[1], 0);
    EXPECT_EQ(system.indices[128], system.capacity);
    EXPECT_FALSE(system.labels[29].IsEmpty());
    units.GetUnitSystemCtrl(0, nullptr, system);
    EXPECT_TRUE(system.indices.Empty());
    EXPECT_TRUE(system.labels[0].IsEmpty());
}
