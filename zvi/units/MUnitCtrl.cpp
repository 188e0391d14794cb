#include "zvi/units/MUnitCtrl.h"

#include "zvi/host/Messages.h"
#include "zvi/interface/IUnitListener.h"
#include "zvi/units/BaseUnitsDetail.h"
#include "zvi/units/UnitFactorsDetail.h"
#include "zvi/units/UnitLabelsDetail.h"

namespace zvi::lib {

using namespace units;

namespace {

/// First parameter of the message that tells the main window of a unit change.
constexpr std::uintptr_t kUnitChangeCode = 0x27190000;

/// One minute in seconds, the current factor of a kind that is always in minutes; `GetConvertFactorTgtUnit` answers
/// 1.0 for it, deliberately.
constexpr int kMinuteKind = 51;
constexpr double kMinuteFactor = 60.0;

LabelPieces::Power PowerOf(T_UNIT_INDEX const &index) {
    if (index.heat == kJoule && index.time == kSecond)
        return LabelPieces::Power::kWatt;
    if (index.heat == kKilojoule && index.time == kSecond)
        return LabelPieces::Power::kKilowatt;
    return LabelPieces::Power::kHeatOverTime;
}

LabelPieces PiecesOf(T_UNIT_NAMEFACT const &names, T_UNIT_INDEX const &index) {
    return {NameOf(names.lengthName, index.length), NameOf(names.forceName, index.force),
            NameOf(names.massName, index.force),    NameOf(names.heatName, index.heat),
            NameOf(names.timeName, index.time),     PowerOf(index)};
}

BaseFactors BaseFactorsOf(T_UNIT_NAMEFACT const &names, T_UNIT_INDEX const &index) {
    BaseFactors base;
    base.L = FactorOf(names.lengthFactor, index.length);
    base.F = FactorOf(names.forceFactor, index.force);
    base.massOfForce = FactorOf(names.massFactor, index.force);
    base.massOfIndex = FactorOf(names.massFactor, index.mass);
    base.M = base.massOfIndex;
    base.H = FactorOf(names.heatFactor, index.heat);
    base.T = FactorOf(names.timeFactor, index.time);
    base.lengthOfTime = FactorOf(names.lengthFactor, index.time);
    return base;
}

} // namespace

std::uint32_t const _globalUIUpdateMessage = host::RegisterMessage(L"WM_GLOBAL_UIUPDATE_MESSAGE");

MUnitCtrl::MUnitCtrl(CDocument *document)
    : m_neutralLengths(NeutralLengthsOf(kNeutralMillimetre)), m_document(document) {
    m_factorsDefault.fill(1.0);
    m_factorsCurrent = m_factorsDefault;
    m_factorsPrevious = m_factorsDefault;
}

MUnitCtrl::~MUnitCtrl() = default;

void MUnitCtrl::SetNeutralUnit(int neutralUnit) {
    if (neutralUnit != kNeutralMillimetre && neutralUnit != kNeutralMetre)
        return;
    m_neutralUnit = neutralUnit;
    m_neutralLengths = NeutralLengthsOf(neutralUnit);
}

void MUnitCtrl::InitValue() {
    m_hasSixthLength = 1;
    FillUnitNames(m_namesDefault, m_neutralLengths);
    m_namesCurrent = m_namesDefault;
    m_factorsCurrent = m_factorsDefault;
    m_indexDefault = DefaultUnitIndex(m_neutralUnit);
}

void MUnitCtrl::Initialize(int length, int force, int time, int heat) {
    InitValue();
    SetUnitSystemType(length, force, time, heat, 0);
    ForgetSavedUnits();
}

void MUnitCtrl::Initialize(int type) {
    InitValue();
    SetUnitSystemType(type, 0);
    ForgetSavedUnits();
}

void MUnitCtrl::SetUnitSystemType(int type, int notify) {
    if (type == m_unitSystemType)
        return;
    m_unitSystemType = type;
    SetUnitIndexCurrent(UnitPreset(type), notify);
}

void MUnitCtrl::SetUnitSystemType(int length, int force, int time, int heat, int notify) {
    SetUnitIndexCurrent({force, length, m_indexDefault.mass, time, heat}, notify);
}

void MUnitCtrl::SetUnitSystemTypeLF(int length, int force, int notify) {
    SetUnitIndexCurrent({force, length, m_indexCurrent.mass, m_indexCurrent.time, m_indexCurrent.heat}, notify);
}

void MUnitCtrl::SetUnitIndexCurrent(T_UNIT_INDEX const &index, int notify) {
    m_factorsPrevious = m_factorsCurrent;
    m_indexCurrent = index;
    FillCurrentFactors();
    RebuildUnitLabels(PiecesOf(m_namesCurrent, m_indexCurrent), m_labels);
    if (notify != 0)
        NotifyUnitChange();
}

void MUnitCtrl::FillCurrentFactors() {
    BaseFactors base = BaseFactorsOf(m_namesCurrent, m_indexCurrent);
    base.M = base.massOfForce;
    for (int kind = 0; kind < kUnitKindCount; ++kind)
        m_factorsCurrent[static_cast<std::size_t>(kind)] = KindFactor(kind, base);
    m_factorsCurrent[kMinuteKind] = kMinuteFactor;
}

void MUnitCtrl::NotifyUnitChange() const {
    zvi_interface::IUnitListener::NotifyUnitChange(m_document);
    host::SendToMainWindow(_globalUIUpdateMessage, kUnitChangeCode, reinterpret_cast<std::intptr_t>(m_document));
}

void MUnitCtrl::SaveUnitChangeFactor() {
    m_saved.push_back({m_indexCurrent, m_factorsCurrent, m_factorsPrevious});
}

void MUnitCtrl::RestoreUnitChangeFactor() {
    if (m_saved.empty())
        return;
    m_indexCurrent = m_saved.back().index;
    m_factorsCurrent = m_saved.back().factorsCurrent;
    m_factorsPrevious = m_saved.back().factorsPrevious;
    m_saved.pop_back();
}

double MUnitCtrl::GetConvertFactorTgtUnit(int force, int length, int mass, int heat, int time, int kind) const {
    return KindFactor(kind, BaseFactorsOf(m_namesCurrent, {force, length, mass, time, heat}));
}

void MUnitCtrl::GetUnitSystemLength(CString &label) const {
    label = NameOf(m_namesCurrent.lengthName, m_indexCurrent.length);
}

void MUnitCtrl::GetUnitSystemForce(CString &label) const {
    label = NameOf(m_namesCurrent.forceName, m_indexCurrent.force);
}

void MUnitCtrl::GetUnitSystemHeat(CString &label) const {
    label = NameOf(m_namesCurrent.heatName, m_indexCurrent.heat);
}

void MUnitCtrl::GetUnitSystemTime(CString &label) const {
    label = NameOf(m_namesCurrent.timeName, m_indexCurrent.time);
}

int MUnitCtrl::GetUnitSystem(int kind, CString &label) const {
    if (!IsLabelled(kind)) {
        label.Empty();
        return 0;
    }
    label = m_labels[static_cast<std::size_t>(kind)];
    return 1;
}

int MUnitCtrl::GetUnitSystem4Legend(int kind, CString &label) const {
    if (!IsLabelled(kind)) {
        label = L"None";
        return 0;
    }
    label = MakeLegendLabel(kind, PiecesOf(m_namesCurrent, m_indexCurrent));
    return 1;
}

void MUnitCtrl::GetUnitSystemCtrl(int n, int const *kinds, T_UNIT_SYSTEM &system) const {
    system = {};
    std::int32_t stored = 0;
    for (int i = 0; i < n; ++i) {
        CString label;
        if (GetUnitSystem(kinds[i], label) == 0) {
            system.indices.PushBack(-1);
            continue;
        }
        std::int32_t place = 0;
        while (place < stored && !(system.labels[place] == label))
            ++place;
        system.indices.PushBack(place);
        if (place == stored && stored < system.capacity)
            system.labels[stored++] = label;
    }
}

} // namespace zvi::lib
