#pragma once

#include "zvi/Export.h"
#include "zvi/core/CString.h"
#include "zvi/core/MArray.h"
#include "zvi/core/MVector.h"
#include "zvi/interface/IUnitCtrl.h"
#include "zvi/units/UnitRecords.h"

#include <array>
#include <cstdint>
#include <vector>

class CDocument;

namespace zvi::lib {

/// Number of the message "WM_GLOBAL_UIUPDATE_MESSAGE", registered when the library loads. The application's main
/// window receives it after a unit change with notice: first parameter 0x27190000, second the document.
extern ZVI_API std::uint32_t const _globalUIUpdateMessage;

/// The unit system of one document: the units the user works in, the factors between those and the neutral units in
/// which every value is stored (force N, mass kg, heat J, time sec, length mm or m), the factors before the last
/// change, and the labels to print.
///
/// A value of a quantity kind comes in by multiplying by the factor of its kind and goes out by dividing. Factors are
/// computed once per change of units; a conversion reads an array and multiplies. zvi/units/UnitKinds.h names the
/// kinds, zvi/units/UnitTables.h lists their labels. A kind outside 0..128 or without a formula has the factor 1.0.
///
/// A unit index outside 0..9 finds the factor 1.0 and an empty name; nothing here fails or throws. Construct, set the
/// neutral unit if it is not mm, call `Initialize`, then change units as often as you like. One thread per object.
class ZVI_API MUnitCtrl : public zvi_interface::IUnitCtrl {
public:
    /// An object without usable units: all factors are 1.0, all labels empty, the unit system type is -1.
    explicit MUnitCtrl(CDocument *document);
    /// Copies all units, factors, labels and saved states; the document is the same.
    MUnitCtrl(MUnitCtrl const &) = default;
    /// Likewise.
    MUnitCtrl &operator=(MUnitCtrl const &) = default;

    // --- Factors (virtual operations in the order of IUnitCtrl) ---

    /// Factor of the kind in current units. The mass in it is the one that goes with the force unit, except for kinds
    /// 91 and 92, which take the chosen mass; kind 51 is 60.0. Both are deliberate.
    double GetConvertFactorCurrent(int kind) override { return FactorAt(m_factorsCurrent, kind); }
    /// The same in the units before the last change.
    double GetConvertFactorPrevious(int kind) override { return FactorAt(m_factorsPrevious, kind); }
    /// 0 (mm) or 2 (m); any other value changes nothing. The next `Initialize` or `InitValue` makes it effective.
    void SetNeutralUnit(int neutralUnit) override;
    /// 0 (mm) or 2 (m), as last set.
    int GetNeutralUnit() override { return m_neutralUnit; }
    /// The same as `ConvertTgtUnitData2CurUnit` with four arguments.
    double ConvValueTgtUnit2CurUnit(int force, int length, int kind, double value) override;
    /// Forgets the saved states; the document is left alone.
    ~MUnitCtrl() override;

    /// Factor of the kind in the units of the given indices. Note the order: force, length, mass, heat, time.
    double GetConvertFactorTgtUnit(int force, int length, int mass, int heat, int time, int kind) const;

    /// Entry i of the neutral length table (mm, cm, m, in, ft, micrometre in neutral units); 1.0 for i outside 0..5.
    double GetLengthConvertFactorForNeutralUnit(int i) const;

    // --- State ---

    /// Fills the default tables and indices, makes the default tables current, and sets all current factors to 1.0.
    void InitValue();
    /// `InitValue`, then these units with the default mass and without notice; forgets all saved states.
    void Initialize(int length, int force, int time, int heat);
    /// `InitValue`, then the preset of that type without notice; forgets all saved states. When the type is the stored
    /// one, the factors stay at the 1.0 that `InitValue` left.
    void Initialize(int type);

    /// The preset last set, -1 before.
    int GetUnitSystemType() const { return m_unitSystemType; }
    /// Applies a preset: 0 N mm kg sec J, 1 N m kg sec J, 2 N mm ton sec J, 3 lbf ft lbm sec Btu, 4 kgf cm kg sec J,
    /// 5 lbf in lbm sec Btu; any other type is stored and gets the units of type 0. The stored type changes nothing:
    /// no notice, and the previous factors stay.
    void SetUnitSystemType(int type, int notify);
    /// These units with the default mass; the stored type stays.
    void SetUnitSystemType(int length, int force, int time, int heat, int notify);
    /// These length and force units with the current mass, time and heat.
    void SetUnitSystemTypeLF(int length, int force, int notify);

