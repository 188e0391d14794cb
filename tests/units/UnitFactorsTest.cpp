#include "zvi/units/MUnitCtrl.h"

#include <gtest/gtest.h>

#include <cmath>

using zvi::lib::MUnitCtrl;

namespace {

/// kgf, ft, lbm, Btu, hr: no two factors alike and none of them 1.
constexpr int kForce = 0;
constexpr int kLength = 4;
constexpr int kMass = 4;
constexpr int kHeat = 3;
constexpr int kTime = 2;

/// The dimension of a kind as powers of the base units.
struct Dimension {
    int kind;
    int force;
    int length;
    int mass;
    int heat;
    int time;
};

// What each quantity is, written down apart from its formula.
constexpr Dimension kDimensions[] = {
    {1, 0, 1, 0, 0, 0},    {2, 1, 0, 0, 0, 0},    {3, 0, 1, 0, 0, -2},   {9, 0, 2, 0, 0, 0},    {10, 0, 3, 0, 0, 0},
    {11, 0, 4, 0, 0, 0},   {12, 1, 1, 0, 0, 0},   {13, 1, 0, 0, 0, 0},   {14, 1, -1, 0, 0, 0},  {15, 1, 1, 0, 0, 0},
    {16, 1, 0, 0, 0, 0},   {17, 1, -2, 0, 0, 0},  {19, 1, -3, 0, 0, 0},  {21, 0, 0, 0, 0, 1},   {22, 0, 1, 0, 0, 0},
    {23, 0, 1, 0, 0, -1},  {24, 0, 0, 1, 0, 0},   {25, 0, 2, 1, 0, 0},   {26, 0, -1, 1, 0, 0},  {27, 0, -2, 1, 0, 0},
    {29, 0, 0, 0, 0, -1},  {30, 1, 0, 0, 0, -1},  {31, 1, 1, 0, 0, -1},  {34, 0, 6, 0, 0, 0},   {37, 0, 0, 0, 1, 0},
    {38, 0, 0, -1, 1, 0},  {39, 0, 3, 0, 0, -1},  {40, 0, -2, 0, 1, 0},  {41, 0, -1, 0, 1, -1}, {42, 0, -3, 0, 1, 0},
    {43, -1, 2, 0, 0, 0},  {44, -1, 2, 0, 0, 0},  {45, 0, -1, 0, 0, 0},  {46, 1, -1, 0, 0, 0},  {47, 1, 1, 0, 0, 0},
    {48, 0, -1, 0, 0, 0},  {49, 0, -3, 1, 0, 0},  {53, 0, 2, 0, 0, -1},  {57, 1, -1, 0, 0, 1},  {58, 1, 1, 0, 0, 1},
    {63, 1, 2, 0, 0, 0},   {64, 2, 0, 0, 0, 0},   {70, 0, -2, 0, 0, 0},  {72, 0, 1, 1, 0, 0},   {74, 0, 0, 0, 0, -2},
    {76, 0, -2, 0, 1, 0},  {78, 0, -2, 0, 1, 1},  {79, 0, -3, 0, 1, -1}, {82, 0, 0, 0, 1, -1},  {84, 0, -2, 0, 1, 1},
    {85, 1, -2, 0, 0, 0},  {86, 1, 0, 0, 0, 0},   {87, 0, 0, 0, 0, -1},  {89, -1, 3, 0, 0, 0},  {91, 0, -1, 1, 0, 0},
    {92, 0, -1, 1, 0, -1}, {93, 0, -2, 0, 0, 2},  {94, 0, -2, 0, 0, 0},  {100, 0, -2, 0, 0, 0}, {101, 0, 2, 0, -1, 1},
    {103, 0, 0, 0, 0, -1}, {104, 0, 0, 1, 0, -3}, {105, 0, 1, 0, 0, -3}, {106, 0, 0, 1, 0, -1}, {107, 0, -3, 0, 0, 0},
    {114, 0, -2, 0, 0, 1}, {117, 0, 1, 0, 0, 0},  {123, 0, 2, 1, 0, -1}, {124, 0, 2, 0, 0, -3}, {125, 1, -1, 0, 0, -1},
    {126, 1, -4, 0, 0, 2}, {127, 1, -2, 0, 0, 1}, {128, 0, 0, -1, 1, 0}, {51, 0, 0, 0, 0, 0},   {80, 0, 0, 0, 0, 0},
    {0, 0, 0, 0, 0, 0},    {200, 0, 0, 0, 0, 0},  {-5, 0, 0, 0, 0, 0},   {108, 0, 0, 0, 0, 0},
};

double FactorOf(MUnitCtrl const &units, int kind) {
    return units.GetConvertFactorTgtUnit(kForce, kLength, kMass, kHeat, kTime, kind);
}

} // namespace

