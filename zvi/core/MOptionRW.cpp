#include "zvi/core/MOptionRW.h"

namespace zvi::lib {

MOptionRW::~MOptionRW() = default;

// NOLINTNEXTLINE(performance-unnecessary-value-param): the signature is the one that callers know
int MOptionRW::GetCategoryData(CString, OptionCategory **) {
    return 0;
}

} // namespace zvi::lib
