#include "apps/zvi/eval/Mistakes.h"

#include "apps/zvi/eval/TypedRange.h"

#include "apps/zvi/common/Joined.h"
#include "apps/zvi/common/WideText.h"

#include "zvi/command/Parser.h"

#include <algorithm>
#include <cmath>

namespace zvi::app {

namespace {

constexpr std::size_t kNowhere = std::wstring::npos;

/// Characters of a line that are left for the text behind the longest start word.
constexpr int kLeastRoom = lib::lexer1::kBufferBytes - 30;

/// The text from behind the operator at `op` to where the reading failed, if it is one operand.
std::optional<std::wstring_view> OperandBehind(FailedText const &failed, std::size_t op) {
    std::wstring_view const operand = std::wstring_view(failed.line).substr(op + 1, failed.At() - op - 1);
    int depth = 0;
    for (wchar_t const c : operand) {
        depth += c == L'(' ? 1 : c == L')' ? -1 : 0;
        if (depth < 0 || (depth == 0 && c == L','))
            return std::nullopt;
    }
    return depth == 0 && !operand.empty() ? std::optional(operand) : std::nullopt;
}

/// The last operator `sign` before the failure whose operand is refused.
std::optional<std::size_t> FindOperator(FailedText const &failed, wchar_t sign,
                                        bool (*refused)(FailedText const &, std::wstring_view)) {
    if (failed.outcome.unexpectedToken || failed.line.empty())
        return std::nullopt;
    for (std::size_t op = std::min(failed.At(), failed.line.size()); op-- > 0;) {
        std::optional<std::wstring_view> const operand =
            failed.line[op] == sign ? OperandBehind(failed, op) : std::nullopt;
        if (operand && refused(failed, *operand))
            return op;
    }
    return std::nullopt;
}

std::optional<double> ValueOf(FailedText const &failed, std::wstring_view text, EvalMode mode) {
    EvalOutcome const outcome = failed.Other(text, mode);
    bool const one = outcome.parsed && outcome.groups.size() == 1 && outcome.groups[0].size() == 1;
    return one ? std::optional(outcome.groups[0][0]) : std::nullopt;
}

bool IsZero(FailedText const &failed, std::wstring_view operand) {
    EvalMode const mode = ReadsDoubles(failed.settings.mode) ? EvalMode::kNumber : EvalMode::kGridRel;
    return ValueOf(failed, operand, mode) == 0.0;
}

bool IsNoExponent(FailedText const &failed, std::wstring_view operand) {
    if (ReadsDoubles(failed.settings.mode))
        return ValueOf(failed, operand, EvalMode::kNumber).has_value();
    std::optional<double> const integer = ValueOf(failed, operand, EvalMode::kList);
    return !integer || *integer == 0.0;
}

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

/// A small power as a product; empty for others.
std::string Product(std::string const &base, double exponent) {
    constexpr double kMostFactors = 3.0;
    if (exponent < 1.0 || exponent > kMostFactors)
        return {};
    std::string product = base;
    for (int i = 1; i < static_cast<int>(exponent); ++i)
        product += Joined("*", base);
    return product;
}

std::string WholeExponentHint(FailedText const &failed, std::string const &base, double exponent) {
    if (exponent == 0.0)
        return "an exponent of 0 is not read, the power is 1";
    std::string const product = Product(base, std::fabs(exponent));
    if (exponent < 0.0)
        return "an exponent must be an integer above 0; " +
               (product.empty() ? "divide by the power" : Joined("write 1/", InParentheses(product)));
    if (!ReadsDoubles(failed.settings.mode))
        return "an exponent must be an integer, written without a point";
    std::optional<double> const integer = ValueOf(failed, failed.typed, EvalMode::kInteger);
    bool const isWhole = integer && integer == ValueOf(failed, failed.typed, EvalMode::kGridRel);
    return Joined("an exponent must be an integer, and the mode ", EntryOf(failed.settings.mode).name,
                  " reads every number as a decimal; ", product.empty() ? "" : Joined("write ", product, " or "),
                  "use --mode ", isWhole ? "integer" : "grid-rel");
}

std::string ExponentHint(FailedText const &failed, std::size_t op, std::wstring_view operand) {
    EvalMode const mode = ReadsDoubles(failed.settings.mode) ? EvalMode::kNumber : EvalMode::kGridRel;
    std::optional<double> const value = ValueOf(failed, operand, mode);
    std::string const base = failed.Typed(failed.SpanOfLine(OperandStart(failed.line, op), op));
    if (value && *value == std::trunc(*value))
        return WholeExponentHint(failed, base, *value);
    if (value == 0.5)
        return "an exponent must be an integer; write sqrt" + InParentheses(base);
    std::string const exponent = failed.Typed(failed.SpanOfLine(op + 1, op + 1 + operand.size()));
    bool const plain = exponent.find_first_of("+-") == std::string::npos;
    return Joined("an exponent must be an integer; write exp(", plain ? exponent : InParentheses(exponent), "*ln",
                  InParentheses(base), ")");
}

/// Items of the line, commas inside brackets left alone.
std::vector<Span> Items(std::wstring const &line) {
    std::vector<Span> items;
    std::size_t begin = 0;
    int depth = 0;
    for (std::size_t i = 0; i <= line.size(); ++i) {
        if (i == line.size() || (line[i] == L',' && depth <= 0)) {
            items.push_back({begin, i - begin});
            begin = i + 1;
        } else {
            depth += line[i] == L'(' || line[i] == L'[' ? 1 : line[i] == L')' || line[i] == L']' ? -1 : 0;
        }
    }
    return items;
}

/// What is wrong with a range; empty when it is none.
std::string RangeHint(std::wstring const &item) {
    std::vector<TypedRange> const ranges = TypedRanges(item);
    if (!ranges.empty() && ranges[0].stepValue == 0)
        return "a range needs a step that is not 0";
    if (!ranges.empty() && ranges[0].from < ranges[0].to && !ranges[0].Count())
        return "a range that rises needs a positive step";
    bool const isRange = Upper(item).find(L'T') != kNowhere;
    return isRange ? "a range is FIRSTtoLAST or FIRSTtoLASTbySTEP, its ends plain integers without sign" : "";
}

bool Said(FailedText const &failed, std::string_view words) {
    return std::any_of(failed.outcome.messages.begin(), failed.outcome.messages.end(),
                       [words](std::string const &message) { return message.find(words) != std::string::npos; });
}

std::string RepeatHint(FailedText const &failed, std::string const &shown) {
    if (Said(failed, "Iteration Define"))
        return "an item has one @, as in 3@2";
    if (Said(failed, "Iteration Number") && !ReadsDoubles(failed.settings.mode))
        return "the count in front of @ is an integer, as in 3@2";
    std::string const mode = EntryOf(failed.settings.mode).name;
    return "the mode " + mode + " takes no repeat such as " + shown +
           (ReadsIntegers(failed.settings.mode) ? "; use --mode grid-abs or grid-rel" : "; use --mode grid-rel");
}

std::string RefusedItemHint(FailedText const &failed, std::wstring const &item) {
    std::string const mode = EntryOf(failed.settings.mode).name;
    std::string const shown = Utf8Of(item);
    if (failed.settings.mode == EvalMode::kPoints)
        return "a point has one to three coordinates, numbers all";
    if (item.find(L'@') != kNowhere)
        return RepeatHint(failed, shown);
    if (ValueOf(failed, item, EvalMode::kGridRel)) {
        bool const isQuotient = item.find(L'/') != kNowhere;
        return shown + (isQuotient ? " is a quotient, which is never an integer; " : " is no integer; ") + "the mode " +
               mode + " takes integers, --mode grid-rel any numbers";
    }
    return RangeHint(item);
}

/// The first item beyond those that the mode takes.
Span SurplusItem(FailedText const &failed) {
    std::vector<Span> const items = Items(failed.line);
    std::size_t const most = failed.settings.mode == EvalMode::kPosition ? 3 : 2;
    bool const tooMany = Said(failed, "extra") && items.size() > most && items[most].length > 0;
    return tooMany ? failed.SpanOfLine(items[most].begin, items[most].End()) : Span{failed.Place(), 1};
}

/// What is missing at the end of the text.
Mistake DescribeEnd(FailedText const &failed) {
    std::size_t const last = ItemBefore(failed.typed, failed.typed.size());
    bool const behindOperand = last != kNowhere && (IsNameChar(failed.typed[last]) || failed.typed[last] == L')');
    return {{failed.typed.size(), 1},
            !failed.outcome.unexpectedToken ? ""
            : behindOperand                 ? "a bracket is not closed"
                                            : "the text ends where a number is expected"};
}

/// The name or number that begins at `at` where an operator was expected, to its end.
Span OperandAt(std::wstring const &typed, std::size_t at) {
    std::size_t end = at + 1;
    while (typed[at] != L'(' && end < typed.size() && (IsNameChar(typed[end]) || typed[end] == L'.'))
        ++end;
    return {at, end - at};
}

} // namespace

std::string FailedText::Typed(Span const &span) const {
    return Utf8Of(std::wstring_view(typed).substr(span.begin, span.length));
}

Span FailedText::SpanOfLine(std::size_t from, std::size_t to) const {
    std::size_t const begin = static_cast<std::size_t>(outcome.sources[from]);
    std::size_t const last = static_cast<std::size_t>(outcome.sources[to - 1]);
    return {begin, last >= begin ? last - begin + 1 : 1};
}

EvalOutcome FailedText::Other(std::wstring_view text, EvalMode mode) const {
    EvalSettings other = settings;
    other.mode = mode;
    other.unitSystem.reset();
    return Evaluate(CString(text), other);
}

long long FailedText::NamedNumbers() const {
    long long count = 0;
    for (TypedRange const &range : TypedRanges(typed))
        count += range.Count().value_or(0);
    for (std::size_t at = typed.find(L'@'); at != kNowhere; at = typed.find(L'@', at + 1)) {
        std::size_t begin = at;
        while (begin > 0 && IsDigit(typed[begin - 1]))
            --begin;
        constexpr std::size_t kMostDigits = 12;
        bool const counts = begin < at && at - begin <= kMostDigits;
        count += counts ? std::stoll(typed.substr(begin, at - begin)) : 0;
    }
    return count;
}

std::optional<Mistake> FindTooMuch(FailedText const &failed) {
    if (failed.outcome.line.GetLength() > kLeastRoom && failed.outcome.at == 0)
        return Mistake{{failed.Place(), 1},
                       "the text is too long; a line holds about 2,000 characters, and a B or T "
                       "that stands for BY or TO counts as 12"};
    int numbers = 0;
    for (std::size_t at = 0; at < failed.line.size() && at <= failed.At();) {
        std::size_t const end = EndOfNumber(failed.line, at);
        numbers += end > at;
        at = std::max(end, at + 1);
    }
    if (numbers > lib::SymbolTable::kMostNumbers)
        return Mistake{{failed.Place(), 1}, "a line holds at most 1,000 numbers; write runs as ranges, or two lines"};
    long long const named = failed.NamedNumbers();
    bool const isList = !ReadsDoubles(failed.settings.mode) && !ReadsOneExpression(failed.settings.mode);
    if (isList && named > lib::Parser::kMostArguments)
        return Mistake{{0, failed.typed.size()},
                       "the text names " + std::to_string(named) + " numbers; a list holds at most 10,000,000"};
    return std::nullopt;
}

std::optional<Mistake> FindAssignment(FailedText const &failed) {
    std::size_t const equals = failed.typed.find(L'=');
    std::size_t const first = NextItem(failed.typed, 0);
    if (equals == kNowhere || first >= equals || !IsLetter(failed.typed[first]))
        return std::nullopt;
    return Mistake{{equals, 1}, "a variable is set apart from the text, by --var " + Utf8Of(failed.typed)};
}

std::optional<Mistake> FindFunctionDomain(FailedText const &failed) {
    bool const isTangent = Said(failed, "tan(90)");
    if ((!isTangent && !Said(failed, "asin(x)")) || failed.At() == 0)
        return std::nullopt;
    std::size_t const begin = OperandStart(failed.line, failed.At());
    Span const call = begin < failed.At() ? failed.SpanOfLine(begin, failed.At()) : Span{failed.Place(), 1};
    return Mistake{call, isTangent ? "angles are in degrees, and the tangent of 90 has no value"
                                   : "asin and acos take a number from -1 to 1"};
}

std::optional<Mistake> FindZeroDivisor(FailedText const &failed) {
    std::optional<std::size_t> const op = FindOperator(failed, L'/', IsZero);
    if (!op)
        return std::nullopt;
    Span const divisor = failed.SpanOfLine(*op + 1, failed.At());
    std::string const typed = failed.Typed(divisor);
    return Mistake{divisor, typed == "0" ? "division by zero" : "division by zero: " + typed + " is 0"};
}

std::optional<Mistake> FindExponent(FailedText const &failed) {
    std::optional<std::size_t> const op = FindOperator(failed, L'^', IsNoExponent);
    if (!op)
        return std::nullopt;
    std::wstring_view const operand = std::wstring_view(failed.line).substr(*op + 1, failed.At() - *op - 1);
    return Mistake{failed.SpanOfLine(*op + 1, failed.At()), ExponentHint(failed, *op, operand)};
}

std::optional<Mistake> FindItem(FailedText const &failed) {
    if (failed.outcome.unexpectedToken || ReadsOneExpression(failed.settings.mode))
        return std::nullopt;
    for (Span const &item : Items(failed.line)) {
        if (item.length == 0)
            continue;
        Span const where = failed.SpanOfLine(item.begin, item.End());
        std::wstring const typed = failed.typed.substr(where.begin, where.length);
        if (failed.Other(typed, failed.settings.mode).parsed)
            continue;
        std::string const hint = RefusedItemHint(failed, typed);
        return hint.empty() ? std::nullopt : std::optional(Mistake{where, hint});
    }
    return std::nullopt;
}

std::optional<Mistake> FindOtherMode(FailedText const &failed) {
    std::size_t const first = NextItem(failed.typed, 0);
    wchar_t const begin = first == kNowhere ? L'\0' : failed.typed[first];
    for (EvalMode const mode : {EvalMode::kPoints, EvalMode::kPosition, EvalMode::kGridRel, EvalMode::kNodes}) {
        bool const fits =
            (mode != EvalMode::kPoints || begin == L'[') && (mode != EvalMode::kPosition || begin == L'@');
        bool const hasRange = Upper(failed.typed).find(L'T') != kNowhere;
        if (!fits || (mode == EvalMode::kGridRel && hasRange) || !failed.Other(failed.typed, mode).parsed)
            continue;
        EvalModeEntry const &now = EntryOf(failed.settings.mode);
        EvalModeEntry const &other = EntryOf(mode);
        return Mistake{SurplusItem(failed), Joined("the mode ", now.name, " takes ", now.takes, "; --mode ", other.name,
                                                   " takes ", other.takes)};
    }
    return std::nullopt;
}

Mistake DescribePlace(FailedText const &failed) {
    if (failed.Place() >= failed.typed.size())
        return DescribeEnd(failed);
    std::size_t const at = failed.Place();
    if (!failed.outcome.unexpectedToken)
        return {{at, 1}, ""};
    wchar_t const c = failed.typed[at];
    bool const isPair = c >= 0xD800 && c <= 0xDBFF && at + 1 < failed.typed.size();
    std::string const quoted =
        Joined("'", Utf8Of(Printable(std::wstring_view(failed.typed).substr(at, isPair ? 2 : 1))), "'");
    std::wstring const upper = Upper(failed.typed);
    if ((upper[at] == L'T' || upper[at] == L'B') && !ReadsIntegers(failed.settings.mode))
        return {{at, 1}, "T and B stand for TO and BY, as in 1to9by2, which --mode nodes reads"};
    if (c == L'.')
        return {{at, 1}, "a number has one decimal point"};
    std::size_t const before = ItemBefore(upper, at);
    constexpr std::wstring_view kMarkers = L"TOBY";
    if (kMarkers.find(upper[at]) != kNowhere || (before != kNowhere && kMarkers.find(upper[before]) != kNowhere))
        return {{at, 1}, "the ends of a range are plain integers, without sign or parentheses"};
    if (IsNameChar(c) || c == L'(') {
        return {OperandAt(failed.typed, at), "an operator is missing here, or a comma in a list"};
    }
    if (c == L',')
        return {{at, 1}, "a comma has no place here"};
    if (IsOperator(c) || c == L')' || c == L']') {
        return {{at, 1}, quoted + " stands where a number is expected"};
    }
    return {{at, isPair ? 2u : 1u}, quoted + " has no meaning here"};
}

} // namespace zvi::app
