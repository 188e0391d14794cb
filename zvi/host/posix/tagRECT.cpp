#include "zvi/host/tagRECT.h"

namespace zvi::host {

long long WidthOf(tagRECT const &rectangle) {
    return static_cast<long long>(rectangle.right) - rectangle.left;
}

} // namespace zvi::host
