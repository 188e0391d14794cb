#pragma once

#include "zvi/units/UnitRecords.h"

#include <array>

namespace zvi::lib::units {

/// What labels are made of: the current names of the base units, and how a power is written.
struct LabelPieces {
    CString L;
    CString F;
    CString M;
    CString H;
    CString T;

    enum class Power {
        kWatt,        ///< heat in J, time in sec
        kKilowatt,    ///< heat in kJ, time in sec
        kHeatOverTime ///< any other pair: heat and time spelled out
    } power = Power::kHeatOverTime;
};

using LabelArray = std::array<CString, kUnitKindCount>;

/// Whether the quantity kind has a label.
bool IsLabelled(int kind);

/// Rebuilds the labels of all kinds, in a fixed order. Labels that show the hour or the day copy the texts of kinds 35
/// and 36 as they stand at that moment; in the very first rebuild those are still empty for the labels that come before
/// them. Deliberate: what products printed first reads so.
void RebuildUnitLabels(LabelPieces const &pieces, LabelArray &labels);

/// The label of a kind that has one, built afresh.
CString MakeLegendLabel(int kind, LabelPieces const &pieces);

} // namespace zvi::lib::units
