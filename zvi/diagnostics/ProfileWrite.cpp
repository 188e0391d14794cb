#include "zvi/diagnostics/ProfileWrite.h"

#include "zvi/diagnostics/Profiler.h"

namespace zvi::lib {

ProfileWrite::ProfileWrite(char const *name) noexcept {
    if (Profiler *const profiler = Profiler::Living())
        profiler->StackPush(name);
}

ProfileWrite::~ProfileWrite() {
    if (Profiler *const profiler = Profiler::Living())
        profiler->StackPop();
}

} // namespace zvi::lib
