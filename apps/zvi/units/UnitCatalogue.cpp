#include "apps/zvi/units/UnitCatalogue.h"

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

/// Whether `typed` has a capital M where the label has a small one, blanks and "*" left out of both.
bool MakesSmallM(std::string const &label, std::string const &typed) {
    for (std::size_t i = 0; i < label.size(); ++i) {
        if (typed[i] == 'M' && label[i] == 'm' && i + 1 < typed.size() && typed[i + 1] != '^')
            return true;
    }
    return false;
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

UnitCatalogue::UnitCatalogue() {
    for (lib::UnitLabel const &label : lib::ListUnitLabels()) {
        m_labels.push_back({label.kind, Utf8Of(label.label), label.index, label.factor});
        m_plain.push_back(PlainLabel(m_labels.back().label));
    }
}

std::vector<UnitLabel> UnitCatalogue::Find(std::string const &typed) const {
    std::string const wanted = PlainLabel(typed);
    std::vector<UnitLabel> found;
    for (std::size_t i = 0; i < m_labels.size(); ++i) {
        if (m_plain[i] == wanted)
            found.push_back(m_labels[i]);
    }
    return found;
}

std::vector<UnitLabel> UnitCatalogue::FindLoosely(std::string const &typed) const {
    std::string const wanted = WithoutStars(PlainLabel(typed));
    std::vector<UnitLabel> found;
    std::set<std::string> spellings;
    for (std::size_t i = 0; i < m_labels.size(); ++i) {
        std::string const plain = WithoutStars(m_plain[i]);
        if (SameNoCase(plain, wanted) && !MakesSmallM(plain, wanted)) {
            found.push_back(m_labels[i]);
            spellings.insert(m_plain[i]);
        }
    }
    return spellings.size() == 1 ? found : std::vector<UnitLabel>{};
}

} // namespace zvi::app
