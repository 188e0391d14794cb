#pragma once

namespace zvi::lib::units {

/// The factors that the formulas of the quantity kinds are made of.
struct BaseFactors {
    double L = 1.0;            ///< length
    double F = 1.0;            ///< force
    double M = 1.0;            ///< mass: of the mass index, or of the force index for current factors
    double H = 1.0;            ///< heat
    double T = 1.0;            ///< time
    double massOfForce = 1.0;  ///< mass at the force index
    double massOfIndex = 1.0;  ///< mass at the mass index
    double lengthOfTime = 1.0; ///< entry of the length table at the time index
};

/// Factor of the quantity kind; 1.0 for a kind without a formula.
double KindFactor(int kind, BaseFactors const &base);

} // namespace zvi::lib::units
