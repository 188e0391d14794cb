#include "zvi/units/BaseUnitsDetail.h"

#include "zvi/services/MSpecialChar.h"
#include "zvi/units/UnitTables.h"

#include <iterator>

namespace zvi::lib::units {

namespace {

constexpr NeutralLengths kLengthsInMillimetres = {1, 10, 1000, 25.4, 304.8, 0.001};
constexpr NeutralLengths kLengthsInMetres = {0.001, 0.01, 1, 0.0254, 0.3048, 1e-06};

/// The sixth length unit, the micrometre, is named by its sign.
constexpr wchar_t const *kLengthNames[] = {L"mm", L"cm", L"m", L"in", L"ft"};

struct BaseUnit {
    wchar_t const *name;
    double factor;
};

// Factors to N, kg, J and sec.
constexpr BaseUnit kForceUnits[] = {
    {L"kgf", 9.80665}, {L"tonf", 9806.65}, {L"N", 1}, {L"kN", 1000}, {L"lbf", 4.448223}, {L"kips", 4448.223},
};
/// Parallel to the force units: the mass that goes with each.
constexpr BaseUnit kMassUnits[] = {
    {L"kg", 1}, {L"ton", 1000}, {L"kg", 1}, {L"ton", 1000}, {L"lbm", 0.45359237}, {L"kip", 453.59237},
};
constexpr BaseUnit kHeatUnits[] = {
    {L"cal", 4.186}, {L"kcal", 4186}, {L"J", 1}, {L"Btu", 1055}, {L"kJ", 1000},
};
constexpr BaseUnit kTimeUnits[] = {
    {L"sec", 1},
    {L"min", 60},
    {L"hr", 3600},
    {L"day", 86400},
};
/// The day is in the table and not counted: it is known to conversions and not offered for choice.
constexpr std::int32_t kTimeUnitsOffered = 3;

// In the field order of T_UNIT_INDEX: force, length, mass, time, heat.
constexpr T_UNIT_INDEX kPresets[kUnitSystemCount] = {
    {kNewton, kMillimetre, kKilogram, kSecond, kJoule}, //
    {kNewton, kMetre, kKilogram, kSecond, kJoule},      //
    {kNewton, kMillimetre, kTon, kSecond, kJoule},      //
    {kLbf, kFoot, kLbm, kSecond, kBtu},                 //
    {kKgf, kCentimetre, kKilogram, kSecond, kJoule},    //
    {kLbf, kInch, kLbm, kSecond, kBtu},
};

template <std::size_t count>
std::int32_t Fill(CString (&names)[kUnitTableRoom], double (&factors)[kUnitTableRoom], BaseUnit const (&units)[count]) {
    static_assert(count <= kUnitTableRoom);
    for (std::size_t i = 0; i < count; ++i) {
        names[i] = units[i].name;
        factors[i] = units[i].factor;
    }
    return static_cast<std::int32_t>(count);
}

bool IsInTable(int index) {
    return index >= 0 && index < kUnitTableRoom;
}

} // namespace

NeutralLengths const &NeutralLengthsOf(int neutralUnit) {
    return neutralUnit == kNeutralMetre ? kLengthsInMetres : kLengthsInMillimetres;
}

void FillUnitNames(T_UNIT_NAMEFACT &names, NeutralLengths const &lengths) {
    for (std::size_t i = 0; i < std::size(kLengthNames); ++i)
        names.lengthName[i] = kLengthNames[i];
    names.lengthName[kMicrometre] = MSpecialChar::Get(MSpecialChar::kMicro) + L"m";
    for (std::size_t i = 0; i < lengths.size(); ++i)
        names.lengthFactor[i] = lengths[i];
    names.lengthCount = kLengthUnitCount;
    names.forceCount = Fill(names.forceName, names.forceFactor, kForceUnits);
    names.massCount = Fill(names.massName, names.massFactor, kMassUnits);
    names.heatCount = Fill(names.heatName, names.heatFactor, kHeatUnits);
    Fill(names.timeName, names.timeFactor, kTimeUnits);
    names.timeCount = kTimeUnitsOffered;
}

T_UNIT_INDEX DefaultUnitIndex(int neutralUnit) {
    return {kNewton, neutralUnit == kNeutralMetre ? kMetre : kMillimetre, kKilogram, kSecond, kJoule};
}

T_UNIT_INDEX const &UnitPreset(int type) {
    return kPresets[static_cast<unsigned int>(type) < std::size(kPresets) ? type : 0];
}

double FactorOf(double const (&factors)[kUnitTableRoom], int index) {
    return IsInTable(index) ? factors[index] : 1.0;
}

CString NameOf(CString const (&names)[kUnitTableRoom], int index) {
    return IsInTable(index) ? names[index] : CString();
}

} // namespace zvi::lib::units
