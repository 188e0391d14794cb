#include "zvi/core/WideNumber.h"

#include "zvi/core/NumberDigitsDetail.h"
#include "zvi/core/WideUnits.h"

namespace zvi::lib {

int WideToInt(wchar_t const *text) {
    if (!text)
        return 0;
    while (IsBlankUnit(*text))
        ++text;
    return core::SignedDigits(text);
}

} // namespace zvi::lib
