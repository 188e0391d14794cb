#pragma once

#include "zvi/units/UnitRecords.h"

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

    /// The labels that `typed` means: as they stand, or with the signs and aliases that people use (middle dots, raised
    /// digits, "**", "um", "s", "MPa", without square brackets and blanks). Empty when there is none.
    std::vector<UnitLabel> Find(std::string const &typed) const;

    /// The labels that `typed` means without regard to case and "*", where they read alike; empty where they do not,
    /// or where a capital M, which stands for a million, would become a small one.
    std::vector<UnitLabel> FindLoosely(std::string const &typed) const;

private:
    std::vector<UnitLabel> m_labels;
    std::vector<std::string> m_plain; ///< the labels in the form in which they are compared
};

/// The form in which labels are compared; see `UnitCatalogue::Find`.
std::string PlainLabel(std::string const &label);

} // namespace zvi::app
