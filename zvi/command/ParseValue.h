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

/// The part of a value that expressions compute with: an integer or a double.
struct ParseNumber {
    std::int32_t kind;
    /// Equal to `kind` for a value as it was typed, `kParseComputed` once it was computed.
    std::int32_t shape;
    /// The member that `kind` names; a repeat item holds the repeated value in `real`.
    union {
        std::int32_t integer;
        double real;
    };

    static ParseNumber Integer(std::int32_t value, std::int32_t shape = kParseInteger) {
        ParseNumber result;
        result.SetInteger(value, shape);
        return result;
    }

    static ParseNumber Double(double value, std::int32_t shape = kParseDouble) {
        ParseNumber result;
        result.SetDouble(value, shape);
        return result;
    }

    void SetInteger(std::int32_t value, std::int32_t newShape = kParseInteger) {
        kind = kParseInteger;
        shape = newShape;
        integer = value;
    }

    void SetDouble(double value, std::int32_t newShape = kParseDouble) {
        kind = kParseDouble;
        shape = newShape;
        real = value;
    }

    /// The value of an integer or a double.
    double AsDouble() const { return kind == kParseInteger ? integer : real; }
};

/// The value that every symbol of the grammar carries.
struct ParseValue : ParseNumber {
    /// By-to range: first value, bound, step.
    std::int32_t from;
    std::int32_t to;
    std::int32_t by;
    /// Repeat item: how often.
    std::int32_t count;
};

} // namespace zvi::lib
