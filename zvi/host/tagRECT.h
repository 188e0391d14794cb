#pragma once

#include "zvi/Export.h"

/// A rectangle on a surface, in the units of that; on Windows it is the host's own.
#ifdef _WIN32
struct tagRECT;
#else
struct tagRECT {
    int left;   ///< x of the left side
    int top;    ///< y of the upper side
    int right;  ///< x of the right side
    int bottom; ///< y of the lower side
};
#endif

namespace zvi::host {

/// From the left side to the right one.
ZVI_API long long WidthOf(tagRECT const &rectangle);

} // namespace zvi::host