TEST(UnitFactors, EveryKindHasItsDimension) {
    MUnitCtrl units(nullptr);
    units.Initialize(0);
    for (Dimension const &d : kDimensions) {
        double const expected = std::pow(9.80665, d.force) * std::pow(304.8, d.length) * std::pow(0.45359237, d.mass) *
                                std::pow(1055.0, d.heat) * std::pow(3600.0, d.time);
        EXPECT_NEAR(FactorOf(units, d.kind) / expected, 1.0, 1e-14) << d.kind;
    }
}

TEST(UnitFactors, OddKindsReadTheTablesTheyAlwaysRead) {
    MUnitCtrl units(nullptr);
    units.Initialize(0);
    EXPECT_EQ(FactorOf(units, 60), 304.8 * 0.01);
    EXPECT_EQ(FactorOf(units, 99), 1.0 / 3600);  // the mass that goes with kgf
    EXPECT_EQ(FactorOf(units, 121), 1 / 1000.0); // the length at the place of the hour is the metre
    EXPECT_EQ(FactorOf(units, 122), 1 / (1000.0 * 1000.0));
    // A micrometre as length and the ulp that an inner quotient costs.
    EXPECT_EQ(units.GetConvertFactorTgtUnit(4, 5, 0, 2, 0, 13), (0.001 * 4.448223) / 0.001);
}

TEST(UnitFactors, KindsOfOneFormulaHaveItsFactor) {
    struct Row {
        int formula;
        std::initializer_list<int> kinds;
    };
    Row const rows[] = {
        {9, {88}},
        {10, {69}},
        {12, {97}},
        {17, {18, 67}},
        {19, {68, 71}},
        {21, {59}},
        {23, {32, 52, 55, 95}},
        {24, {102}},
        {29, {33, 56, 65, 73, 96, 119}},
        {37, {75, 77}},
        {42, {81}},
        {45, {90, 111, 118}},
        {53, {54}},
        {70, {112, 113}},
        {107, {109, 116}},
        {0, {4, 5, 6, 7, 8, 20, 28, 35, 36, 50, 61, 62, 66, 83, 110, 115, 120}},
    };
    MUnitCtrl units(nullptr);
    units.Initialize(0);
    for (Row const &row : rows) {
        for (int const kind : row.kinds)
            EXPECT_EQ(FactorOf(units, kind), FactorOf(units, row.formula)) << kind;
    }
}

