#include "apps/zvi/Program.h"

#include "zvi/core/Version.h"

#include <cstdio>

namespace zvi::app {

int RunProgram(int, char **)
{
    std::printf("zvi %s\n", kVersion);
    return 0;
}

} // namespace zvi::app
