#include "apps/zvi/units/UnitCatalogue.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/NearestName.h"
#include "apps/zvi/common/Text.h"
#include "apps/zvi/common/WideText.h"

#include "zvi/units/UnitTables.h"

#include <algorithm>
#include <cstdint>
#include <set>

namespace zvi::app {

namespace {

struct Spelling {
    std::string_view typed;
    std::string_view plain;
};

/// Signs that stand for those of a label.
constexpr Spelling kSigns[] = {
    {" ", ""},
    {"\t", ""},
    {"[", ""},
    {"]", ""},
    {"**", "^"},
    {"\u00B7", "*"},
    {"\u22C5", "*"},
    {"\u00D7", "*"},
    {"\u00B2", "^2"},
    {"\u00B3", "^3"},
    {"\u2074", "^4"},
    {"\u2076", "^6"},
    {"\u03BC", "\u00B5"},
    {"\u00BA", "\u00B0"},
    {"\u2103", "\u00B0C"},
};

/// Words of a label as people write them too.
constexpr Spelling kWords[] = {
    {"um", "\u00B5m"}, {"inch", "in"}, {"foot", "ft"}, {"feet", "ft"},
    {"s", "sec"},      {"h", "hr"},    {"hour", "hr"}, {"degC", "\u00B0C"},
};

/// Names of whole labels that are products of base units.
constexpr Spelling kNames[] = {
    {"Pa", "N/m^2"}, {"kPa", "kN/m^2"}, {"MPa", "N/mm^2"}, {"psi", "lbf/in^2"}, {"ksi", "kips/in^2"},
};

std::string WithPlainWords(std::string const &label) {
    constexpr char const *kBetween = "*/()^";
    std::string plain;
    for (std::size_t at = 0; at < label.size();) {
        std::size_t const end = std::min(label.find_first_of(kBetween, at), label.size());
        std::string const word = label.substr(at, end - at);
        auto const known = std::find_if(std::begin(kWords), std::end(kWords),
                                        [&word](Spelling const &entry) { return entry.typed == word; });
        plain += known == std::end(kWords) ? word : std::string(known->plain);
        if (end < label.size())
            plain += label[end];
        at = end + 1;
    }
    return plain;
}

/// Products are often written without their sign: kNm.
std::string WithoutStars(std::string label) {
    std::erase(label, '*');
    return label;
}

struct BaseOfIndex {
    char const *name;
    std::int32_t lib::T_UNIT_INDEX::*index;
};

constexpr BaseOfIndex kBases[] = {
    {"force", &lib::T_UNIT_INDEX::force},
    {"length", &lib::T_UNIT_INDEX::length},
    {"time", &lib::T_UNIT_INDEX::time},
    {"heat", &lib::T_UNIT_INDEX::heat},
};

/// A base in which the labels differ and which has no part in the factor.
std::string IgnoredBase(UnitCatalogue const &catalogue, UnitLabel const &from, UnitLabel const &to) {
    for (BaseOfIndex const &base : kBases) {
        lib::T_UNIT_INDEX changed = from.index;
        changed.*base.index = to.index.*base.index;
        changed.mass = changed.force;
        bool const differs = changed.*base.index != from.index.*base.index;
        if (differs && catalogue.Factor(from.kind, changed) == catalogue.Factor(from.kind, from.index))
            return base.name;
    }
    return {};
}

std::vector<int> KindsOf(std::vector<UnitLabel> const &labels) {
    std::vector<int> kinds;
    kinds.reserve(labels.size());
    for (UnitLabel const &label : labels)
        kinds.push_back(label.kind);
    return kinds;
}

[[noreturn]] void RefuseLabel(UnitCatalogue const &catalogue, std::string const &typed, std::vector<int> const &kinds) {
    std::string nearest = catalogue.Nearest(typed, kinds);
    nearest = nearest.empty() ? catalogue.Nearest(typed, {}) : nearest;
    throw InputError(0, "unknown unit label '" + typed + "'; " +
                            (nearest.empty() ? "'zvi units' lists the labels" : "did you mean '" + nearest + "'?"));
}

std::string KindList(std::vector<int> const &kinds) {
    std::string text = kinds.size() == 1 ? "kind " : "kinds ";
    for (std::size_t i = 0; i < kinds.size(); ++i)
        text += (i == 0 ? "" : ", ") + std::to_string(kinds[i]);
    return text;
}

} // namespace

std::string PlainLabel(std::string const &label) {
    std::string plain = label;
    for (Spelling const &sign : kSigns)
        ReplaceAll(plain, sign.typed, sign.plain);
    for (Spelling const &name : kNames) {
        if (plain == name.typed)
            return std::string(name.plain);
    }
    return WithPlainWords(plain);
}

UnitCatalogue::UnitCatalogue() : m_units(nullptr) {
    m_units.Initialize(0);
    for (lib::UnitLabel const &label : lib::ListUnitLabels()) {
        m_labels.push_back({label.kind, Utf8Of(label.label), label.index, label.factor});
        m_plain.push_back(PlainLabel(m_labels.back().label));
    }
}

double UnitCatalogue::Factor(int kind, lib::T_UNIT_INDEX const &index) const {
    return m_units.GetConvertFactorTgtUnit(index.force, index.length, index.force, index.heat, index.time, kind);
}

std::vector<UnitLabel> UnitCatalogue::Find(std::string const &typed) const {
    std::string const wanted = PlainLabel(typed);
    std::string const joined = WithoutStars(wanted);
    std::vector<UnitLabel> found;
    std::vector<UnitLabel> near;
    std::set<std::string> spellings;
    for (std::size_t i = 0; i < m_labels.size(); ++i) {
        if (m_plain[i] == wanted) {
            found.push_back(m_labels[i]);
        } else if (SameNoCase(WithoutStars(m_plain[i]), joined)) {
            near.push_back(m_labels[i]);
            spellings.insert(m_plain[i]);
        }
    }
    return found.empty() && spellings.size() == 1 ? near : found;
}

std::string UnitCatalogue::Nearest(std::string const &typed, std::vector<int> const &kinds) const {
    std::string const wanted = Lowered(PlainLabel(typed));
    std::vector<std::string> candidates;
    std::vector<std::size_t> places;
    for (std::size_t i = 0; i < m_labels.size(); ++i) {
        if (kinds.empty() || std::find(kinds.begin(), kinds.end(), m_labels[i].kind) != kinds.end()) {
            candidates.push_back(Lowered(m_plain[i]));
            places.push_back(i);
        }
    }
    std::string const nearest = NearestName(wanted, candidates);
    auto const found = std::find(candidates.begin(), candidates.end(), nearest);
    return nearest.empty() ? "" : m_labels[places[static_cast<std::size_t>(found - candidates.begin())]].label;
}

std::vector<UnitConversion> FindConversions(UnitCatalogue const &catalogue, double value, std::string const &from,
                                            std::string const &to, std::optional<int> kind) {
    std::vector<UnitLabel> const sources = catalogue.Find(from);
    if (sources.empty())
        RefuseLabel(catalogue, from, {});
    std::vector<UnitLabel> const targets = catalogue.Find(to);
    if (targets.empty())
        RefuseLabel(catalogue, to, KindsOf(sources));
    std::vector<UnitConversion> conversions;
    for (UnitLabel const &source : sources) {
        for (UnitLabel const &target : targets) {
            if (source.kind == target.kind && source.kind == kind.value_or(source.kind)) {
                double const moved = source.factor == target.factor ? value : value * source.factor / target.factor;
                conversions.push_back({source, target, moved, IgnoredBase(catalogue, source, target)});
            }
        }
    }
    // A kind whose factor does not follow a unit that its labels show is for those who ask for it.
    auto const follows = [](UnitConversion const &conversion) { return conversion.ignoredBase.empty(); };
    if (!kind && std::any_of(conversions.begin(), conversions.end(), follows))
        std::erase_if(conversions, [follows](UnitConversion const &conversion) { return !follows(conversion); });
    if (conversions.empty() && kind)
        throw InputError(0, "kind " + std::to_string(*kind) + " has no labels '" + from + "' and '" + to +
                                "'; 'zvi units --kind " + std::to_string(*kind) + "' lists its labels");
    if (conversions.empty())
        throw InputError(0, "'" + from + "' (" + KindList(KindsOf(sources)) + ") and '" + to + "' (" +
                                KindList(KindsOf(targets)) + ") are labels of different kinds of quantity");
    return conversions;
}

} // namespace zvi::app
