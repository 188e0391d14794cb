#include "apps/zvi/eval/hints/Mistakes.h"

#include "apps/zvi/common/Characters.h"
#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/WideText.h"

#include <algorithm>
#include <cmath>

namespace zvi::app {

namespace {

using lib::ParseFaultKind;

/// Where the operand that ends before the operator at `op` begins in the line.
std::size_t OperandStart(std::wstring const &line, std::size_t op) {
    std::size_t begin = op;
    if (begin > 0 && line[begin - 1] == L')') {
        int depth = 0;
        do {
            --begin;
            depth += line[begin] == L')' ? 1 : line[begin] == L'(' ? -1 : 0;
        } while (begin > 0 && depth > 0);
    }
    while (begin > 0 && (IsNameChar(line[begin - 1]) || line[begin - 1] == L'.'))
        --begin;
    return begin;
}

std::string InParentheses(std::string const &operand) {
    return operand.starts_with("(") ? operand : Joined("(", operand, ")");
}

/// "write 2*2*2 or " for a small power; empty for others.
std::string AsProduct(std::string const &base, double exponent) {
    return exponent == 2.0   ? Joined("write ", base, "*", base, " or ")
           : exponent == 3.0 ? Joined("write ", base, "*", base, "*", base, " or ")
                             : "";
}

/// What to write for a power whose exponent is no integer above 0, or not written as one; NaN: it has no value.
std::string ExponentHint(FailedText const &failed, std::string const &base, std::string const &exponent, double value) {
    bool const isWhole = value == std::trunc(value);
    if (value == 0.0)
        return "an exponent of 0 is not read, the power is 1";
    if (isWhole && value < 0.0)
        return "an exponent must be an integer above 0; divide by the power";
    if (isWhole && !ReadsDoubles(failed.settings.mode))
        return "an exponent must be an integer, written without a point";
    if (isWhole)
        return Joined("an exponent must be an integer, and the mode ", failed.Mode(),
                      " reads every number as a decimal; ", AsProduct(base, value), "use --mode grid-rel");
    if (value == 0.5)
        return "an exponent must be an integer; write sqrt" + InParentheses(base);
    bool const isPlain = exponent.find_first_of("+-") == std::string::npos;
    return Joined("an exponent must be an integer; write exp(", isPlain ? exponent : InParentheses(exponent), "*ln",
                  InParentheses(base), ")");
}

std::string RefusedItemHint(FailedText const &failed, std::wstring const &item) {
    std::string const mode = Joined("the mode ", failed.Mode());
    bool const isRepeat = item.find(L'@') != kNowhere;
    if (failed.settings.mode == EvalMode::kPoints)
        return "a point has one to three coordinates, numbers all";
    if (isRepeat && failed.Fault() == ParseFaultKind::kRepeatTwice)
        return "an item has one @, as in 3@2";
    if (isRepeat && failed.Fault() == ParseFaultKind::kRepeatCount && !ReadsDoubles(failed.settings.mode))
        return "the count in front of @ is an integer, as in 3@2";
    if (isRepeat)
        return Joined(mode, " takes no repeat such as ", Utf8Of(item), "; use --mode ",
                      ReadsIntegers(failed.settings.mode) ? "grid-abs or grid-rel" : "grid-rel");
    if (failed.ValueOf(item, EvalMode::kGridRel))
        return Joined(Utf8Of(item),
                      item.find(L'/') != kNowhere ? " is a quotient, which is never an integer; " : " is no integer; ",
                      mode, " takes integers, --mode grid-rel any numbers");
    if (failed.Fault() == ParseFaultKind::kRangeStep)
        return "a range needs a step that leads from its first number to its last; a single number stands alone";
    if (failed.Fault() == ParseFaultKind::kNoInteger)
        return Utf8Of(item) + " is no integer";
    bool const isRange = failed.Fault() == ParseFaultKind::kRangeEnds;
    return isRange ? "a range is FIRSTtoLAST or FIRSTtoLASTbySTEP, its ends plain integers without sign" : "";
}

/// The first item beyond those that the mode takes.
Span SurplusItem(FailedText const &failed) {
    std::vector<Span> const items = Items(failed.line);
    std::size_t const most = failed.settings.mode == EvalMode::kPosition ? 3 : 2;
    bool const tooMany =
        failed.Fault() == ParseFaultKind::kExtraArgument && items.size() > most && items[most].length > 0;
    return tooMany ? failed.SpanOfLine(items[most].begin, items[most].End()) : Span{failed.Place(), 1};
}

/// What is missing at the end of the text.
Mistake DescribeEnd(FailedText const &failed) {
    std::size_t const last = ItemBefore(failed.typed, failed.typed.size());
    bool const behindOperand = last != kNowhere && (IsNameChar(failed.typed[last]) || failed.typed[last] == L')');
    return {{failed.typed.size(), 1},
            failed.Fault() != ParseFaultKind::kUnexpectedToken ? ""
            : behindOperand                                    ? "a bracket is not closed"
                                                               : "the text ends where a number is expected"};
}

/// The name or number at the place, where an operator was expected, to its end.
Span OperandHere(FailedText const &failed) {
    std::size_t end = failed.Place() + 1;
    while (failed.Here() != L'(' && (IsNameChar(failed.At(end)) || failed.At(end) == L'.'))
        ++end;
    return {failed.Place(), end - failed.Place()};
}

/// Whether a part of TO or BY stands at the place or before it.
bool IsByMarker(FailedText const &failed) {
    constexpr std::wstring_view kMarkers = L"TOBYtoby";
    std::size_t const before = failed.Before();
    return failed.IsHere(kMarkers) || (before != kNowhere && kMarkers.find(failed.typed[before]) != kNowhere);
}

/// What is marked at the place, and whether the hint begins with it.
enum class Marked { kCharacter, kOperand, kQuoted };

/// What to say of an unexpected token by the character it begins with. The first row that is seen counts.
struct PlaceRow {
    bool (*seen)(FailedText const &);
    char const *hint;
    Marked marked = Marked::kCharacter;
};

constexpr PlaceRow kPlaces[] = {
    {[](FailedText const &f) { return f.IsHere(L"TtBb") && !ReadsIntegers(f.settings.mode); },
     "T and B stand for TO and BY, as in 1to9by2, which --mode nodes reads"},
    {[](FailedText const &f) { return f.IsHere(L"."); }, "a number has one decimal point"},
    {IsByMarker, "the ends of a range are plain integers, without sign or parentheses"},
    {[](FailedText const &f) { return IsNameChar(f.Here()) || f.IsHere(L"("); },
     "an operator is missing here, or a comma in a list", Marked::kOperand},
    {[](FailedText const &f) { return f.IsHere(L","); }, "a comma has no place here"},
    {[](FailedText const &f) { return IsOperator(f.Here()) || f.IsHere(L")]"); }, " stands where a number is expected",
     Marked::kQuoted},
    {[](FailedText const &) { return true; }, " has no meaning here", Marked::kQuoted},
};

} // namespace

std::optional<Mistake> FindZeroDivisor(FailedText const &failed) {
    std::string const divisor = failed.Typed(failed.CulpritSpan());
    return Mistake{failed.CulpritSpan(),
                   divisor == "0" ? "division by zero" : "division by zero: " + divisor + " is 0"};
}

std::optional<Mistake> FindExponent(FailedText const &failed) {
    EvalMode const mode = ReadsDoubles(failed.settings.mode) ? EvalMode::kNumber : EvalMode::kGridRel;
    std::optional<double> const value = failed.ValueOf(failed.Culprit(), mode);
    Span const where = failed.CulpritSpan();
    std::size_t const op = static_cast<std::size_t>(failed.outcome.fault.begin) - 1;
    std::string const base = failed.Typed(failed.SpanOfLine(OperandStart(failed.line, op), op));
    return Mistake{where, ExponentHint(failed, base, failed.Typed(where), value.value_or(std::nan("")))};
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
        std::string const hint = RefusedItemHint(failed, typed);
        return hint.empty() ? std::nullopt : std::optional(Mistake{where, hint});
    }
    return std::nullopt;
}

