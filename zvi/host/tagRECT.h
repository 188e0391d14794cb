#pragma once

#include "zvi/Export.h"

/// A rectangle on a surface, in the units of that; on Windows it is the host's own.
#ifdef _WIN32
struct tagRECT;
#else
struct tagRECT {
    int left;
    int top;
    int right;
    int bottom;
};
#endif

namespace zvi::host {

/// From the left side to the right one.
ZVI_API long long WidthOf(tagRECT const &rectangle);

} // namespace zvi::host
