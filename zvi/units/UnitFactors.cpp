#include "zvi/units/UnitFactorsDetail.h"

#include "zvi/units/UnitRecords.h"

#include <array>
#include <cmath>
#include <cstdint>
#include <iterator>

namespace zvi::lib::units {

namespace {

using Base = BaseFactors const &;

/// A time factor below this is no time: its inverse answers 0.
constexpr double kNoTime = 1e-13;

/// Powers are products from the left; this is the rounding that stored documents hold.
constexpr double Sq(double x) {
    return x * x;
}
constexpr double Cube(double x) {
    return x * x * x;
}
constexpr double Pow4(double x) {
    return x * x * x * x;
}
constexpr double Pow6(double x) {
    return x * x * x * x * x * x;
}

/// Kinds that share a formula; 0 ends a shorter list.
constexpr std::size_t kLongestKindList = 7;

struct KindFormula {
    std::array<std::int16_t, kLongestKindList> kinds;
    double (*factor)(Base);
};

// Inner quotients stand as they are evaluated: the reduced form differs in the last bit, or on a zero.
constexpr KindFormula kFormulas[] = {
    {{1, 22, 117}, [](Base u) { return u.L; }},
    {{2, 16}, [](Base u) { return u.F; }},
    {{3}, [](Base u) { return u.L / Sq(u.T); }},
    {{9, 88}, [](Base u) { return Sq(u.L); }},
    {{10, 69}, [](Base u) { return Cube(u.L); }},
    {{11}, [](Base u) { return Pow4(u.L); }},
    {{12, 15, 47, 97}, [](Base u) { return u.F * u.L; }},
    {{13, 86}, [](Base u) { return (u.L * u.F) / u.L; }},
    {{14, 46}, [](Base u) { return u.F / u.L; }},
    {{17, 18, 67}, [](Base u) { return u.F / Sq(u.L); }},
    {{19, 68, 71}, [](Base u) { return u.F / Cube(u.L); }},
    {{21, 59}, [](Base u) { return u.T; }},
    {{23, 32, 52, 55, 95}, [](Base u) { return u.L / u.T; }},
    {{24, 102}, [](Base u) { return u.M; }},
    {{25}, [](Base u) { return Sq(u.L) * u.M; }},
    {{26}, [](Base u) { return u.M / u.L; }},
    {{91}, [](Base u) { return u.massOfIndex / u.L; }},
    {{27}, [](Base u) { return u.M / Sq(u.L); }},
    {{29, 33, 56, 65, 73, 96, 119}, [](Base u) { return 1 / u.T; }},
    {{30}, [](Base u) { return u.F / u.T; }},
    {{31}, [](Base u) { return u.F * u.L / u.T; }},
    {{34}, [](Base u) { return Pow6(u.L); }},
    {{37, 75, 77}, [](Base u) { return u.H; }},
    {{38, 128}, [](Base u) { return u.H / u.M; }},
    {{39}, [](Base u) { return Cube(u.L) / u.T; }},
    {{40}, [](Base u) { return u.H / Sq(u.L); }},
    {{41}, [](Base u) { return (u.H / u.L) / u.T; }},
    {{42, 81}, [](Base u) { return u.H / Cube(u.L); }},
    {{43, 44}, [](Base u) { return Sq(u.L) / u.F; }},
    {{45, 48, 90, 111, 118}, [](Base u) { return 1 / u.L; }},
    {{49}, [](Base u) { return u.M / Cube(u.L); }},
    {{53, 54}, [](Base u) { return Sq(u.L) / u.T; }},
    {{57}, [](Base u) { return u.F * u.T / u.L; }},
    {{58, 98}, [](Base u) { return u.F * u.L * u.T; }},
    {{60}, [](Base u) { return u.L * 0.01; }},
    {{63}, [](Base u) { return Sq(u.L) * u.F; }},
    {{64}, [](Base u) { return Sq(u.F); }},
    {{70, 112, 113}, [](Base u) { return 1 / Sq(u.L); }},
    {{72}, [](Base u) { return u.M * u.L; }},
    {{74}, [](Base u) { return 1 / Sq(u.T); }},
    {{76}, [](Base u) { return u.H / (u.L * u.L); }},
    {{78, 84}, [](Base u) { return u.H / (Sq(u.L) / u.T); }},
    {{79}, [](Base u) { return u.H / (Cube(u.L) * u.T); }},
    {{82}, [](Base u) { return u.H / u.T; }},
    {{85}, [](Base u) { return u.L * u.F / Cube(u.L); }},
    {{87}, [](Base u) { return std::fabs(u.T) < kNoTime ? 0.0 : 1 / u.T; }},
    {{89}, [](Base u) { return Cube(u.L) / u.F; }},
    {{92}, [](Base u) { return u.massOfIndex / (u.L * u.T); }},
    {{93}, [](Base u) { return Sq(u.T) / Sq(u.L); }},
    {{94, 100}, [](Base u) { return 1 / Sq(u.L); }},
    {{99}, [](Base u) { return u.massOfForce / u.T; }},
    {{101}, [](Base u) { return Sq(u.L) / (u.H / u.T); }},
    {{103}, [](Base u) { return (u.L / u.T) / u.L; }},
    {{104}, [](Base u) { return u.M / Cube(u.T); }},
    {{105}, [](Base u) { return (u.L / Sq(u.T)) / u.T; }},
    {{106}, [](Base u) { return u.M / u.T; }},
    {{107, 109, 116}, [](Base u) { return 1 / Cube(u.L); }},
    {{114}, [](Base u) { return u.T / Sq(u.L); }},
    // These two read the length table with the time index, deliberately: stored documents hold them so.
    {{121}, [](Base u) { return 1 / u.lengthOfTime; }},
    {{122}, [](Base u) { return 1 / Sq(u.lengthOfTime); }},
    {{123}, [](Base u) { return (u.M / u.T) * Sq(u.L); }},
    {{124}, [](Base u) { return Sq(u.L) / Cube(u.T); }},
    {{125}, [](Base u) { return (u.F / u.L) / u.T; }},
    {{126}, [](Base u) { return Sq(u.T) * u.F / Pow4(u.L); }},
    {{127}, [](Base u) { return u.F * u.T / Sq(u.L); }},
};

constexpr std::uint8_t kNoFormula = 0xFF;
static_assert(std::size(kFormulas) < kNoFormula);

constexpr auto kFormulaOfKind = [] {
    std::array<std::uint8_t, kUnitKindCount> formulas{};
    formulas.fill(kNoFormula);
    for (std::size_t i = 0; i < std::size(kFormulas); ++i) {
        for (std::int16_t const kind : kFormulas[i].kinds) {
            if (kind == 0)
                break;
            // A kind that stood in two lines would not compile: the array has no such entry.
            auto const place = static_cast<std::size_t>(kind);
            formulas.at(formulas[place] == kNoFormula ? place : formulas.size()) = static_cast<std::uint8_t>(i);
        }
    }
    return formulas;
}();

} // namespace

double KindFactor(int kind, BaseFactors const &base) {
    if (kind < 0 || kind >= kUnitKindCount)
        return 1.0;
    std::uint8_t const formula = kFormulaOfKind[static_cast<std::size_t>(kind)];
    return formula == kNoFormula ? 1.0 : kFormulas[formula].factor(base);
}

} // namespace zvi::lib::units