std::optional<Mistake> FindOtherMode(FailedText const &failed) {
    wchar_t const begin = failed.At(NextItem(failed.typed, 0));
    bool const hasRange = Upper(failed.typed).find(L'T') != kNowhere;
    for (EvalMode const mode : {EvalMode::kPoints, EvalMode::kPosition, EvalMode::kGridRel, EvalMode::kNodes}) {
        bool const fits =
            (mode != EvalMode::kPoints || begin == L'[') && (mode != EvalMode::kPosition || begin == L'@');
        if (!fits || (mode == EvalMode::kGridRel && hasRange) || !failed.Other(failed.typed, mode).parsed)
            continue;
        EvalModeEntry const &other = EntryOf(mode);
        return Mistake{SurplusItem(failed),
                       Joined("the mode ", failed.Mode(), " takes ", EntryOf(failed.settings.mode).takes, "; --mode ",
                              other.name, " takes ", other.takes)};
    }
    return std::nullopt;
}

std::optional<Mistake> DescribePlace(FailedText const &failed) {
    std::size_t const at = failed.Place();
    if (at >= failed.typed.size())
        return DescribeEnd(failed);
    if (failed.Fault() != ParseFaultKind::kUnexpectedToken)
        return Mistake{{at, 1}, ""};
    bool const isPair = failed.Here() >= 0xD800 && failed.Here() <= 0xDBFF && at + 1 < failed.typed.size();
    Span const character{at, isPair ? 2u : 1u};
    auto const row = std::find_if(std::begin(kPlaces), std::end(kPlaces),
                                  [&failed](PlaceRow const &place) { return place.seen(failed); });
    if (row->marked == Marked::kQuoted)
        return Mistake{character, Joined("'", Utf8Of(Printable(Part(failed.typed, character))), "'", row->hint)};
    return Mistake{row->marked == Marked::kOperand ? OperandHere(failed) : character, row->hint};
}

} // namespace zvi::app
