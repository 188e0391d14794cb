#include "zvi/host/ProcessMemory.h"

// The functions that the kernel's own library has, so that no other is linked.
#define PSAPI_VERSION 2
#include "zvi/host/windows/WindowsHeader.h"

#include <psapi.h>

namespace zvi::host {

std::uint32_t CurrentProcessId() {
    return ::GetCurrentProcessId();
}

std::uint64_t ProcessMemory(std::uint32_t processId) {
    HANDLE const process = ::OpenProcess(PROCESS_QUERY_INFORMATION | PROCESS_VM_READ, FALSE, processId);
    if (!process)
        return 0;
    PROCESS_MEMORY_COUNTERS counters{};
    bool const isKnown = ::GetProcessMemoryInfo(process, &counters, sizeof(counters)) != 0;
    ::CloseHandle(process);
    return isKnown ? counters.WorkingSetSize : 0;
}

} // namespace zvi::host
