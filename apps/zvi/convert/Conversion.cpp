#include "apps/zvi/convert/Conversion.h"

#include "apps/zvi/common/Failure.h"
#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/NearestName.h"
#include "apps/zvi/common/NumberText.h"
#include "apps/zvi/common/Text.h"

#include <algorithm>
#include <cmath>
#include <map>
#include <utility>

namespace zvi::app {

namespace {

/// A label as it was typed, and what it means.
struct Label {
    std::string typed;
    std::vector<UnitLabel> known; ///< the labels of the library that read so
    UnitReading reading;

    std::string Shown() const { return known.empty() ? typed : known.front().label; }
};

/// Reads a label of the library, in which g is gravity and [t] a number.
UnitReading ReadKnown(std::string label) {
    ReplaceAll(label, "[t]", "None");
    return ReadUnitProduct(PlainLabel(label), true);
}

Label ReadLabel(UnitCatalogue const &catalogue, std::string const &typed) {
    Label label{std::string(Trimmed(typed)), catalogue.Find(typed), {}};
    if (label.known.empty()) {
        label.reading = ReadUnitProduct(PlainLabel(typed), false);
        if (!label.reading.product)
            label.known = catalogue.FindLoosely(typed);
    }
    if (!label.known.empty())
        label.reading = ReadKnown(label.known.front().label);
    return label;
}

/// The words of a label in plain form.
std::vector<std::string> WordsOf(std::string const &plain) {
    constexpr char const *kBetween = "*/()^.0123456789";
    std::vector<std::string> words;
    for (std::size_t at = plain.find_first_not_of(kBetween); at != std::string::npos;) {
        std::size_t const end = std::min(plain.find_first_of(kBetween, at), plain.size());
        words.push_back(plain.substr(at, end - at));
        at = plain.find_first_not_of(kBetween, end);
    }
    return words;
}

/// `typed` with the unit put in for `word` that comes nearest to it, among those that give the dimension, or that give
/// any when there is none to give; empty when none is near.
std::string Corrected(std::string const &typed, std::string const &word, std::optional<Dimension> const &wanted) {
    std::string const plain = PlainLabel(typed);
    std::size_t const at = plain.find(word);
    std::vector<std::string> names;
    for (std::string const &name : UnitNames()) {
        UnitReading const reading = ReadUnitProduct(std::string(plain).replace(at, word.size(), name), false);
        if (reading.product && (!wanted || reading.product->dimension == *wanted) && name != word)
            names.push_back(name);
    }
    std::string const nearest = NearestName(word, names);
    return nearest.empty() ? "" : std::string(plain).replace(at, word.size(), nearest);
}

[[noreturn]] void RefuseLabel(Label const &label, Label const &other) {
    std::string const text = Joined("unknown unit label '", label.typed, "'");
    std::string const &unknown = label.reading.unknown;
    if (unknown.empty())
        throw InputError(0, text + "; a label is a product such as kN*m, N/mm^2 or W/(m^2*[\u00B0C])");
    std::string near;
    if (other.reading.product)
        near = Corrected(label.typed, unknown, other.reading.product->dimension);
    near = near.empty() ? Corrected(label.typed, unknown, {}) : near;
    std::string const what = unknown == PlainLabel(label.typed) ? "" : Joined(", '", unknown, "' is no unit");
    throw InputError(0, Joined(text, what, "; ",
                               near.empty() ? "'zvi convert -h' lists the units" : "did you mean '" + near + "'?"));
}

[[noreturn]] void RefuseDimensions(Label const &from, Label const &to) {
    std::string text = Joined("'", from.Shown(), "' is ", DimensionText(from.reading.product->dimension), ", and '",
                              to.Shown(), "' is ", DimensionText(to.reading.product->dimension));
    std::string near;
    for (auto const &[label, other] : {std::pair(&from, &to), std::pair(&to, &from)}) {
        for (std::string const &word : WordsOf(PlainLabel(label->typed)))
            near = near.empty() ? Corrected(label->typed, word, other->reading.product->dimension) : near;
    }
    throw InputError(0, near.empty() ? text : Joined(text, "; did you mean '", near, "'?"));
}

std::vector<KindFactor> KindsOf(Label const &from, Label const &to, std::optional<int> kind) {
    std::vector<KindFactor> kinds;
    for (UnitLabel const &source : from.known) {
        for (UnitLabel const &target : to.known) {
            if (source.kind == target.kind && source.kind == kind.value_or(source.kind))
                kinds.push_back({source.kind, source.factor / target.factor});
        }
    }
    if (kinds.empty() && kind) {
        std::string const number = std::to_string(*kind);
        throw InputError(0, Joined("kind ", number, " has no labels '", from.typed, "' and '", to.typed,
                                   "'; 'zvi units --kind ", number, "' lists its labels"));
    }
    return kinds;
}

/// Whether two results are the same but for the order of operations.
bool Agree(double a, double b) {
    constexpr double kRounding = 4e-15;
    return a == b || std::fabs(a - b) <= kRounding * std::fabs(b) ||
           ShortNumber(a, kShownDigits) == ShortNumber(b, kShownDigits);
}

} // namespace

double Conversion::Apply(double value) const {
    double const factor = FactorBetween(fromUnits, toUnits);
    // The larger of a factor and its inverse is the one without a fraction.
    return factor < 1.0 ? value / FactorBetween(toUnits, fromUnits) : value * factor;
}

std::vector<std::string> Conversion::Notes(double value) const {
    std::string const result = ShortNumber(Apply(value), kShownDigits);
    std::map<std::string, std::string> others; // what kinds give, and which
    bool const isAgreed = std::any_of(kinds.begin(), kinds.end(),
                                      [&](KindFactor const &kind) { return Agree(value * kind.factor, Apply(value)); });
    for (KindFactor const &kind : kinds) {
        if (isAgreed)
            break;
        std::string &numbers = others[ShortNumber(value * kind.factor, kShownDigits)];
        numbers += (numbers.empty() ? "" : ", ") + std::to_string(kind.kind);
    }
    std::vector<std::string> notes;
    notes.reserve(others.size() + 1);
    for (auto const &[other, numbers] : others)
        notes.push_back(Joined("the definitions of the units give ", result, "; the library's own factors of kind ",
                               numbers, " give ", other));
    if (fromUnits.isTemperature && toUnits.isTemperature)
        notes.emplace_back("degrees are converted as differences of temperature");
    return notes;
}

Conversion FindConversion(UnitCatalogue const &catalogue, std::string const &from, std::string const &to,
                          std::optional<int> kind) {
    Label const source = ReadLabel(catalogue, from);
    Label const target = ReadLabel(catalogue, to);
    if (!source.reading.product)
        RefuseLabel(source, target);
    if (!target.reading.product)
        RefuseLabel(target, source);
    if (source.reading.product->dimension != target.reading.product->dimension)
        RefuseDimensions(source, target);
    return {source.Shown(), target.Shown(), *source.reading.product, *target.reading.product,
            KindsOf(source, target, kind)};
}

} // namespace zvi::app
