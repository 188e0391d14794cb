// Where a typed degree becomes a radian, and the other functions of the command language.

#include "zvi/command/BuiltInSymbolsDetail.h"

#include "zvi/base/Pi.h"
#include "zvi/command/Degrees.h"
#include "zvi/math/elementary/Elementary.h"

#include <cassert>
#include <cmath>

namespace zvi::lib::command {

namespace {

/// The one angle whose tangent is refused, in degrees.
constexpr double kRightAngle = 90.0;

// These refuse some arguments and are told by their address; see FunctionFault.
double TanDegrees(double x) {
    return Tan(x * DEG_TO_RAD);
}

double AsinDegrees(double x) {
    return Asin(x) * RAD_TO_DEG;
}

double AcosDegrees(double x) {
    return Acos(x) * RAD_TO_DEG;
}

} // namespace

TagSymbolNode const kBuiltInSymbols[kBuiltInSymbolCount] = {
    {"log", [](double x) { return Log10(x); }, 0},
    {"ln", [](double x) { return Log(x); }, 0},
    {"sqrt", [](double x) { return std::sqrt(x); }, 0},
    {"sin", [](double x) { return Sin(x * DEG_TO_RAD); }, 0},
    {"cos", [](double x) { return Cos(x * DEG_TO_RAD); }, 0},
    {"tan", TanDegrees, 0},
    {"asin", AsinDegrees, 0},
    {"acos", AcosDegrees, 0},
    {"atan", [](double x) { return Atan(x) * RAD_TO_DEG; }, 0},
    {"exp", [](double x) { return Exp(x); }, 0},
    {"deg", [](double x) { return x * RAD_TO_DEG; }, 0},
    {"rad", [](double x) { return x * DEG_TO_RAD; }, 0},
    {"sinh", [](double x) { return Sinh(x); }, 0},
    {"cosh", [](double x) { return Cosh(x); }, 0},
    {"abs", [](double x) { return std::fabs(x); }, 0},
    {"pi", nullptr, base::kPi},
    // phi is not the golden ratio here: existing input relies on its being pi.
    {"phi", nullptr, base::kPi},
};

ParseFaultKind FunctionFault(TagSymbolNode const &symbol, double x) {
    assert(symbol.function);
    if ((symbol.function == AsinDegrees || symbol.function == AcosDegrees) && (x < -1.0 || x > 1.0))
        return ParseFaultKind::kInverseSine;
    if (symbol.function == TanDegrees && x == kRightAngle)
        return ParseFaultKind::kRightAngleTangent;
    return ParseFaultKind::kNone;
}

} // namespace zvi::lib::command
