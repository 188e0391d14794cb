#include "apps/zvi/common/NumberText.h"

#include "apps/zvi/common/Text.h"

#include <cassert>
#include <charconv>
#include <cmath>

namespace zvi::app {

namespace {

/// Sizes between which a number is written without exponent.
constexpr double kLeastPlain = 1e-5;
constexpr double kLeastWithExponent = 1e16;

/// Long enough for every double in general form with up to 17 digits.
constexpr std::size_t kNumberWidth = 48;

std::string_view WithoutPlus(std::string_view text) {
    bool const signedTwice = text.size() > 1 && (text[1] == '-' || text[1] == '+');
    return !text.empty() && text[0] == '+' && !signedTwice ? text.substr(1) : text;
}

} // namespace

std::optional<double> ParseNumber(std::string_view text) {
    std::string_view const number = WithoutPlus(Trimmed(text));
    double value = 0.0;
    auto const [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    bool const whole = end == number.data() + number.size();
    if (number.empty() || !whole || error != std::errc() || !std::isfinite(value))
        return std::nullopt;
    return value;
}

std::optional<long long> ParseInteger(std::string_view text) {
    std::string_view const number = WithoutPlus(Trimmed(text));
    long long value = 0;
    auto const [end, error] = std::from_chars(number.data(), number.data() + number.size(), value);
    if (number.empty() || end != number.data() + number.size() || error != std::errc())
        return std::nullopt;
    return value;
}

std::string ExactNumber(double value) {
    char buffer[kNumberWidth];
    auto const result = std::to_chars(buffer, buffer + sizeof buffer, value == 0.0 ? 0.0 : value);
    return std::string(buffer, result.ptr);
}

std::string ShortNumber(double value, int digits) {
    assert(digits >= 1 && digits <= std::numeric_limits<double>::max_digits10);
    char buffer[kNumberWidth];
    double const shown = value == 0.0 ? 0.0 : value;
    auto const result = std::to_chars(buffer, buffer + sizeof buffer, shown, std::chars_format::general, digits);
    return std::string(buffer, result.ptr);
}

std::string PlainNumber(double value) {
    if (std::isnan(value))
        return "nan";
    double const size = std::fabs(value);
    if (std::isinf(value) || (size != 0.0 && size < kLeastPlain) || size >= kLeastWithExponent)
        return ExactNumber(value);
    char buffer[32];
    double const shown = value == 0.0 ? 0.0 : value;
    auto const result = std::to_chars(buffer, buffer + sizeof buffer, shown, std::chars_format::fixed);
    return std::string(buffer, result.ptr);
}

} // namespace zvi::app
