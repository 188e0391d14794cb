#include "zvi/host/ProcessMemory.h"

#include <unistd.h>

#include <fstream>
#include <string>

namespace zvi::host {

std::uint32_t CurrentProcessId() {
    return static_cast<std::uint32_t>(::getpid());
}

std::uint64_t ProcessMemory(std::uint32_t processId) {
    std::ifstream file("/proc/" + std::to_string(processId) + "/statm");
    std::uint64_t pages = 0;
    std::uint64_t residentPages = 0;
    if (!(file >> pages >> residentPages))
        return 0;
    return residentPages * static_cast<std::uint64_t>(::sysconf(_SC_PAGESIZE));
}

} // namespace zvi::host
