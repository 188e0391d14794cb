#pragma once

#ifndef _WIN32
#include <csignal>
#include <sys/wait.h>
#include <unistd.h>

namespace zvi::test {

/// Has `write` called with numbers from `first` on in a process of its own, which is killed so much later; whether it
/// was.
template <typename Write>
bool IsKilledWhileItCalls(Write write, int first, unsigned int microseconds) {
    pid_t const writer = ::fork();
    if (writer == 0)
        for (int number = first;; ++number)
            write(number);
    if (writer < 0)
        return false;
    ::usleep(microseconds);
    ::kill(writer, SIGKILL);
    int status = 0;
    return ::waitpid(writer, &status, 0) == writer && WIFSIGNALED(status);
}

} // namespace zvi::test
#endif
