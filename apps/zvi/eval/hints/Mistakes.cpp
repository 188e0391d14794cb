#include "apps/zvi/eval/hints/Mistakes.h"

#include "apps/zvi/common/Text.h"

#include <cmath>

namespace zvi::app {

namespace {

using enum lib::ParseFaultKind;

/// The value of an exponent that is not read; NaN if it has none.
double Exponent(Subject const &subject) {
    FailedText const &failed = subject.failed;
    EvalMode const mode = ReadsDoubles(failed.Mode()) ? EvalMode::kNumber : EvalMode::kGridRel;
    return failed.ValueOf(failed.Culprit(), mode).value_or(std::nan(""));
}

/// What is said of values by the fault that they are.
constexpr MistakeRow kValues[] = {
    {kRightAngleTangent, nullptr, "angles are in degrees, and the tangent of 90 has no value"},
    {kIntegerOverflow, nullptr, "integers go from -2147483648 to 2147483647; numbers with a point go further"},
    {kNotFinite, nullptr, "this has no value, or one beyond the largest number of 1.8e308"},
    {kInverseSine, nullptr, "asin and acos take a number from -1 to 1"},
    {kZeroDivisor, [](auto &s) { return s.typed == "0"; }, "division by zero"},
    {kZeroDivisor, nullptr, "division by zero: % is 0"},
    {kExponent, [](auto &s) { return s.failed.MayNameMany(); }, ""},
    {kExponent, [](auto &s) { return Exponent(s) == 0.0; }, "an exponent of 0 is not read, the power is 1"},
    {kExponent, [](auto &s) { return Exponent(s) == 0.5; }, "an exponent must be an integer; x^0.5 is sqrt(x)"},
    {kExponent, [](auto &s) { return Exponent(s) != std::trunc(Exponent(s)); },
     "an exponent must be an integer; x^y is exp(y*ln(x))"},
    {kExponent, [](auto &s) { return Exponent(s) < 0.0; },
     "an exponent must be an integer above 0; divide by the power"},
    {kExponent, [](auto &s) { return ReadsDoubles(s.failed.Mode()); },
     "an exponent must be an integer, and this mode reads every number as a decimal; x^2 is x*x, or use --mode "
     "grid-rel"},
    {kExponent, nullptr, "an exponent must be an integer, written without a point"},
};

} // namespace

constinit Search const kWrongValue{CulpritOf, kValues};

std::optional<Subject> CulpritOf(FailedText const &failed) {
    return Subject{failed, failed.CulpritSpan()};
}

std::string FirstSeen(std::span<MistakeRow const> rows, Subject const &subject) {
    for (MistakeRow const &row : rows) {
        if ((row.fault != kAnyFault && row.fault != subject.failed.Fault()) || (row.seen && !row.seen(subject)))
            continue;
        std::string const found = row.find ? row.find(subject) : "";
        if (row.find && found.empty())
            continue;
        std::string hint = row.hint;
        ReplaceAll(hint, "%", subject.typed);
        if (row.find)
            ReplaceAll(hint, "$", found);
        return hint;
    }
    return "";
}

} // namespace zvi::app