    /// Makes the units current: the current factors become the previous ones, then factors and labels are rebuilt.
    /// With a non-zero `notify` the registered `IUnitListener`s are called with the document, then the application's
    /// main window gets `_globalUIUpdateMessage`; both before this returns.
    void SetUnitIndexCurrent(T_UNIT_INDEX const &index, int notify);

    /// The base tables of the neutral unit.
    void GetUnitNameDefault(T_UNIT_NAMEFACT &names) const { names = m_namesDefault; }
    /// The base tables that conversions use; the same since the last `InitValue`.
    void GetUnitNameCurrent(T_UNIT_NAMEFACT &names) const { names = m_namesCurrent; }
    /// The units that `InitValue` sets.
    void GetUnitIndexDefault(T_UNIT_INDEX &index) const { index = m_indexDefault; }
    /// The units of the last `SetUnitIndexCurrent`.
    void GetUnitIndexCurrent(T_UNIT_INDEX &index) const { index = m_indexCurrent; }

    /// Keeps the current indices and both factor arrays on a stack.
    void SaveUnitChangeFactor();
    /// Takes back what the last unmatched save kept; nothing without one. Labels are not touched: they still show the
    /// units of the last `SetUnitIndexCurrent`.
    void RestoreUnitChangeFactor();

    /// The document given at construction.
    CDocument *GetDoc() const { return m_document; }

    // --- Labels ---

    /// Name of the current length unit, such as "mm"; the three below name the other bases.
    void GetUnitSystemLength(CString &label) const;
    /// Such as "N".
    void GetUnitSystemForce(CString &label) const;
    /// Such as "J".
    void GetUnitSystemHeat(CString &label) const;
    /// Such as "sec".
    void GetUnitSystemTime(CString &label) const;

    /// Label of the kind, such as "N/mm^2", as the last change of units left it: 1. A kind without a label: 0 and an
    /// empty text. A labelled kind before the first change of units gives 1 and an empty text.
    int GetUnitSystem(int kind, CString &label) const;
    /// The label for a legend, built at each call from the current base names: 1; "None" and 0 for a kind without one.
    int GetUnitSystem4Legend(int kind, CString &label) const;
    /// The labels of `n` kinds, each distinct one once. See `T_UNIT_SYSTEM`.
    void GetUnitSystemCtrl(int n, int const *kinds, T_UNIT_SYSTEM &system) const;

    // --- Conversions of a kind ---

    /// From current to neutral units: v * factor.
    double ConvertUnitDataIn(int kind, double v) const { return v * FactorAt(m_factorsCurrent, kind); }
    /// From neutral to current units: v / factor.
    double ConvertUnitDataOut(int kind, double v) const { return v / FactorAt(m_factorsCurrent, kind); }
    /// From the units before the last change to those after it: (previous factor * v) / current factor.
    double ConvertUnitDataPrevious(int kind, double v) const {
        return (FactorAt(m_factorsPrevious, kind) * v) / FactorAt(m_factorsCurrent, kind);
    }

    /// From current units to the units of these indices, with kg, cal and sec. `v` itself when the factors are equal.
    double ConvertCurUnitData2TgtUnit(int force, int length, int kind, double v) const;
    /// The way back.
    double ConvertTgtUnitData2CurUnit(int force, int length, int kind, double v) const;
    /// The way back from units given by all five indices.
    double ConvertTgtUnitData2CurUnit(int force, int length, int mass, int heat, int time, int kind, double v) const;
    /// The way back for each element; nothing is touched when the factors are equal.
    void ConvertTgtUnitData2CurUnitArray(int force, int length, int kind, MArray<double> &values) const;
    /// Between two pairs of units: v * source factor / target factor. The force index is also the mass index here,
    /// deliberately, because the mass table is parallel to the force table; heat is cal and time sec.
    double ConvertSrcUnitData2TgtUnit(int tgtForce, int tgtLength, int srcForce, int srcLength, int kind,
                                      double v) const;

    // --- Mass and weight ---

    /// Weight of a unit mass in current units: 9.80665 for N and kN, 386.0886 (in) or 32.17405 (other lengths) for lbf
    /// and kips, 1.0 for kgf and tonf.
    double GetMassWeightFactor() const;
    /// v times `GetMassWeightFactor`.
    double ConvertMassToWeight(double v) const { return v * GetMassWeightFactor(); }
    /// v over `GetMassWeightFactor`.
    double ConvertWeightToMass(double v) const { return v / GetMassWeightFactor(); }
    /// Takes the metre out of a newton when the force unit is N or kN: v times the current lengths in one metre (mm
    /// 1000, cm 100, in 39.370079, ft 3.28084); v itself for any other length or force unit.
    double UnfoldNewton(double v) const;

