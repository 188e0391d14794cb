#include "zvi/host/WorkerThread.h"

#include "zvi/host/windows/WindowsHeader.h"

namespace zvi::host {

/// No thread is interrupted here by what the user or the system wants.
void BeginWorkerThread() {}

void SetThreadPriority(int priority) {
    if (priority != 0)
        ::SetThreadPriority(::GetCurrentThread(), priority);
}

bool AreOtherThreadsGone() {
    using IsEnding = BOOLEAN(NTAPI *)();
    HMODULE const library = ::GetModuleHandleW(L"ntdll.dll");
    if (!library)
        return false;
    auto const isEnding =
        reinterpret_cast<IsEnding>(reinterpret_cast<void *>(::GetProcAddress(library, "RtlDllShutdownInProgress")));
    return isEnding && isEnding() != FALSE;
}

} // namespace zvi::host
