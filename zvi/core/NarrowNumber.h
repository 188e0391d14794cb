#pragma once

#include "zvi/Export.h"

namespace zvi::lib {

/// The whole number at the start of a text, as `atoi` reads it: white space, a sign, decimal digits; what follows is
/// ignored. Without digits, and for null, it is 0. A number that does not fit answers the largest or the smallest
/// `int`.
ZVI_API int NarrowToInt(char const *text);

/// The number at the start of a text, as `atof` reads it, whatever the process locale: white space, a sign, a decimal
/// number, a hexadecimal one behind "0x", "inf" or "nan"; what follows is ignored. Without a number, and for null, it
/// is 0. A decimal number that is too large answers infinity; one that is too small, and a hexadecimal one out of the
/// range, 0.
ZVI_API double NarrowToDouble(char const *text);

} // namespace zvi::lib
