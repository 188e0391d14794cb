#pragma once

#include "apps/zvi/units/UnitDefinitions.h"

#include <optional>
#include <string>

namespace zvi::app {

/// A product of units such as kN/m^2, in the units of `UnitDefinition`.
struct UnitProduct {
    Dimension dimension;
    double numerator = 1.0;
    double denominator = 1.0;
    bool isTemperature = false; ///< a degree alone, which might be meant as a place on the scale
};

/// What became of the reading of a label.
struct UnitReading {
    std::optional<UnitProduct> product; ///< nothing when the label cannot be read
    std::string unknown;                ///< the word that is no unit; empty where the fault is another
};

/// Reads a label in plain form (see `PlainLabel`): units, 1, powers "^2" or plain digits behind a unit, "*" and "/",
/// parentheses. It is read from left to right: "a/b*c" is (a/b)*c. Two units run together, as in "secmm", are one
/// product. The word g is the gram, or, where `isGravity`, 9.80665 m/sec^2.
UnitReading ReadUnitProduct(std::string const &plain, bool isGravity);

/// How many `to` one `from` is, by the numbers alone: whether they have one dimension is for the caller to see.
double FactorBetween(UnitProduct const &from, UnitProduct const &to);

} // namespace zvi::app
