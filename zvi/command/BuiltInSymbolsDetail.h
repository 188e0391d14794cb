#pragma once

#include "zvi/command/ParseFault.h"
#include "zvi/command/SymbolTable.h"

namespace zvi::lib::command {

/// How many functions and constants every table knows.
inline constexpr int kBuiltInSymbolCount = 17;

/// They are, in the order in which they are looked up. The functions of angles take or give degrees.
extern TagSymbolNode const kBuiltInSymbols[kBuiltInSymbolCount];

/// Why a symbol that is a function has no answer at `x`: asin and acos answer for -1 <= x <= 1 alone, and tan refuses
/// exactly 90 (270 and its like give a huge value). kNone when it has one.
ParseFaultKind FunctionFault(TagSymbolNode const &symbol, double x);

} // namespace zvi::lib::command
