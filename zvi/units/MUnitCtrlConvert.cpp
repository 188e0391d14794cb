#include "zvi/units/MUnitCtrl.h"

#include "zvi/units/BaseUnitsDetail.h"

namespace zvi::lib {

using namespace units;

namespace {

// Weight of a unit mass: the acceleration of gravity in m/s^2, in/s^2 and ft/s^2.
constexpr double kGravityInMetres = 9.80665;
constexpr double kGravityInInches = 386.0886;
constexpr double kGravityInFeet = 32.17405;

// How many of a length unit are in a metre, to the digits that stored documents hold.
constexpr double kMillimetresOfMetre = 1000.0;
constexpr double kCentimetresOfMetre = 100.0;
constexpr double kInchesOfMetre = 39.370079;
constexpr double kFeetOfMetre = 3.28084;

bool IsNewton(int force) {
    return force == kNewton || force == kKilonewton;
}

bool IsPound(int force) {
    return force == kLbf || force == kKips;
}

} // namespace

double MUnitCtrl::ConvValueTgtUnit2CurUnit(int force, int length, int kind, double value) {
    return ConvertTgtUnitData2CurUnit(force, length, kind, value);
}

double MUnitCtrl::GetLengthConvertFactorForNeutralUnit(int i) const {
    return i >= 0 && i < kLengthUnitCount ? m_neutralLengths[static_cast<std::size_t>(i)] : 1.0;
}

double MUnitCtrl::ConvertCurUnitData2TgtUnit(int force, int length, int kind, double v) const {
    double const current = FactorAt(m_factorsCurrent, kind);
    double const target = GetConvertFactorTgtUnit(force, length, 0, 0, 0, kind);
    return current == target ? v : (current / target) * v;
}

double MUnitCtrl::ConvertTgtUnitData2CurUnit(int force, int length, int kind, double v) const {
    return ConvertTgtUnitData2CurUnit(force, length, 0, 0, 0, kind, v);
}

double MUnitCtrl::ConvertTgtUnitData2CurUnit(int force, int length, int mass, int heat, int time, int kind,
                                             double v) const {
    double const current = FactorAt(m_factorsCurrent, kind);
    double const target = GetConvertFactorTgtUnit(force, length, mass, heat, time, kind);
    return current == target ? v : (target / current) * v;
}

void MUnitCtrl::ConvertTgtUnitData2CurUnitArray(int force, int length, int kind, MArray<double> &values) const {
    double const current = FactorAt(m_factorsCurrent, kind);
    double const target = GetConvertFactorTgtUnit(force, length, 0, 0, 0, kind);
    if (current == target)
        return;
    double const factor = target / current;
    for (double &value : values)
        value *= factor;
}

double MUnitCtrl::ConvertSrcUnitData2TgtUnit(int tgtForce, int tgtLength, int srcForce, int srcLength, int kind,
                                             double v) const {
    double const source = GetConvertFactorTgtUnit(srcForce, srcLength, srcForce, 0, 0, kind);
    double const target = GetConvertFactorTgtUnit(tgtForce, tgtLength, tgtForce, 0, 0, kind);
    return v * source / target;
}

double MUnitCtrl::GetMassWeightFactor() const {
    if (IsNewton(m_indexCurrent.force))
        return kGravityInMetres;
    if (IsPound(m_indexCurrent.force))
        return m_indexCurrent.length == kInch ? kGravityInInches : kGravityInFeet;
    return 1.0;
}

double MUnitCtrl::UnfoldNewton(double v) const {
    if (!IsNewton(m_indexCurrent.force))
        return v;
    switch (m_indexCurrent.length) {
    case kMillimetre:
        return v * kMillimetresOfMetre;
    case kCentimetre:
        return v * kCentimetresOfMetre;
    case kInch:
        return v * kInchesOfMetre;
    case kFoot:
        return v * kFeetOfMetre;
    default:
        return v;
    }
}

void MUnitCtrl::ConvertUnitVectorIn(MVector<double, 3> &v) const {
    for (double &component : v)
        component = ConvertUnitLengthIn(component);
}

void MUnitCtrl::ConvertUnitVectorOut(MVector<double, 3> &v) const {
    for (double &component : v)
        component = ConvertUnitLengthOut(component);
}

void MUnitCtrl::ConvertUnitVectorPrevious(MVector<double, 3> &v) const {
    for (double &component : v)
        component = ConvertUnitLengthPrevious(component);
}

} // namespace zvi::lib
