#pragma once

#include "zvi/Export.h"

namespace zvi::lib {

/// The whole number at the start of `text`: white space, a sign, decimal digits; what follows is ignored. Without
/// digits, and for null, it is 0. A number that does not fit answers the largest or the smallest `int`.
ZVI_API int WideToInt(wchar_t const *text);

} // namespace zvi::lib
