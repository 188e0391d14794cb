#include "zvi/command/ParseFault.h"

namespace zvi::lib {

char const *ParseFaultText(ParseFaultKind kind) {
    switch (kind) {
    case ParseFaultKind::kNone:
    case ParseFaultKind::kNoCoordinate:
    case ParseFaultKind::kIntegerOverflow:
    case ParseFaultKind::kNotFinite:
        return "";
    case ParseFaultKind::kUnexpectedToken:
        return "syntax error";
    case ParseFaultKind::kExtraArgument:
        return "extra arguement!";
    case ParseFaultKind::kRepeatCount:
        return "Syntax error : Iteration Number must be integer !";
    case ParseFaultKind::kRepeatTwice:
        return "Syntax error : Iteration Define Error !";
    case ParseFaultKind::kInverseSine:
        return "asin(x) , acos(x) ==> ( -1 <= x <= 1 )";
    case ParseFaultKind::kRightAngleTangent:
        return "Function error tan(90)";
    default:
        return kAnyFaultText;
    }
}

} // namespace zvi::lib
