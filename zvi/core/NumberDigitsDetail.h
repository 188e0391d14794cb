#pragma once

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <limits>

namespace zvi::lib::core {

/// A sign and decimal digits at the start of a text that ends with a zero; a number that does not fit answers the
/// largest or the smallest `int`.
template <typename Character>
int SignedDigits(Character const *text) {
    assert(text);
    bool const negative = *text == Character('-');
    if (negative || *text == Character('+'))
        ++text;
    std::int64_t const largest = std::int64_t{std::numeric_limits<int>::max()} + (negative ? 1 : 0);
    std::int64_t magnitude = 0;
    for (; *text >= Character('0') && *text <= Character('9'); ++text)
        magnitude = std::min(magnitude * 10 + (*text - Character('0')), largest);
    return static_cast<int>(negative ? -magnitude : magnitude);
}

} // namespace zvi::lib::core
