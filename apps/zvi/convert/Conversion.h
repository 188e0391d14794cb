#pragma once

#include "apps/zvi/units/UnitCatalogue.h"
#include "apps/zvi/units/UnitProduct.h"

#include <optional>
#include <string>
#include <vector>

namespace zvi::app {

/// A kind of quantity that has both labels, and what the library's own factors of that kind make of a conversion.
struct KindFactor {
    int kind = 0;
    double factor = 1.0;
};

/// From one label to another, worked out from the definitions of the units in them.
struct Conversion {
    std::string from; ///< as the library writes the label, or as it was typed
    std::string to;
    UnitProduct fromUnits;
    UnitProduct toUnits;
    std::vector<KindFactor> kinds; ///< those that have both labels, ascending

    double Apply(double value) const;
    /// What to know about the conversion of this value: what the library's own factors give, when those of no kind
    /// give the same in the digits shown; and that degrees are taken as differences.
    std::vector<std::string> Notes(double value) const;
};

/// Digits of a result for people.
inline constexpr int kShownDigits = 15;

/// The conversion between two labels; `kind` is one that must have both. Throws InputError for a label that cannot be
/// read, with the nearest unit, those first that make both labels of one dimension; and for labels of two dimensions.
Conversion FindConversion(UnitCatalogue const &catalogue, std::string const &from, std::string const &to,
                          std::optional<int> kind);

} // namespace zvi::app
