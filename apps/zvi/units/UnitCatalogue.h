#pragma once

#include "zvi/units/MUnitCtrl.h"

#include <optional>
#include <string>
#include <vector>

namespace zvi::app {

/// A label of a quantity kind, the base units that it stands for, and its factor to N, mm, kg, sec, J.
struct UnitLabel {
    int kind = 0;
    std::string label; ///< as the library writes it, UTF-8
    lib::T_UNIT_INDEX index;
    double factor = 1.0;
};

/// The labels of every quantity kind over all choices of the base units. A base unit that does not show in a label is
/// the first of its table, the same for all labels of the kind, so that it has no part in their conversions. The mass
/// is the one that goes with the force unit.
class UnitCatalogue {
public:
    UnitCatalogue();

    /// By kind, and in the order of the base units.
    std::vector<UnitLabel> const &Labels() const { return m_labels; }

    /// The labels that `typed` means: as they stand; or with the signs and aliases that people use (middle dots, raised
    /// digits, "**", "um", "s", "MPa", without square brackets and blanks); or, where only one label fits, without
    /// regard to case and "*". Empty when there is none.
    std::vector<UnitLabel> Find(std::string const &typed) const;

    /// The label that comes nearest to `typed` among those of these kinds, or among all when there are none; empty
    /// when none is near.
    std::string Nearest(std::string const &typed, std::vector<int> const &kinds) const;

    /// Factor of the kind in these units.
    double Factor(int kind, lib::T_UNIT_INDEX const &index) const;

private:
    lib::MUnitCtrl m_units;
    std::vector<UnitLabel> m_labels;
    std::vector<std::string> m_plain; ///< the labels in the form in which they are compared
};

/// The form in which labels are compared; see `UnitCatalogue::Find`.
std::string PlainLabel(std::string const &label);

/// A value moved from one label to another.
struct UnitConversion {
    UnitLabel from;
    UnitLabel to;
    double value = 0.0;
    /// The base unit that the labels show and the factor of the kind does not follow, such as "time"; else empty.
    std::string ignoredBase;
};

/// The conversions of `value` by every kind that has both labels, or by `kind` alone. Kinds whose factor ignores a base
/// unit are left out, unless there is no other or `kind` names one. Throws InputError for a label
/// that no kind has, with the nearest, and for two labels without a common kind.
std::vector<UnitConversion> FindConversions(UnitCatalogue const &catalogue, double value, std::string const &from,
                                            std::string const &to, std::optional<int> kind);

} // namespace zvi::app
