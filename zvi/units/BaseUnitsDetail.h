#pragma once

#include "zvi/units/UnitRecords.h"

#include <array>

namespace zvi::lib::units {

// Indices of the base units.
enum LengthUnit { kMillimetre, kCentimetre, kMetre, kInch, kFoot, kMicrometre, kLengthUnitCount };
enum ForceUnit { kKgf, kTonf, kNewton, kKilonewton, kLbf, kKips };
enum MassUnit { kKilogram, kTon, kKilogramOfNewton, kTonOfKilonewton, kLbm, kKip };
enum HeatUnit { kCal, kKcal, kJoule, kBtu, kKilojoule };
enum TimeUnit { kSecond, kMinute, kHour, kDay };

// The neutral length units that can be chosen.
inline constexpr int kNeutralMillimetre = 0;
inline constexpr int kNeutralMetre = 2;

/// Factors of the length units mm, cm, m, in, ft, micrometre for a neutral length unit.
using NeutralLengths = std::array<double, kLengthUnitCount>;

/// The table of the neutral unit; that of mm for a number that is none.
NeutralLengths const &NeutralLengthsOf(int neutralUnit);

/// Names and factors of all base units.
void FillUnitNames(T_UNIT_NAMEFACT &names, NeutralLengths const &lengths);

/// N, mm (or m when that is neutral), kg, sec, J.
T_UNIT_INDEX DefaultUnitIndex(int neutralUnit);

/// The units of a preset, type 0 for a type that is none.
T_UNIT_INDEX const &UnitPreset(int type);

/// Entry of a factor table; 1.0 for an index outside its room.
double FactorOf(double const (&factors)[kUnitTableRoom], int index);

/// Entry of a name table; empty for an index outside its room.
CString NameOf(CString const (&names)[kUnitTableRoom], int index);

} // namespace zvi::lib::units
