#include "zvi/units/MUnitCtrl.h"

#include "tests/Rows.h"

#include <cmath>

namespace zvi::lib::test {

namespace {

MUnitCtrl Initialized(int type = 0) {
    MUnitCtrl units(nullptr);
    units.Initialize(type);
    return units;
}

/// The factor of a kind in kgf, ft, lbm, Btu, hr: no two factors alike and none of them 1.
double FactorOf(int kind) {
    return Initialized().GetConvertFactorTgtUnit(0, 4, 4, 3, 2, kind);
}

} // namespace

TEST(UnitFactors, EveryKindHasItsDimension) {
    // What each quantity is, written down apart from its formula: the powers of force, length, mass, heat and time.
    for (auto const &[kind, force, length, mass, heat, time] : Rows<int, double, double, double, double, double>(
             "1 0 1 0 0 0; 2 1 0 0 0 0; 3 0 1 0 0 -2; 9 0 2 0 0 0; 10 0 3 0 0 0; 11 0 4 0 0 0; 12 1 1 0 0 0;"
             "13 1 0 0 0 0; 14 1 -1 0 0 0; 15 1 1 0 0 0; 16 1 0 0 0 0; 17 1 -2 0 0 0; 19 1 -3 0 0 0; 21 0 0 0 0 1;"
             "22 0 1 0 0 0; 23 0 1 0 0 -1; 24 0 0 1 0 0; 25 0 2 1 0 0; 26 0 -1 1 0 0; 27 0 -2 1 0 0; 29 0 0 0 0 -1;"
             "30 1 0 0 0 -1; 31 1 1 0 0 -1; 34 0 6 0 0 0; 37 0 0 0 1 0; 38 0 0 -1 1 0; 39 0 3 0 0 -1; 40 0 -2 0 1 0;"
             "41 0 -1 0 1 -1; 42 0 -3 0 1 0; 43 -1 2 0 0 0; 44 -1 2 0 0 0; 45 0 -1 0 0 0; 46 1 -1 0 0 0;"
             "47 1 1 0 0 0; 48 0 -1 0 0 0; 49 0 -3 1 0 0; 53 0 2 0 0 -1; 57 1 -1 0 0 1; 58 1 1 0 0 1; 63 1 2 0 0 0;"
             "64 2 0 0 0 0; 70 0 -2 0 0 0; 72 0 1 1 0 0; 74 0 0 0 0 -2; 76 0 -2 0 1 0; 78 0 -2 0 1 1; 79 0 -3 0 1 -1;"
             "82 0 0 0 1 -1; 84 0 -2 0 1 1; 85 1 -2 0 0 0; 86 1 0 0 0 0; 87 0 0 0 0 -1; 89 -1 3 0 0 0; 91 0 -1 1 0 0;"
             "92 0 -1 1 0 -1; 93 0 -2 0 0 2; 94 0 -2 0 0 0; 100 0 -2 0 0 0; 101 0 2 0 -1 1; 103 0 0 0 0 -1;"
             "104 0 0 1 0 -3; 105 0 1 0 0 -3; 106 0 0 1 0 -1; 107 0 -3 0 0 0; 114 0 -2 0 0 1; 117 0 1 0 0 0;"
             "123 0 2 1 0 -1; 124 0 2 0 0 -3; 125 1 -1 0 0 -1; 126 1 -4 0 0 2; 127 1 -2 0 0 1; 128 0 0 -1 1 0;"
             "51 0 0 0 0 0; 80 0 0 0 0 0; 0 0 0 0 0 0; 200 0 0 0 0 0; -5 0 0 0 0 0; 108 0 0 0 0 0")) {
        double const expected = std::pow(9.80665, force) * std::pow(304.8, length) * std::pow(0.45359237, mass) *
                                std::pow(1055.0, heat) * std::pow(3600.0, time);
        EXPECT_NEAR(FactorOf(kind) / expected, 1.0, 1e-14) << kind;
    }
}

TEST(UnitFactors, OddKindsReadTheTablesTheyAlwaysRead) {
    EXPECT_EQ(FactorOf(60), 304.8 * 0.01);
    EXPECT_EQ(FactorOf(99), 1.0 / 3600);  // the mass that goes with kgf
    EXPECT_EQ(FactorOf(121), 1 / 1000.0); // the length at the place of the hour is the metre
    EXPECT_EQ(FactorOf(122), 1 / (1000.0 * 1000.0));
    // A micrometre as length and the ulp that an inner quotient costs.
    EXPECT_EQ(Initialized().GetConvertFactorTgtUnit(4, 5, 0, 2, 0, 13), (0.001 * 4.448223) / 0.001);
}

TEST(UnitFactors, KindsOfOneFormulaHaveItsFactor) {
    for (auto const &[kind, formula] : Rows<int, int>(
             "88 9; 69 10; 97 12; 18 17; 67 17; 68 19; 71 19; 59 21; 32 23; 52 23; 55 23; 95 23; 102 24; 33 29; 56 29;"
             "65 29; 73 29; 96 29; 119 29; 75 37; 77 37; 81 42; 90 45; 111 45; 118 45; 54 53; 112 70; 113 70;"
             "109 107; 116 107; 4 0; 5 0; 6 0; 7 0; 8 0; 20 0; 28 0; 35 0; 36 0; 50 0; 61 0; 62 0; 66 0; 83 0;"
             "110 0; 115 0; 120 0"))
        EXPECT_EQ(FactorOf(kind), FactorOf(formula)) << kind;
}

// In these units the reduced form of each differs in the last bit.
TEST(UnitFactors, QuotientsAreEvaluatedInTheirOrder) {
    constexpr double kHour = 3600, kDay = 86400;
    struct {
        int kind, length, heat, time;
        double factor;
    } const rows[] = {{31, 4, 0, 1, 9.80665 * 304.8 / 60},         {41, 1, 1, 1, (4186.0 / 10) / 60},
                      {57, 1, 0, 2, 9.80665 * kHour / 10},         {58, 3, 0, 2, 9.80665 * 25.4 * kHour},
                      {78, 2, 1, 2, 4186 / ((1e3 * 1e3) / kHour)}, {79, 1, 3, 3, 1055 / (1000.0 * kDay)},
                      {101, 0, 1, 2, 1 / (4186 / kHour)},          {103, 1, 0, 3, (10.0 / kDay) / 10},
                      {105, 1, 0, 1, (10.0 / 3600) / 60},          {123, 2, 0, 3, (1.0 / kDay) * 1e6},
                      {125, 1, 0, 1, (9.80665 / 10) / 60},         {127, 1, 0, 2, 9.80665 * kHour / 100}};
    for (auto const &row : rows)
        EXPECT_EQ(Initialized().GetConvertFactorTgtUnit(0, row.length, 0, row.heat, row.time, row.kind), row.factor)
            << row.kind;
}

TEST(UnitFactors, CurrentMassGoesWithTheForceUnitExceptForTwoKinds) {
    MUnitCtrl units = Initialized();
    units.SetUnitIndexCurrent({3, 0, 4, 1, 2}, 0); // kN with lbm, minutes
    for (auto const &[kind, factor, divisor] : Rows<int, double, double>(
             "24 1000 1; 26 1000 1; 99 1000 60; 91 0.45359237 1; 92 0.45359237 60; 51 60 1; 129 1 1; -1 1 1"))
        EXPECT_EQ(units.GetConvertFactorCurrent(kind), factor / divisor) << kind;
    EXPECT_EQ(units.GetConvertFactorTgtUnit(3, 0, 4, 2, 1, 51), 1.0);
}

TEST(UnitFactors, TargetConversionsGoBothWays) {
    MUnitCtrl units(nullptr);
    units.Initialize(2, 3, 0, 2); // m, kN
    // 1 kN/m^2 in kgf/cm^2, by the definitions of the units.
    double const pressure = units.ConvertCurUnitData2TgtUnit(0, 1, 17, 1.0);
    EXPECT_NEAR(pressure, 1000 / 9.80665 / 1e4, 1e-15);
    EXPECT_NEAR(units.ConvertTgtUnitData2CurUnit(0, 1, 17, pressure), 1.0, 1e-15);
    EXPECT_EQ(units.ConvValueTgtUnit2CurUnit(0, 1, 17, pressure), units.ConvertTgtUnitData2CurUnit(0, 1, 17, pressure));
    EXPECT_EQ(units.ConvertCurUnitData2TgtUnit(3, 2, 17, 1.0 / 3.0), 1.0 / 3.0);
    // Target heat is in cal; a target mass by index is what it says.
    EXPECT_EQ(units.ConvertTgtUnitData2CurUnit(3, 2, 37, 1.0), 4.186);
    EXPECT_EQ(units.ConvertTgtUnitData2CurUnit(3, 2, 4, 2, 0, 24, 2000.0), (0.45359237 / 1000) * 2000.0);
    EXPECT_EQ(units.ConvertSrcUnitData2TgtUnit(2, 2, 3, 0, 24, 5.0), 5000.0);
    MArray<double> lengths{1.0, 2.0};
    units.ConvertTgtUnitData2CurUnitArray(2, 1, 1, lengths);
    EXPECT_EQ(lengths, (MArray<double>{10.0 / 1000, 2.0 * (10.0 / 1000)}));
}

} // namespace zvi::lib::test
