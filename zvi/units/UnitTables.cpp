#include "zvi/units/UnitTables.h"

#include "zvi/units/BaseUnitsDetail.h"
#include "zvi/units/MUnitCtrl.h"
#include "zvi/units/UnitLabelsDetail.h"

#include <algorithm>
#include <set>
#include <utility>

namespace zvi::lib {

namespace {

/// Collects the labels of one choice of base units after the other.
class LabelCollector {
public:
    LabelCollector() { m_units.Initialize(0); }

    void Add(T_UNIT_INDEX const &index) {
        m_units.SetUnitIndexCurrent(index, 0);
        for (int kind = 1; kind < kUnitKindCount; ++kind) {
            CString label;
            m_units.GetUnitSystem(kind, label);
            if (!label.IsEmpty() && m_seen.emplace(kind, label).second)
                m_labels.push_back({kind, label, index, FactorOf(kind, index)});
        }
    }

    std::vector<UnitLabel> TakeByKind() {
        std::stable_sort(m_labels.begin(), m_labels.end(),
                         [](UnitLabel const &a, UnitLabel const &b) { return a.kind < b.kind; });
        return std::move(m_labels);
    }

private:
    double FactorOf(int kind, T_UNIT_INDEX const &index) const {
        return m_units.GetConvertFactorTgtUnit(index.force, index.length, index.mass, index.heat, index.time, kind);
    }

    MUnitCtrl m_units{nullptr};
    std::set<std::pair<int, CString>> m_seen;
    std::vector<UnitLabel> m_labels;
};

} // namespace

T_UNIT_NAMEFACT GetBaseUnits(int neutralUnit) {
    T_UNIT_NAMEFACT names;
    units::FillUnitNames(names, units::NeutralLengthsOf(neutralUnit));
    return names;
}

T_UNIT_INDEX GetUnitSystemIndex(int type) {
    return units::UnitPreset(type);
}

bool HasUnitLabel(int kind) {
    return units::IsLabelled(kind);
}

std::vector<UnitLabel> ListUnitLabels() {
    T_UNIT_NAMEFACT const names = GetBaseUnits(units::kNeutralMillimetre);
    LabelCollector labels;
    for (T_UNIT_INDEX i; i.force < names.forceCount; ++i.force) {
        i.mass = i.force;
        for (i.length = 0; i.length < names.lengthCount; ++i.length) {
            for (i.time = 0; i.time <= units::kDay; ++i.time) {
                for (i.heat = 0; i.heat < names.heatCount; ++i.heat)
                    labels.Add(i);
            }
        }
    }
    return labels.TakeByKind();
}

} // namespace zvi::lib
