#include "zvi/host/WorkerThread.h"

#include <pthread.h>
#include <sys/resource.h>

#include <algorithm>
#include <csignal>

namespace zvi::host {

void BeginWorkerThread() {
    // Faults of the thread's own stay what they are.
    constexpr int kFaults[] = {SIGABRT, SIGBUS, SIGFPE, SIGILL, SIGSEGV, SIGTRAP};
    sigset_t others;
    ::sigfillset(&others);
    for (int const fault : kFaults)
        ::sigdelset(&others, fault);
    // Where nobody handles the end of a child it is dropped; blocked here it would wake another thread for nothing.
    struct sigaction known {};
    if (::sigaction(SIGCHLD, nullptr, &known) == 0 && known.sa_handler == SIG_DFL)
        ::sigdelset(&others, SIGCHLD);
    ::pthread_sigmask(SIG_BLOCK, &others, nullptr);
}

void SetThreadPriority([[maybe_unused]] int priority) {
#if defined(__linux__)
    // There it is a thread that has a niceness, not the process.
    constexpr int kNicenessOfStep = -5;
    if (priority != 0)
        static_cast<void>(::setpriority(PRIO_PROCESS, 0, std::clamp(priority, -2, 2) * kNicenessOfStep));
#endif
}

bool AreOtherThreadsGone() {
    return false;
}

} // namespace zvi::host
