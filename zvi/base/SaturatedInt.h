#pragma once

#include <limits>

namespace zvi::lib::base {

/// `value` cut to a whole number. What is beyond the range of `int` gives its end, what is not a number gives 0.
inline int SaturatedInt(double value) {
    if (value != value)
        return 0;
    if (value <= static_cast<double>(std::numeric_limits<int>::min()))
        return std::numeric_limits<int>::min();
    if (value >= static_cast<double>(std::numeric_limits<int>::max()))
        return std::numeric_limits<int>::max();
    return static_cast<int>(value);
}

} // namespace zvi::lib::base
