#include "apps/zvi/eval/hints/Mistakes.h"

#include "apps/zvi/common/Characters.h"
#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/WideText.h"

#include <algorithm>
#include <cmath>

namespace zvi::app {

namespace {

using Failed = FailedText;
using lib::ParseFaultKind;

/// What to write for an exponent that is not read, by its value; NaN: it has none. The first row that is seen counts,
/// here and in the tables below.
struct ExponentRow {
    bool (*seen)(Failed const &, double value);
    char const *hint;
};

constexpr ExponentRow kExponents[] = {
    {[](Failed const &, double value) { return value == 0.0; }, "an exponent of 0 is not read, the power is 1"},
    {[](Failed const &, double value) { return value < 0.0 && value == std::trunc(value); },
     "an exponent must be an integer above 0; divide by the power"},
    {[](Failed const &f, double value) { return value == std::trunc(value) && ReadsDoubles(f.settings.mode); },
     "an exponent must be an integer, and this mode reads every number as a decimal; x^2 is x*x, or use --mode "
     "grid-rel"},
    {[](Failed const &, double value) { return value == std::trunc(value); },
     "an exponent must be an integer, written without a point"},
    {[](Failed const &, double value) { return value == 0.5; }, "an exponent must be an integer; x^0.5 is sqrt(x)"},
    {[](Failed const &, double) { return true; }, "an exponent must be an integer; x^y is exp(y*ln(x))"},
};

bool IsRepeat(std::wstring const &item) {
    return item.find(L'@') != kNowhere;
}

/// What to say of an item that is not read by itself.
struct ItemRow {
    bool (*seen)(Failed const &, std::wstring const &item);
    char const *hint; ///< behind "ITEM" where it begins with a blank
};

constexpr ItemRow kItems[] = {
    {[](Failed const &f, std::wstring const &) { return f.settings.mode == EvalMode::kPoints; },
     "a point has one to three coordinates, numbers all"},
    {[](Failed const &f, std::wstring const &item) {
         return IsRepeat(item) && f.Fault() == ParseFaultKind::kRepeatTwice;
     },
     "an item has one @, as in 3@2"},
    {[](Failed const &f, std::wstring const &item) {
         return IsRepeat(item) && f.Fault() == ParseFaultKind::kRepeatCount && !ReadsDoubles(f.settings.mode);
     },
     "the count in front of @ is an integer, as in 3@2"},
    {[](Failed const &, std::wstring const &item) { return IsRepeat(item); },
     " is a repeat, which --mode grid-rel and grid-abs take"},
    {[](Failed const &f, std::wstring const &item) { return f.ValueOf(item, EvalMode::kGridRel).has_value(); },
     " is no integer (a quotient never is); --mode grid-rel takes any numbers"},
    {[](Failed const &f, std::wstring const &) { return f.Fault() == ParseFaultKind::kRangeStep; },
     "a range needs a step that leads from its first number to its last; a single number stands alone"},
    {[](Failed const &f, std::wstring const &) { return f.Fault() == ParseFaultKind::kNoInteger; }, " is no integer"},
    {[](Failed const &f, std::wstring const &) { return f.Fault() == ParseFaultKind::kRangeEnds; },
     "a range is FIRSTtoLAST or FIRSTtoLASTbySTEP, its ends plain integers without sign"},
};

/// Whether a part of TO or BY stands at the place or before it.
bool IsByMarker(Failed const &failed) {
    constexpr std::wstring_view kMarkers = L"TOBYtoby";
    std::size_t const before = ItemBefore(failed.typed, failed.Place());
    return failed.IsHere(kMarkers) || (before != kNowhere && kMarkers.find(failed.typed[before]) != kNowhere);
}

/// Whether the text ends behind an operand.
bool EndsWithOperand(Failed const &failed) {
    std::size_t const last = ItemBefore(failed.typed, failed.typed.size());
    return last != kNowhere && (IsNameChar(failed.typed[last]) || failed.typed[last] == L')');
}

/// What to say of an unexpected token by the character it begins with.
struct PlaceRow {
    bool (*seen)(Failed const &);
    char const *hint; ///< behind the character where it begins with a blank
};

constexpr PlaceRow kPlaces[] = {
    {[](Failed const &f) { return f.Here() == 0 && EndsWithOperand(f); }, "a bracket is not closed"},
    {[](Failed const &f) { return f.Here() == 0; }, "the text ends where a number is expected"},
    {[](Failed const &f) { return f.IsHere(L"TtBb") && !ReadsIntegers(f.settings.mode); },
     "T and B stand for TO and BY, as in 1to9by2, which --mode nodes reads"},
    {[](Failed const &f) { return f.IsHere(L"."); }, "a number has one decimal point"},
    {IsByMarker, "the ends of a range are plain integers, without sign or parentheses"},
    {[](Failed const &f) { return IsNameChar(f.Here()) || f.IsHere(L"("); },
     "an operator is missing here, or a comma in a list"},
    {[](Failed const &f) { return f.IsHere(L","); }, "a comma has no place here"},
    {[](Failed const &f) { return f.IsHere(L"+-*/^@<)]"); }, " stands where a number is expected"},
    {[](Failed const &) { return true; }, " has no meaning here"},
};

/// The first item beyond those that the mode takes.
Span SurplusItem(Failed const &failed) {
    std::vector<Span> const items = Items(failed.line);
    std::size_t const most = failed.settings.mode == EvalMode::kPosition ? 3 : 2;
    bool const tooMany = failed.Fault() == ParseFaultKind::kExtraArgument && items.size() > most && items[most].length;
    return tooMany ? failed.SpanOfLine(items[most].begin, items[most].End()) : Span{failed.Place(), 1};
}

/// The hint of a row, behind what it speaks of where it begins with a blank.
std::string HintOf(std::string const &subject, char const *hint) {
    return *hint == ' ' ? subject + hint : hint;
}

/// The modes that may read what another one does not, and the characters one of which their texts begin with.
constexpr std::pair<EvalMode, std::wstring_view> kOtherModes[] = {
    {EvalMode::kPoints, L"["}, {EvalMode::kPosition, L"@"}, {EvalMode::kGridRel, L""}, {EvalMode::kNodes, L""}};

} // namespace

std::optional<Mistake> FindZeroDivisor(FailedText const &failed) {
    std::string const divisor = failed.Typed(failed.CulpritSpan());
    return Mistake{failed.CulpritSpan(),
                   divisor == "0" ? "division by zero" : "division by zero: " + divisor + " is 0"};
}

std::optional<Mistake> FindExponent(FailedText const &failed) {
    EvalMode const mode = ReadsDoubles(failed.settings.mode) ? EvalMode::kNumber : EvalMode::kGridRel;
    double const value = failed.ValueOf(failed.Culprit(), mode).value_or(std::nan(""));
    auto const row = std::find_if(std::begin(kExponents), std::end(kExponents),
                                  [&](ExponentRow const &entry) { return entry.seen(failed, value); });
    return Mistake{failed.CulpritSpan(), row->hint};
}

std::optional<Mistake> FindItem(FailedText const &failed) {
    if (failed.Fault() == ParseFaultKind::kUnexpectedToken || ReadsOneExpression(failed.settings.mode))
        return std::nullopt;
    for (Span const &item : Items(failed.line)) {
        if (item.length == 0)
            continue;
        Span const where = failed.SpanOfLine(item.begin, item.End());
        std::wstring const typed(Part(failed.typed, where));
        if (failed.Other(typed, failed.settings.mode).parsed)
            continue;
        for (ItemRow const &row : kItems) {
            if (row.seen(failed, typed))
                return Mistake{where, HintOf(Utf8Of(typed), row.hint)};
        }
        return std::nullopt;
    }
    return std::nullopt;
}

std::optional<Mistake> FindOtherMode(FailedText const &failed) {
    wchar_t const begin = failed.At(NextItem(failed.typed, 0));
    bool const hasRange = failed.typed.find_first_of(L"Tt") != kNowhere;
    for (auto const &[mode, begins] : kOtherModes) {
        if ((!begins.empty() && begins[0] != begin) || (mode == EvalMode::kGridRel && hasRange) ||
            !failed.Other(failed.typed, mode).parsed)
            continue;
        return Mistake{SurplusItem(failed), Joined("the mode ", EntryOf(failed.settings.mode).name, " takes ",
                                                   EntryOf(failed.settings.mode).takes, "; --mode ", EntryOf(mode).name,
                                                   " takes ", EntryOf(mode).takes)};
    }
    return std::nullopt;
}

std::optional<Mistake> DescribePlace(FailedText const &failed) {
    bool const isPair = failed.Here() >= 0xD800 && failed.Here() <= 0xDBFF && failed.At(failed.Place() + 1) != 0;
    Span const where{failed.Place(), isPair ? 2u : 1u};
    if (failed.Fault() != ParseFaultKind::kUnexpectedToken)
        return Mistake{where, ""};
    auto const row = std::find_if(std::begin(kPlaces), std::end(kPlaces),
                                  [&failed](PlaceRow const &place) { return place.seen(failed); });
    std::string const character =
        failed.Here() == 0 ? "" : Joined("'", Utf8Of(Printable(Part(failed.typed, where))), "'");
    return Mistake{where, HintOf(character, row->hint)};
}

} // namespace zvi::app
