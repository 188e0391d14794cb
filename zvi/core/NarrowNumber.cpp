#include "zvi/core/NarrowNumber.h"

#include "zvi/base/DecimalSize.h"
#include "zvi/core/NumberDigitsDetail.h"

#include <charconv>
#include <limits>
#include <string_view>

namespace zvi::lib {

namespace {

char const *BehindBlanks(char const *text) {
    while (*text == ' ' || (*text >= '\t' && *text <= '\r'))
        ++text;
    return text;
}

/// A number without a sign.
double Magnitude(std::string_view text) {
    double value = 0.0;
    char const *const end = text.data() + text.size();
    bool const isHexadecimal = text.starts_with("0x") || text.starts_with("0X");
    if (isHexadecimal &&
        std::from_chars(text.data() + 2, end, value, std::chars_format::hex).ec == std::errc::result_out_of_range)
        return 0.0; // digits by the hundred, before whose range the eye gives up
    if (isHexadecimal)
        return value;
    auto const [stop, failure] = std::from_chars(text.data(), end, value);
    if (failure != std::errc::result_out_of_range)
        return failure == std::errc() ? value : 0.0;
    bool const isTooLarge = base::IsTooLarge({text.data(), static_cast<std::size_t>(stop - text.data())});
    return isTooLarge ? std::numeric_limits<double>::infinity() : 0.0;
}

} // namespace

int NarrowToInt(char const *text) {
    return text ? core::SignedDigits(BehindBlanks(text)) : 0;
}

double NarrowToDouble(char const *text) {
    if (!text)
        return 0.0;
    text = BehindBlanks(text);
    bool const negative = *text == '-';
    if (negative || *text == '+')
        ++text;
    // A second sign begins no number.
    double const magnitude = *text == '-' ? 0.0 : Magnitude(text);
    return negative ? -magnitude : magnitude;
}

} // namespace zvi::lib
