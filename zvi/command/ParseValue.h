#pragma once

#include <cstdint>

namespace zvi::lib {

/// What a value of the command language is.
enum ParseKind : std::int32_t {
    kParseInteger = 1,
    kParseDouble = 2,
    kParseComputed = 3, ///< only as a shape: the value came out of an operator, a parenthesis or a function
    kParseRepeat = 7,
    kParseByTo = 9
};

/// The value that every symbol of the grammar carries.
struct ParseValue {
    std::int32_t kind;
    /// Equal to `kind` for a value as it was typed, `kParseComputed` once it was computed.
    std::int32_t shape;
    /// The member that `kind` names; a repeat item holds the repeated value in `real`.
    union {
        std::int32_t integer;
        double real;
    };
    /// By-to range: first value, bound, step.
    std::int32_t from;
    std::int32_t to;
    std::int32_t by;
    /// Repeat item: how often.
    std::int32_t count;

    static ParseValue Integer(std::int32_t value, std::int32_t shape = kParseInteger) {
        ParseValue result{};
        result.kind = kParseInteger;
        result.shape = shape;
        result.integer = value;
        return result;
    }

    static ParseValue Double(double value, std::int32_t shape = kParseDouble) {
        ParseValue result{};
        result.kind = kParseDouble;
        result.shape = shape;
        result.real = value;
        return result;
    }

    /// The value of an integer or a double.
    double AsDouble() const { return kind == kParseInteger ? integer : real; }
};

} // namespace zvi::lib
