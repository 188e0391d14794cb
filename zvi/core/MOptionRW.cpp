#include "zvi/core/MOptionRW.h"

namespace zvi::lib {

MOptionRW::~MOptionRW() = default;

int MOptionRW::GetCategoryData(CString, OptionCategory **) {
    return 0;
}

} // namespace zvi::lib
