#pragma once

#include "zvi/Export.h"

#include <cstdint>

namespace zvi::lib {

/// Why a text of the command language could not be read.
enum class ParseFaultKind : std::int32_t {
    kNone,              ///< nothing is wrong
    kTooLong,           ///< longer than the scanner's input store
    kUnexpectedToken,   ///< a token that nothing can go on with; at the end of the line: something is missing there
    kTooManyNumbers,    ///< more numbers and variables than the symbol table holds
    kTooManyArguments,  ///< more arguments than a parse may hold
    kExtraArgument,     ///< more items than are wanted
    kExtraCoordinate,   ///< more than three coordinates in a bracket or behind "@"
    kNoNumber,          ///< an item that is no number where numbers are wanted
    kNoCoordinate,      ///< an item of a bare position that is no number: the parse goes on, and nothing is reported
    kNoInteger,         ///< an item that is no integer where integers are wanted
    kErrorWord,         ///< the word AGR_ERROR, or BLANK_ARG behind the head of a list
    kRepeatCount,       ///< the count of a repeat item is no integer
    kRepeatTwice,       ///< a repeat item has a second "@"
    kRangeEnds,         ///< an end of a range is no integer
    kRangeStep,         ///< the step of a range does not lead from its first number to its last
    kZeroDivisor,       ///< the divisor is zero
    kExponent,          ///< the exponent is no integer, or is zero
    kInverseSine,       ///< asin or acos of a number beyond -1 and 1
    kRightAngleTangent, ///< tan of exactly 90
    kIntegerOverflow,   ///< an integer beyond 32 bits, which wraps around or is cut; no failure
    kNotFinite          ///< a number that became infinite or NaN; no failure
};

/// What is wrong with a text, and where. Places are indices into the text of `Parser::_Parsing`; after any other entry
/// into `NormalizeCommandText` of what was typed, whose `sources` lead on to the typed character.
struct ParseFault {
    ParseFaultKind kind = ParseFaultKind::kNone; ///< why
    /// What is at fault, from `begin` to before `end`: the unexpected token, the divisor, the exponent, the call of
    /// the function, the number or the operator with its right operand that is beyond its range. Empty, where the
    /// reading stopped, for every other kind.
    std::int32_t begin = 0;
    std::int32_t end = 0; ///< one behind its last character
    /// Where the reading stopped: the begin of the first token that was not taken in; 0 for kTooLong.
    std::int32_t stop = 0;
};

/// The last report of every fault, and the only one of most.
inline constexpr char kAnyFaultText[] = "Syntax Error";

/// The first report of a fault of this kind, in the parser's own words; empty for kNone, kNoCoordinate,
/// kIntegerOverflow and kNotFinite.
ZVI_API char const *ParseFaultText(ParseFaultKind kind);

} // namespace zvi::lib
