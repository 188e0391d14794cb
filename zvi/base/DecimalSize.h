#pragma once

#include <algorithm>
#include <cassert>
#include <charconv>
#include <limits>
#include <string_view>

namespace zvi::lib::base {

/// Whether a decimal text that no double can hold is too large rather than too small, by the exponent of its first
/// digit that is not zero. The text is a whole number of `std::from_chars`: digits follow its exponent's mark.
inline bool IsTooLarge(std::string_view text) {
    std::size_t const mark = text.find_first_of("eE");
    std::string_view const digits = text.substr(0, mark);
    std::size_t const point = std::min(digits.find('.'), digits.size());
    std::size_t const first = digits.find_first_of("123456789");
    if (first == std::string_view::npos)
        return false;
    long exponent = static_cast<long>(point) - static_cast<long>(first);
    if (mark != std::string_view::npos) {
        std::string_view written = text.substr(mark + 1);
        assert(!written.empty());
        bool const negative = written.front() == '-';
        if (negative || written.front() == '+')
            written.remove_prefix(1);
        long size = 0;
        if (std::from_chars(written.data(), written.data() + written.size(), size).ec != std::errc{})
            size = std::numeric_limits<int>::max();
        exponent += negative ? -size : size;
    }
    return exponent > 0;
}

} // namespace zvi::lib::base