    // --- Conversions of a base quantity: In multiplies, Out divides, Previous moves over the last change ---

    /// A force from current units to N.
    double ConvertUnitForceIn(double v) const { return v * m_factorsCurrent[kForceKind]; }
    /// A force from N to current units.
    double ConvertUnitForceOut(double v) const { return v / m_factorsCurrent[kForceKind]; }
    /// A force over the last change.
    double ConvertUnitForcePrevious(double v) const { return MovedOver(kForceKind, v); }
    /// A length from current units to the neutral one.
    double ConvertUnitLengthIn(double v) const { return v * m_factorsCurrent[kLengthKind]; }
    /// A length from the neutral unit to current ones.
    double ConvertUnitLengthOut(double v) const { return v / m_factorsCurrent[kLengthKind]; }
    /// A length over the last change.
    double ConvertUnitLengthPrevious(double v) const { return MovedOver(kLengthKind, v); }
    /// Each component is a length, from current units to the neutral one; in place.
    void ConvertUnitVectorIn(MVector<double, 3> &v) const;
    /// The same to current units.
    void ConvertUnitVectorOut(MVector<double, 3> &v) const;
    /// The same over the last change.
    void ConvertUnitVectorPrevious(MVector<double, 3> &v) const;
    /// A mass from current units to kg.
    double ConvertUnitMassIn(double v) const { return v * m_factorsCurrent[kMassKind]; }
    /// Divides by the current force factor, not by the mass factor. Deliberate: stored documents move their masses by
    /// it at a change of units.
    double ConvertUnitMassPrevious(double v) const {
        return v * m_factorsPrevious[kMassKind] / m_factorsCurrent[kForceKind];
    }
    /// A time from current units to sec.
    double ConvertUnitTimeIn(double v) const { return v * m_factorsCurrent[kTimeKind]; }
    /// A time from sec to current units.
    double ConvertUnitTimeOut(double v) const { return v / m_factorsCurrent[kTimeKind]; }
    /// A time over the last change.
    double ConvertUnitTimePrevious(double v) const { return MovedOver(kTimeKind, v); }
    /// A heat from current units to J.
    double ConvertUnitEnergyIn(double v) const { return v * m_factorsCurrent[kHeatKind]; }
    /// A heat from J to current units.
    double ConvertUnitEnergyOut(double v) const { return v / m_factorsCurrent[kHeatKind]; }
    /// A heat over the last change.
    double ConvertUnitEnergyPrevious(double v) const { return MovedOver(kHeatKind, v); }

private:
    using FactorArray = std::array<double, kUnitKindCount>;

    struct SavedUnits {
        T_UNIT_INDEX index;
        FactorArray factorsCurrent;
        FactorArray factorsPrevious;
    };

    // Kinds whose factor is that of a base unit.
    static constexpr std::size_t kLengthKind = 1;
    static constexpr std::size_t kForceKind = 2;
    static constexpr std::size_t kTimeKind = 21;
    static constexpr std::size_t kMassKind = 24;
    static constexpr std::size_t kHeatKind = 37;

    static double FactorAt(FactorArray const &factors, int kind) {
        return static_cast<unsigned int>(kind) < factors.size() ? factors[static_cast<unsigned int>(kind)] : 1.0;
    }

    double MovedOver(std::size_t kind, double v) const { return v * m_factorsPrevious[kind] / m_factorsCurrent[kind]; }

    void ForgetSavedUnits() { m_saved.clear(); }
    void FillCurrentFactors();
    void NotifyUnitChange() const;

    std::int32_t m_hasSixthLength = 0;
    std::array<CString, kUnitKindCount> m_labels;
    std::int32_t m_neutralUnit = 0;
    std::array<double, 6> m_neutralLengths;
    T_UNIT_NAMEFACT m_namesDefault;
    T_UNIT_INDEX m_indexDefault;
    FactorArray m_factorsDefault;
    T_UNIT_NAMEFACT m_namesCurrent;
    T_UNIT_INDEX m_indexCurrent;
    FactorArray m_factorsCurrent;
    FactorArray m_factorsPrevious;
    std::vector<SavedUnits> m_saved;
    CDocument *m_document;
    std::int32_t m_unitSystemType = -1;
};

} // namespace zvi::lib
