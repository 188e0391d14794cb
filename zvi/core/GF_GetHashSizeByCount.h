#pragma once

#include "zvi/Export.h"

namespace zvi {

/// Suggested bin count for a hash table of `count` elements: a prime about a tenth above the bound of its band.
/// A negative count answers as 0 does; ten million and more answer 20000003. No container calls it on its own.
ZVI_API long GF_GetHashSizeByCount(long count);

} // namespace zvi
