#include "zvi/core/WideNumber.h"

#include "zvi/core/WideUnits.h"

#include <algorithm>
#include <cstdint>
#include <limits>

namespace zvi::lib {

int WideToInt(wchar_t const *text) {
    if (!text)
        return 0;
    while (IsBlankUnit(*text))
        ++text;
    bool const negative = *text == L'-';
    if (negative || *text == L'+')
        ++text;
    std::int64_t const largest = std::int64_t{std::numeric_limits<int>::max()} + (negative ? 1 : 0);
    std::int64_t magnitude = 0;
    for (; *text >= L'0' && *text <= L'9'; ++text)
        magnitude = std::min(magnitude * 10 + (*text - L'0'), largest);
    return static_cast<int>(negative ? -magnitude : magnitude);
}

} // namespace zvi::lib