// In these units the reduced form of each differs in the last bit.
TEST(UnitFactors, QuotientsAreEvaluatedInTheirOrder) {
    constexpr double kHourInSeconds = 3600;
    struct Row {
        int kind;
        int length;
        int heat;
        int time;
        double factor;
    };
    Row const rows[] = {
        {31, 4, 0, 1, 9.80665 * 304.8 / 60},
        {41, 1, 1, 1, (4186.0 / 10) / 60},
        {57, 1, 0, 2, 9.80665 * kHourInSeconds / 10},
        {58, 3, 0, 2, 9.80665 * 25.4 * kHourInSeconds},
        {78, 2, 1, 2, 4186 / ((1000.0 * 1000.0) / kHourInSeconds)},
        {79, 1, 3, 3, 1055 / (1000.0 * 86400.0)},
        {101, 0, 1, 2, 1 / (4186 / kHourInSeconds)},
        {103, 1, 0, 3, (10.0 / 86400) / 10},
        {105, 1, 0, 1, (10.0 / 3600) / 60},
        {123, 2, 0, 3, (1.0 / 86400) * 1e6},
        {125, 1, 0, 1, (9.80665 / 10) / 60},
        {127, 1, 0, 2, 9.80665 * kHourInSeconds / 100},
    };
    MUnitCtrl units(nullptr);
    units.Initialize(0);
    for (Row const &row : rows)
        EXPECT_EQ(units.GetConvertFactorTgtUnit(0, row.length, 0, row.heat, row.time, row.kind), row.factor)
            << row.kind;
}

TEST(UnitFactors, CurrentMassGoesWithTheForceUnitExceptForTwoKinds) {
    MUnitCtrl units(nullptr);
    units.Initialize(0);
    units.SetUnitIndexCurrent({3, 0, 4, 1, 2}, 0); // kN with lbm, minutes
    EXPECT_EQ(units.GetConvertFactorCurrent(24), 1000);
    EXPECT_EQ(units.GetConvertFactorCurrent(26), 1000);
    EXPECT_EQ(units.GetConvertFactorCurrent(99), 1000.0 / 60);
    EXPECT_EQ(units.GetConvertFactorCurrent(91), 0.45359237);
    EXPECT_EQ(units.GetConvertFactorCurrent(92), 0.45359237 / 60);
    EXPECT_EQ(units.GetConvertFactorCurrent(51), 60.0);
    EXPECT_EQ(units.GetConvertFactorTgtUnit(3, 0, 4, 2, 1, 51), 1.0);
    EXPECT_EQ(units.GetConvertFactorCurrent(129), 1.0);
    EXPECT_EQ(units.GetConvertFactorCurrent(-1), 1.0);
}

TEST(UnitFactors, TargetConversionsGoBothWays) {
    MUnitCtrl units(nullptr);
    units.Initialize(2, 3, 0, 2); // m, kN
    // 1 kN/m^2 in kgf/cm^2, by the definitions of the units.
    double const pressure = units.ConvertCurUnitData2TgtUnit(0, 1, 17, 1.0);
    EXPECT_NEAR(pressure, 1000 / 9.80665 / 1e4, 1e-15);
    EXPECT_NEAR(units.ConvertTgtUnitData2CurUnit(0, 1, 17, pressure), 1.0, 1e-15);
    EXPECT_EQ(units.ConvValueTgtUnit2CurUnit(0, 1, 17, pressure), units.ConvertTgtUnitData2CurUnit(0, 1, 17, pressure));
    double const third = 1.0 / 3.0;
    EXPECT_EQ(units.ConvertCurUnitData2TgtUnit(3, 2, 17, third), third);
    // Target heat is in cal; a target mass by index is what it says.
    EXPECT_EQ(units.ConvertTgtUnitData2CurUnit(3, 2, 37, 1.0), 4.186);
    EXPECT_EQ(units.ConvertTgtUnitData2CurUnit(3, 2, 4, 2, 0, 24, 2000.0), (0.45359237 / 1000) * 2000.0);
    EXPECT_EQ(units.ConvertSrcUnitData2TgtUnit(2, 2, 3, 0, 24, 5.0), 5000.0);
    zvi::MArray<double> lengths{1.0, 2.0};
    units.ConvertTgtUnitData2CurUnitArray(2, 1, 1, lengths);
    EXPECT_EQ(lengths[0], 10.0 / 1000);
    EXPECT_EQ(lengths[1], 2.0 * (10.0 / 1000));
}
