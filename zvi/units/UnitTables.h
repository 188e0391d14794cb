#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"
#include "zvi/units/UnitRecords.h"

#include <vector>

// What the tables of units hold, for an application that offers units for choice. `MUnitCtrl` converts.

namespace zvi::lib {

/// Unit systems that `MUnitCtrl::SetUnitSystemType` knows: 0 to 5.
inline constexpr int kUnitSystemCount = 6;

/// A label of a quantity kind, the base units that it stands for, and its factor.
struct UnitLabel {
    int kind = 0;       ///< of quantity, 1 to 128
    CString label;      ///< as `MUnitCtrl::GetUnitSystem` gives it
    T_UNIT_INDEX index; ///< the first choice of the base units, in the order of the tables, that reads so
    double factor = 1;  ///< to N, mm, kg, sec, J, as `MUnitCtrl::GetConvertFactorTgtUnit` gives it
};

/// The base units with their names and factors to N, mm (or m), kg, J and sec. `neutralUnit` is 0 for mm, 2 for m.
ZVI_API T_UNIT_NAMEFACT GetBaseUnits(int neutralUnit);

/// The units of a unit system; those of system 0 for a number that is none.
ZVI_API T_UNIT_INDEX GetUnitSystemIndex(int type);

/// Whether the quantity kind has a label.
ZVI_API bool HasUnitLabel(int kind);

/// The labels of every quantity kind over all choices of force, length, time (the day included) and heat, each label
/// of a kind once: by kind, and in the order of those tables. A base unit that does not show in a label is the first
/// of its table, the same for all labels of the kind. The mass is the one that goes with the force unit. Takes some
/// milliseconds; keep the list.
ZVI_API std::vector<UnitLabel> ListUnitLabels();

} // namespace zvi::lib
