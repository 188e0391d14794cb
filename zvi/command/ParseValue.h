#pragma once

#include <cstdint>

namespace zvi::lib {

/// What a value of the command language is.
enum ParseKind : std::int32_t {
    kParseInteger = 1,  ///< a 32-bit integer
    kParseDouble = 2,   ///< a double
    kParseComputed = 3, ///< only as a shape: the value came out of an operator, a parenthesis or a function
    kParseRepeat = 7,   ///< a count and the value that it repeats
    kParseByTo = 9
};

/// The part of a value that expressions compute with: an integer or a double.
struct ParseNumber {
    std::int32_t kind; ///< one of ParseKind
    /// Equal to `kind` for a value as it was typed, `kParseComputed` once it was computed.
    std::int32_t shape;
    /// The member that `kind` names; a repeat item holds the repeated value in `real`.
    union {
        std::int32_t integer;
        double real;
    };

    /// An integer as it was typed, or of another shape.
    static ParseNumber Integer(std::int32_t value, std::int32_t shape = kParseInteger) {
        ParseNumber result;
        result.SetInteger(value, shape);
        return result;
    }

    /// A double as it was typed, or of another shape.
    static ParseNumber Double(double value, std::int32_t shape = kParseDouble) {
        ParseNumber result;
        result.SetDouble(value, shape);
        return result;
    }

    /// Becomes an integer.
    void SetInteger(std::int32_t value, std::int32_t newShape = kParseInteger) {
        kind = kParseInteger;
        shape = newShape;
        integer = value;
    }

    /// Becomes a double.
    void SetDouble(double value, std::int32_t newShape = kParseDouble) {
        kind = kParseDouble;
        shape = newShape;
        real = value;
    }

    /// Becomes the integer or double that `other` is. Member by member: a copy of all bytes at once would have to wait
    /// until the stores of the members have ended.
    void Set(ParseNumber const &other) {
        if (other.kind == kParseInteger)
            SetInteger(other.integer, other.shape);
        else
            SetDouble(other.real, other.shape);
    }

    /// The value of an integer or a double.
    double AsDouble() const { return kind == kParseInteger ? integer : real; }
};

/// The value that every symbol of the grammar carries.
struct ParseValue : ParseNumber {
    /// By-to range: the first value.
    std::int32_t from;
    std::int32_t to; ///< the bound
    std::int32_t by; ///< the step
    /// Repeat item: how often.
    std::int32_t count;
};

} // namespace zvi::lib
